#include "programs/ctl/json_values.h"

#include <algorithm>
#include <cmath>

#include "base/digits.h"
#include "base/plain_text.h"
#include "programs/nearest.h"

namespace q40 {
namespace {

Json NumberJson(std::int64_t ten_thousandths) {
  if (ten_thousandths % kNumberScale == 0) return ten_thousandths / kNumberScale;
  return static_cast<double>(ten_thousandths) / static_cast<double>(kNumberScale);
}

// "12.5KHz", "88.5Hz", "30"
bool IsNumber(std::string_view text) {
  const std::string_view unit =
      text.substr(std::min(text.find_first_not_of("0123456789."), text.size()));
  return !text.empty() && IsDigit(text.front()) && (unit.empty() || unit.ends_with("Hz"));
}

// What the texts of one list stand for.
struct Reading {
  explicit Reading(const std::vector<std::string_view>& texts) {
    is_switch = texts.size() == 2 && texts[0] == "Off" && texts[1] == "On";
    bool counts = true;   // "00", "01", ... "10"
    bool padded = false;  // codes, as "023"
    for (std::size_t i = 0; i < texts.size(); ++i) {
      counts = counts && IsNumber(texts[i]) &&
               LeadingNumber(texts[i]) == static_cast<std::int64_t>(i) * kNumberScale;
      padded = padded || (texts[i].size() > 1 && texts[i][0] == '0');
    }
    has_numbers = counts || !padded;
  }
  [[nodiscard]] Json ValueOf(std::string_view text, std::size_t place) const {
    if (is_switch) return place == 1;
    if (has_numbers && IsNumber(text)) return NumberJson(LeadingNumber(text));
    return std::string(text);
  }

  bool is_switch;
  bool has_numbers;
};

bool SameType(const Json& a, const Json& b) {
  return a.is_number() ? b.is_number() : a.type() == b.type();
}

}  // namespace

const Choices& Choices::Of(Field field) {
  static const std::vector<Choices> kAll = [] {
    std::vector<Choices> all;
    all.reserve(kChannelFields.size());
    for (const ChannelField& row : kChannelFields) all.push_back(MadeOf(row.field));
    return all;
  }();
  return kAll[static_cast<std::size_t>(field)];
}

Choices Choices::MadeOf(Field field) {
  std::vector<std::string_view> texts;
  std::vector<int> codes;
  for (const Word& word : WordsOf(field)) {
    texts.push_back(word.text);
    codes.push_back(word.number);
  }
  if (texts.empty()) {
    const auto list = IndexListOf(field);
    texts.assign(list.begin(), list.end());
  }
  if (field == Field::kSkip) texts = {"Off", "On"};
  const Reading reading(texts);
  Choices choices;
  for (std::size_t i = 0; i < texts.size(); ++i) {
    choices.choices_.push_back(
        {codes.empty() ? static_cast<int>(i) : codes[i], reading.ValueOf(texts[i], i)});
  }
  return choices;
}

Choices Choices::Of(const Setting& setting) {
  std::vector<std::string_view> texts;
  for (const std::string_view item : setting.items) texts.push_back(Trimmed(item));
  const bool slider = texts.empty() && setting.rule == SettingRule::kRange;
  if (texts.empty() && !slider) texts = {"Off", "On"};
  Choices choices;
  for (int i = 0; slider && i <= setting.top; ++i) choices.choices_.push_back({i, i});
  const Reading reading(texts);
  for (std::size_t i = 0; i < texts.size(); ++i)
    choices.choices_.push_back({static_cast<int>(i), reading.ValueOf(texts[i], i)});
  return choices;
}

Json Choices::ValueOf(int code) const {
  const auto found = std::find_if(choices_.begin(), choices_.end(),
                                  [&](const Choice& choice) { return choice.code == code; });
  return found == choices_.end() ? Json() : found->value;
}

std::optional<int> Choices::CodeOf(const Json& value) const {
  for (const Choice& choice : choices_) {
    if (SameType(choice.value, value) && choice.value == value) return choice.code;
  }
  return std::nullopt;
}

bool Choices::HasTypeOf(const Json& value) const {
  return std::any_of(choices_.begin(), choices_.end(),
                     [&](const Choice& choice) { return SameType(choice.value, value); });
}

std::string Choices::TypeText() const {
  std::string text;
  for (const auto& [sample, name] :
       {std::pair{Json(true), "true or false"}, std::pair{Json(0), "a number"},
        std::pair{Json(""), "a text"}}) {
    if (HasTypeOf(sample)) text += (text.empty() ? "" : " or ") + std::string(name);
  }
  return text;
}

std::string Choices::ValuesText() const {
  constexpr std::size_t kMostNamed = 16;
  if (choices_.size() > kMostNamed) {
    return choices_.front().value.dump() + " to " + choices_.back().value.dump();
  }
  std::string text;
  for (const Choice& choice : choices_) text += (text.empty() ? "" : ", ") + choice.value.dump();
  return text;
}

std::string Choices::WhyNot(const Json& value) const {
  std::string text = "is none of " + ValuesText();
  if (!value.is_string()) return text;
  std::vector<std::string> words;
  for (const Choice& choice : choices_) {
    if (choice.value.is_string()) words.push_back(choice.value.get<std::string>());
  }
  const auto meant = Nearest(value.get<std::string>(), words);
  return meant ? text + "; did you mean " + Quoted(*meant) + "?" : text;
}

Json MhzJson(Units100Hz frequency) { return NumberJson(frequency); }

std::optional<Units100Hz> MhzOf(const Json& value) {
  constexpr double kHairbreadth = 1e-3;  // of 100 Hz: what a binary fraction may be off
  const double units = value.get<double>() * kUnitsPerMhz;
  const double whole = std::round(units);
  if (!(whole >= 0 && whole <= kLargestFrequency) || std::abs(units - whole) > kHairbreadth)
    return std::nullopt;
  return static_cast<Units100Hz>(whole);
}

Json BytesJson(std::string_view bytes) {
  std::string text;
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte < 0x80) {
      text += c;
    } else {
      text += static_cast<char>(0xC0 | (byte >> 6U));
      text += static_cast<char>(0x80 | (byte & 0x3FU));
    }
  }
  return text;
}

// JSON texts are well-formed UTF-8.
std::optional<std::string> BytesOf(const Json& text) {
  std::string bytes;
  const auto& utf8 = text.get_ref<const std::string&>();
  for (std::size_t i = 0; i < utf8.size(); ++i) {
    const auto byte = static_cast<unsigned char>(utf8[i]);
    if (byte < 0x80) {
      bytes += utf8[i];
    } else if (byte == 0xC2 || byte == 0xC3) {
      const auto low = static_cast<unsigned char>(utf8[++i]);
      bytes += static_cast<char>(((byte & 3U) << 6U) | (low & 0x3FU));
    } else {
      return std::nullopt;
    }
  }
  return bytes;
}

std::string ValueText(const Json& value) {
  return value.is_string() ? Quoted(value.get<std::string>()) : value.dump();
}

}  // namespace q40
