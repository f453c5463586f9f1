#include "programs/ctl/clone_json.h"

#include <algorithm>

#include "base/hex.h"

namespace q40 {
namespace {

constexpr auto kNoDigit = [](char c) { return c != '0'; };

Json FieldJson(const ChannelRecord& record, ChannelKind kind, Field field) {
  switch (field) {
    case Field::kFrequency:
    case Field::kShiftFrequency: return MhzJson(record.Number(kind, field));
    case Field::kName: return BytesJson(record.Text(kind, field));
    default: return Choices::Of(field).ValueOf(record.Number(kind, field));
  }
}

// What is printed of a file, item by item; null for what need not be.
class Printer {
 public:
  explicit Printer(const OpenedClone& clone) : clone_(clone), saved_(SavedLines(clone.data)) {}

  [[nodiscard]] Json ValueOf(const CloneItem& item) const {
    switch (item.kind) {
      case ItemKind::kCarriedByte: return BytesJson(Byte(clone_.lines, item));
      case ItemKind::kOtherBits: return OtherBits(item);
      case ItemKind::kOddByte:
        return Byte(clone_.lines, item) == Byte(saved_, item) ? Json()
                                                              : BytesJson(Byte(clone_.lines, item));
      case ItemKind::kOddDialText: {
        const std::string& text = clone_.data.dial[item.index];
        return WhyNotDialText(text, static_cast<int>(item.index)).empty() ? Json()
                                                                          : BytesJson(text);
      }
      case ItemKind::kStoredData: return StoredData(item.unit);
      default: return q40::ValueOf(clone_.data, item);
    }
  }

 private:
  static std::string_view Byte(const CloneLines& lines, const CloneItem& item) {
    return DigitsIn(lines, item.unit).substr(2 * item.index, 2);
  }

  [[nodiscard]] Json OtherBits(const CloneItem& item) const {
    constexpr int kHighDigitWithoutBit6 = 0xB;
    std::string digits(Byte(saved_, item));
    digits[0] = HexByteText(HexDigitValue(digits[0]) & kHighDigitWithoutBit6)[1];
    return BytesJson(digits);
  }

  [[nodiscard]] Json StoredData(Unit unit) const {
    const std::string_view digits = DigitsIn(clone_.lines, unit);
    const bool said = InUse(clone_.data.image, PlaceOf(unit))
                          ? FieldsSayAll(unit)
                          : std::none_of(digits.begin(), digits.end(), kNoDigit);
    return said ? Json() : BytesJson(digits);
  }

  // Whether the fields, each of them such as can be typed, make these digits.
  [[nodiscard]] bool FieldsSayAll(Unit unit) const {
    if (DigitsIn(clone_.lines, unit) != DigitsIn(saved_, unit)) return false;
    const CloneImage& image = clone_.data.image;
    EditedChannel anywhere = EditedChannelOf(image, clone_.data.model, PlaceOf(unit));
    anywhere.in_use = true;
    anywhere.base = nullptr;
    const ChannelRecord& record = RecordAt(image, anywhere.place);
    return std::all_of(kReadingOrder.begin(), kReadingOrder.end(), [&](Field field) {
      return !HasField(anywhere.place.kind, field) || WhyNotField(record, field, anywhere).empty();
    });
  }

  const OpenedClone& clone_;
  CloneLines saved_;
};

}  // namespace

OpenedClone OpenedCloneOf(std::string_view text, CloneData data) {
  OpenedClone clone{{}, std::move(data)};
  (void)SplitCloneText(text, {}, clone.lines);
  return clone;
}

CloneLines SavedLines(const CloneData& data) {
  CloneLines lines;
  (void)SplitCloneText(CloneFileText(data, data.model).value_or(""), {}, lines);
  return lines;
}

std::string_view DigitsIn(const CloneLines& lines, Unit unit) {
  return lines.Pair(FirstLineOf(unit).value_or(0));
}

char* DigitsIn(CloneLines& lines, Unit unit) {
  return lines.text.data() + FirstLineOf(unit).value_or(0) * kCloneLineLength;
}

Json ValueOf(const CloneData& data, const CloneItem& item) {
  switch (item.kind) {
    case ItemKind::kModel: return std::string(ModelName(data.model));
    case ItemKind::kVersion: return data.image.VersionA ? "A" : "0";
    case ItemKind::kSetting: {
      const Setting& setting = Settings()[item.index];
      return Choices::Of(setting).ValueOf(data.settings.*setting.value);
    }
    case ItemKind::kDialText: return BytesJson(data.dial[item.index]);
    case ItemKind::kInUse: return InUse(data.image, PlaceOf(item.unit));
    case ItemKind::kField: {
      const ChannelPlace place = PlaceOf(item.unit);
      if (!InUse(data.image, place)) return {};
      return FieldJson(RecordAt(data.image, place), place.kind, item.field);
    }
    default: return {};
  }
}

Json DocumentJson(const OpenedClone& clone) {
  const Printer printer(clone);
  Json json = {{kFormatKey, kJsonFormat}};
  // To find a place takes a walk, so it is kept for as long as it stays the same.
  std::string_view place;
  Json* values = nullptr;
  for (const CloneItem& item : CloneItems()) {
    Json value = printer.ValueOf(item);
    if (value.is_null()) continue;
    if (item.place != place) values = &json[item.place];
    place = item.place;
    (*values)[item.name] = std::move(value);
  }
  return json;
}

}  // namespace q40
