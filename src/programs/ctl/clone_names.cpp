#include "programs/ctl/clone_names.h"

#include <algorithm>

namespace q40 {
namespace {

using Items = std::vector<CloneItem>;

void AddByte(Items& items, Unit unit, std::size_t byte) {
  const StoredByte stored = ByteAt(unit, byte);
  const int line = 2 * unit.index() + static_cast<int>(byte) / kBlockSize;
  const int place = static_cast<int>(byte) % kBlockSize;
  const auto settings = Settings();
  const auto owner = std::find_if(settings.begin(), settings.end(), [&](const Setting& s) {
    return s.line == line && s.byte == place;
  });
  const bool computed = line == 0 && place == kStartChannelByte;
  if (owner != settings.end() && owner->rule == SettingRule::kBit6) {
    const std::string name = stored.name.substr(0, stored.name.find(" ("));
    items.push_back(
        {ItemKind::kOtherBits, stored.place, name + " without " + CaptionOf(*owner), unit, byte});
  }
  const bool carried = owner == settings.end() && !computed;
  items.push_back({carried ? ItemKind::kCarriedByte : ItemKind::kOddByte, stored.place, stored.name,
                   unit, byte});
}

void AddChannel(Items& items, Unit unit) {
  const bool memory = unit.kind() == Unit::Kind::kMemory;
  const ChannelKind kind = memory ? ChannelKind::kMemory : ChannelKind::kSpecial;
  const std::string place = ByteAt(unit, 0).place;
  if (memory || unit.index() >= kPhRow) items.push_back({ItemKind::kInUse, place, "In use", unit});
  for (const Field field : kReadingOrder) {
    if (HasField(kind, field))
      items.push_back({ItemKind::kField, place, std::string(FieldName(field)), unit, 0, field});
  }
  items.push_back({ItemKind::kStoredData, place, "stored data", unit});
}

Items MadeItems() {
  Items items = {{ItemKind::kModel, "Radio", "Model"}, {ItemKind::kVersion, "Radio", "Version"}};
  for (std::size_t i = 0; i < Settings().size(); ++i) {
    const Setting& setting = Settings()[i];
    items.push_back({ItemKind::kSetting, PlaceOf(setting.group), CaptionOf(setting),
                     Unit::Settings(setting.line / 2), i});
  }
  for (const int area : {0, 1}) {
    for (std::size_t byte = 0; byte < kUnitSize; ++byte) AddByte(items, Unit::Settings(area), byte);
  }
  for (std::size_t i = 0; i < kDialCount; ++i) {
    const Unit unit = Unit::Dialer(static_cast<int>(i / 2));
    const std::string place = ByteAt(unit, 0).place;
    const std::string title(kDialTitles[i]);
    items.push_back({ItemKind::kDialText, place, title, unit, i});
    items.push_back({ItemKind::kOddDialText, place, title + " stored data", unit, i});
  }
  for (const Unit unit : UnitsOf(Half::kBoth)) {
    if (unit.kind() == Unit::Kind::kSpecial || unit.kind() == Unit::Kind::kMemory)
      AddChannel(items, unit);
  }
  return items;
}

}  // namespace

const std::vector<CloneItem>& CloneItems() {
  static const Items kItems = MadeItems();
  return kItems;
}

}  // namespace q40
