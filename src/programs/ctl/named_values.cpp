#include "programs/ctl/named_values.h"

#include <map>

#include "base/plain_text.h"
#include "document/defaults.h"
#include "document/document_units.h"
#include "files/clone_file.h"
#include "programs/ctl/clone_json.h"
#include "programs/nearest.h"

namespace q40 {
namespace {

constexpr std::size_t kByteDigits = 2;
constexpr std::size_t kMostProblems = 20;  // to find what each word may mean takes a while

// Why a value cannot be one of its item whatever the file holds; empty when it can.
std::string WhyNoValue(const Named& named) {
  const Json& value = *named.value;
  const CloneItem& item = *named.item;
  const auto must_be = [&](bool is, const char* what) {
    return is ? std::string() : std::string("must be ") + what;
  };
  const auto must_be_one = [&](const Choices& choices) {
    return choices.HasTypeOf(value) ? "" : "must be " + choices.TypeText();
  };
  switch (item.kind) {
    case ItemKind::kModel:
      if (value.is_string() && FindModel(value.get<std::string>())) return {};
      return "must be RX-Q40T, RX-Q40E, RX-Q40T1 or RX-Q20A";
    case ItemKind::kVersion: return must_be(value == "A" || value == "0", R"("A" or "0")");
    case ItemKind::kSetting: return must_be_one(Choices::Of(Settings()[item.index]));
    case ItemKind::kInUse: return must_be(value.is_boolean(), "true or false");
    case ItemKind::kField: break;
    default: return must_be(value.is_string(), "a text");
  }
  switch (item.field) {
    case Field::kFrequency:
    case Field::kShiftFrequency: return must_be(value.is_number(), "a number");
    case Field::kName: return must_be(value.is_string(), "a text");
    default: return must_be_one(Choices::Of(item.field));
  }
}

// How many characters a value has that is stored as it is, at the most for a text; 0 for any other value.
std::size_t StoredLength(ItemKind kind) {
  switch (kind) {
    case ItemKind::kCarriedByte:
    case ItemKind::kOtherBits:
    case ItemKind::kOddByte: return kByteDigits;
    case ItemKind::kStoredData: return kUnitDigits;
    case ItemKind::kOddDialText: return kCloneLineLength;
    default: return 0;
  }
}

// Why a text cannot be stored as it is.
std::string WhyNoBytes(const Named& named) {
  const std::size_t length = StoredLength(named.item->kind);
  if (length == 0) return {};
  const auto bytes = BytesOf(*named.value);
  if (!bytes || bytes->find_first_of("\r\n") != std::string::npos) {
    return "holds characters that no clone file can";
  }
  if (named.item->kind == ItemKind::kOddDialText) {
    return bytes->size() <= length ? "" : "is longer than 32 characters";
  }
  if (bytes->size() != length) return "must have " + std::to_string(length) + " digits";
  if (named.item->kind != ItemKind::kStoredData) return {};
  CloneData scratch = FreshData();
  return LoadUnit({named.item->unit, *bytes}, scratch).value_or("");
}

std::string WhyNoItem(const Named& named) {
  std::string why = WhyNoValue(named);
  if (why.empty()) why = WhyNoBytes(named);
  return why.empty() ? why : named.Where() + ' ' + why;
}

class Names {
 public:
  Names() {
    for (const CloneItem& item : CloneItems()) items_[item.place][item.name] = &item;
  }

  // Empty, with the item, or with none for the format; otherwise what is wrong with the names.
  std::string Find(const JsonEntry& entry, const CloneItem*& item) const {
    if (entry.name.empty() && entry.place == kFormatKey) {
      const bool known = entry.value.is_number() && entry.value == kJsonFormat;
      return known ? "" : PointerTo(entry.place, {}) + " must be " + std::to_string(kJsonFormat);
    }
    const auto place = items_.find(entry.place);
    if (place == items_.end()) return Unknown(PointerTo(entry.place, {}), entry.place, items_);
    if (entry.name.empty()) return PointerTo(entry.place, {}) + " must be a group of values";
    const auto found = place->second.find(entry.name);
    if (found == place->second.end())
      return Unknown(PointerTo(entry.place, entry.name), entry.name, place->second);
    item = found->second;
    return {};
  }

 private:
  template <class Map>
  static std::string Unknown(const std::string& pointer, const std::string& word,
                             const Map& known) {
    std::vector<std::string> words;
    words.reserve(known.size());
    for (const auto& [name, value] : known) words.push_back(name);
    const auto meant = Nearest(word, words);
    return pointer + " is unknown" +
           (meant ? "; did you mean " + Quoted(*meant) + "?" : std::string());
  }

  std::map<std::string, std::map<std::string, const CloneItem*>> items_;
};

}  // namespace

NamedValues Resolved(const std::vector<JsonEntry>& entries, std::vector<std::string>& problems) {
  const Names names;
  NamedValues values;
  for (const JsonEntry& entry : entries) {
    if (problems.size() == kMostProblems) break;
    Named named{nullptr, &entry.value};
    std::string why = names.Find(entry, named.item);
    if (named.item != nullptr) {
      why = WhyNoItem(named);
      values.push_back(named);
    }
    if (!why.empty()) problems.push_back(std::move(why));
  }
  return values;
}

}  // namespace q40
