#include "image/document_cells.h"

#include <algorithm>

#include "image/channel_codec.h"
#include "image/channel_fields.h"
#include "image/hex.h"
#include "image/plain_text.h"
#include "image/settings_codec.h"

namespace q40 {
namespace {

// Name of the cell that holds what a channel out of use still stores; empty for one in use.
constexpr const char* kStoredData = "stored data";

// Whole, unlike the values in messages.
std::string InQuotes(const std::string& value) {
  std::string text(1, '"');
  text += Printable(value);
  text += '"';
  return text;
}

class CellList {
 public:
  void Add(std::string place, std::string name, std::string value) {
    cells_.push_back({std::move(place), std::move(name), std::move(value)});
  }
  std::vector<DocumentCell> Take() { return std::move(cells_); }

  void AddSettings(const CloneDocument& document) {
    for (const Setting& setting : Settings()) {
      Add(PlaceOf(setting.group), CaptionOf(setting), SettingText(document.settings, setting));
    }
    AddCarriedBytes(document);
  }

  void AddChannel(const std::string& place, ChannelKind kind, const ChannelRecord& record,
                  bool may_be_absent, bool in_use, std::string_view stored) {
    if (may_be_absent) Add(place, "In use", in_use ? "yes" : "no");
    for (const Field field : kReadingOrder) {
      if (!HasField(kind, field)) continue;
      Add(place, std::string(FieldName(field)), in_use ? FieldText(kind, record, field) : "");
    }
    Add(place, kStoredData, in_use ? "" : std::string(stored));
  }

 private:
  // Bytes of the settings area that no control stands for.
  void AddCarriedBytes(const CloneDocument& document) {
    CloneImage image = document.image;
    EncodeSettings(document.settings, image);
    for (int address = 0x20; address < 0x60; ++address) {
      const int line = (address - 0x20) / kBlockSize;
      const int byte = address % kBlockSize;
      const auto fields = Settings();
      const bool controlled = std::any_of(fields.begin(), fields.end(), [&](const auto& f) {
        return f.line == line && f.byte == byte && f.rule != SettingRule::kBit6;
      });
      if (controlled) continue;
      Add("Settings", "byte 0x00" + HexByteText(address),
          image.SettingsLine[static_cast<std::size_t>(line)].substr(
              2 * static_cast<std::size_t>(byte), 2));
    }
  }

  std::vector<DocumentCell> cells_;
};

}  // namespace

std::string FieldText(ChannelKind kind, const ChannelRecord& record, Field field) {
  if (field == Field::kSkip) return record.Number(kind, field) == 1 ? "On" : "Off";
  return record.Text(kind, field);
}

std::string PlaceOf(SettingsGroup group) {
  switch (group) {
    case SettingsGroup::kDtmf: return "DTMF";
    case SettingsGroup::kAccess: return "Access";
    default: return "Settings";
  }
}

std::string CaptionOf(const Setting& setting) {
  std::string caption(Trimmed(setting.caption));
  if (!setting.unit.empty()) caption += ' ' + std::string(setting.unit);
  return caption;
}

std::string SettingText(const SettingsValues& values, const Setting& setting) {
  const int value = values.*setting.value;
  if (!setting.items.empty()) {
    const auto index = static_cast<std::size_t>(value);
    return std::string(index < setting.items.size() ? Trimmed(setting.items[index]) : "");
  }
  if (setting.rule == SettingRule::kRange) return std::to_string(value);
  return value != 0 ? "on" : "off";
}

std::string ModelText(const CloneDocument& document) {
  return std::string(ModelName(document.model)) + ", version " +
         (document.image.VersionA ? "A" : "0");
}

std::vector<DocumentCell> CellsOf(const CloneDocument& document) {
  const CloneImage& image = document.image;
  CellList cells;
  cells.Add("Radio", "Model", std::string(ModelName(document.model)));
  cells.Add("Radio", "Version", image.VersionA ? "A" : "0");
  cells.AddSettings(document);
  for (std::size_t i = 0; i < document.dial.size(); ++i) {
    cells.Add("Auto dialer", std::string(kDialTitles[i]), document.dial[i]);
  }
  for (const Band band : kBands) {
    const SpecialSet& set = SpecialStore(image, band);
    const PresentPair present = StoredPresent(image, band);
    for (int k = 0; k < kSpecialChannelCount; ++k) {
      const auto row = static_cast<std::size_t>(k);
      const auto lines = EncodeSpecialChannel(set, present, k);
      cells.AddChannel(std::string(BandName(band)) + ' ' + std::string(kSpecialRowTitles[row]),
                       ChannelKind::kSpecial, set[row], k >= kPhRow,
                       EffectivelyPresent(set, present, k), lines ? lines->Joined() : "");
    }
  }
  for (int n = 0; n < kMemoryChannelCount; ++n) {
    const auto row = static_cast<std::size_t>(n);
    const auto lines = EncodeMemoryChannel(image, n);
    cells.AddChannel("Memory " + ChannelTitle(n), ChannelKind::kMemory, image.MemoryTable[row],
                     true, image.ChannelInUse[row], lines ? lines->Joined() : "");
  }
  return cells.Take();
}

std::vector<CellDifference> DifferencesOf(const CloneDocument& a, const CloneDocument& b) {
  const auto cells_a = CellsOf(a);
  const auto cells_b = CellsOf(b);
  std::vector<CellDifference> differences;
  for (std::size_t i = 0; i < cells_a.size(); ++i) {
    const DocumentCell& cell = cells_a[i];
    const std::string& other = cells_b[i].value;
    if (cell.value == other) continue;
    if (cell.name == kStoredData && (cell.value.empty() || other.empty())) continue;
    differences.push_back({cell.place, cell.name, cell.value, other});
  }
  return differences;
}

std::string DifferenceText(const CellDifference& difference) {
  return difference.place + ": " + difference.name + ": " + InQuotes(difference.a) + " -> " +
         InQuotes(difference.b);
}

}  // namespace q40
