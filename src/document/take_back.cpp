#include "document/take_back.h"

#include "base/decimal.h"

namespace q40 {
namespace {

class Putter {
 public:
  Putter(const CloneData& before, CloneData& data) : before_(before), data_(data) {}

  TakenBack Take() {
    done_.change.edit = done_.settings_flag || done_.memory_flag;
    done_.change.act = DocumentAct::kTakeBack;
    return done_;
  }

  void Put(const CellAddress& cell) {
    if (!cell.unit) return;
    ++done_.cells;
    switch (cell.unit->kind()) {
      case Unit::Kind::kSettings: return PutSetting(cell);
      case Unit::Kind::kSpecial: return PutSpecial(*cell.unit, cell.field);
      case Unit::Kind::kDialer: return PutDialText(static_cast<std::size_t>(cell.index));
      default: return PutMemory(cell.unit->index(), cell.field);
    }
  }

 private:
  void PutSetting(const CellAddress& cell) {
    done_.change.settings = true;
    if (cell.setting == nullptr) return PutByte(cell.index);
    data_.settings.*cell.setting->value = before_.settings.*cell.setting->value;
    if (cell.setting->counts) done_.settings_flag = true;
  }

  // Of the lines as a save makes them: those that were read may be short. The bit of such a byte that
  // has a control goes its own way.
  void PutByte(int offset) {
    const auto line = static_cast<std::size_t>(offset / kBlockSize);
    const int byte = offset % kBlockSize;
    const std::string old = EncodedSettings(before_.settings, before_.image)[line];
    const std::string now = EncodedSettings(data_.settings, data_.image)[line];
    data_.image.SettingsLine[line] =
        ReplaceByte(now, old.substr(2 * static_cast<std::size_t>(byte), 2), byte);
    done_.settings_flag = true;
  }

  void PutDialText(std::size_t index) {
    data_.dial[index] = before_.dial[index];
    done_.change.dial = done_.settings_flag = true;
  }

  void PutSpecial(Unit unit, std::optional<Field> field) {
    const Band band = unit.band();
    const int k = unit.index();
    const SpecialSet& from = SpecialStore(before_.image, band);
    SpecialSet& to = SpecialStore(data_.image, band);
    const PresentPair was = StoredPresent(before_.image, band);
    PresentPair present = StoredPresent(data_.image, band);
    const bool same_use = EffectivelyPresent(from, was, k) == EffectivelyPresent(to, present, k);
    PutChannel(ChannelKind::kSpecial, same_use ? field : std::nullopt,
               from[static_cast<std::size_t>(k)], to[static_cast<std::size_t>(k)]);
    if (k >= kPhRow && !(same_use && field)) {
      const auto limit = static_cast<std::size_t>(k - kPhRow);
      present[limit] = was[limit];
      SetStoredPresent(data_.image, band, present);
    }
    if (band == data_.image.ShownBand) ShowBand(data_.image, band);
    done_.change.special_channels = done_.settings_flag = true;
  }

  void PutMemory(int n, std::optional<Field> field) {
    const auto row = static_cast<std::size_t>(n);
    const bool was_in_use = before_.image.ChannelInUse[row];
    bool& in_use = data_.image.ChannelInUse[row];
    PutChannel(ChannelKind::kMemory, in_use == was_in_use ? field : std::nullopt,
               before_.image.MemoryTable[row], data_.image.MemoryTable[row]);
    in_use = was_in_use;
    done_.change.channels.set(row);
    done_.settings_flag = done_.memory_flag = true;
  }

  static void PutChannel(ChannelKind kind, std::optional<Field> field, const ChannelRecord& from,
                         ChannelRecord& to) {
    if (!field) {
      to = from;
      return;
    }
    // The star of a skipped channel stands in the text of its frequency; a list imports none.
    const bool starred = *field == Field::kSkip ? from.Number(kind, *field) == 1
                                                : to.Text(kind, Field::kFrequency).starts_with('*');
    to.Set(kind, *field, from.Number(kind, *field), from.Text(kind, *field));
    if (*field != Field::kSkip && *field != Field::kFrequency) return;
    std::string text(WithoutStar(to.Text(kind, Field::kFrequency)));
    if (starred) text.insert(0, 1, '*');
    to.Set(kind, Field::kFrequency, to.Number(kind, Field::kFrequency), text);
  }

  const CloneData& before_;
  CloneData& data_;
  TakenBack done_;
};

}  // namespace

TakenBack PutBack(const CloneData& before, const std::vector<CellAddress>& cells, CloneData& data) {
  Putter putter(before, data);
  for (const CellAddress& cell : cells) putter.Put(cell);
  return putter.Take();
}

}  // namespace q40
