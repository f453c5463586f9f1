#include "programs/ctl/json_entries.h"

#include <algorithm>
#include <set>
#include <utility>

#include "base/plain_text.h"

namespace q40 {
namespace {

std::string Escaped(std::string_view key) {
  std::string text;
  for (const char c : key) {
    if (c == '~') {
      text += "~0";
    } else if (c == '/') {
      text += "~1";
    } else {
      text += c;
    }
  }
  return text;
}

// Takes the text as it is read; false ends the reading. The names are the library's.
class Handler final : public nlohmann::json_sax<nlohmann::json> {
 public:
  bool null() override { return Value(nullptr); }
  bool boolean(bool value) override { return Value(value); }
  bool number_integer(number_integer_t value) override { return Value(value); }
  bool number_unsigned(number_unsigned_t value) override { return Value(value); }
  bool number_float(number_float_t value, const string_t& /*text*/) override {
    return Value(value);
  }
  bool string(string_t& value) override { return Value(std::move(value)); }
  bool binary(binary_t& /*value*/) override { return false; }
  bool start_object(std::size_t /*size*/) override {
    if (depth_ == kDeepest) return Refuse("must be one value, and no group of values");
    ++depth_;
    return true;
  }
  bool key(string_t& key) override {
    (depth_ == 1 ? place_ : name_) = std::move(key);
    if (depth_ == 1) name_.clear();
    return depth_ == 1 || !name_.empty() || Refuse("has an empty name in it");
  }
  bool end_object() override {
    --depth_;
    name_.clear();
    return true;
  }
  bool start_array(std::size_t /*size*/) override { return Refuse("must be no list"); }
  bool end_array() override { return false; }
  bool parse_error(std::size_t position, const std::string& /*token*/,
                   const nlohmann::json::exception& /*error*/) override {
    position_ = position;
    return false;
  }

  std::vector<JsonEntry> entries;
  [[nodiscard]] const std::string& refused() const { return refused_; }
  // Bytes up to where the text stopped being JSON.
  [[nodiscard]] std::size_t position() const { return position_; }

 private:
  static constexpr int kDeepest = 2;

  bool Value(Json value) {
    if (depth_ == 0) return Refuse("must be an object in braces");
    if (!seen_.emplace(place_, name_).second) return Refuse("is named twice");
    entries.push_back({place_, name_, std::move(value)});
    return true;
  }
  bool Refuse(const char* why) {
    refused_ = (depth_ == 0 ? "the text" : PointerTo(place_, name_)) + ' ' + why;
    return false;
  }

  int depth_ = 0;
  std::string place_;
  std::string name_;
  std::set<std::pair<std::string, std::string>> seen_;
  std::string refused_;
  std::size_t position_ = 0;
};

}  // namespace

std::string PointerTo(std::string_view place, std::string_view name) {
  constexpr std::size_t kLongest = 80;
  std::string pointer = '/' + Escaped(place);
  if (!name.empty()) pointer += '/' + Escaped(name);
  const std::string shown = FirstCharacters(pointer, kLongest);
  return Printable(shown) + (shown.size() < pointer.size() ? "..." : "");
}

JsonReading ReadJson(std::string_view text, const std::string& file) {
  const auto refused = [&](int line, std::string what) {
    return JsonReading{{}, FileProblem{FileProblem::Kind::kBadData, file, line, std::move(what)}};
  };
  if (text.size() > kLongestJson) return refused(0, "longer than any clone; 4 MiB are read");
  Handler handler;
  if (nlohmann::json::sax_parse(text.begin(), text.end(), &handler)) {
    return {std::move(handler.entries), std::nullopt};
  }
  if (!handler.refused().empty()) return refused(0, handler.refused());
  const std::size_t end = std::min(handler.position(), text.size());
  const auto lines =
      std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(end), '\n');
  return refused(static_cast<int>(lines) + 1, "no JSON from here on");
}

}  // namespace q40
