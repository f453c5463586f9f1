#include "programs/ctl/document_text.h"

#include <algorithm>

#include "base/hex.h"
#include "base/plain_text.h"
#include "radio/channel_codec.h"
#include "radio/channel_fields.h"
#include "radio/settings_codec.h"

namespace q40 {
namespace {

// ---- the report, for people

using Row = std::vector<std::string>;

// Columns as wide as their widest text, two blanks apart.
void AppendTable(std::string& text, const std::vector<Row>& rows) {
  std::vector<std::size_t> widths;
  for (const Row& row : rows) {
    widths.resize(std::max(widths.size(), row.size()));
    for (std::size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], row[i].size());
  }
  for (const Row& row : rows) {
    std::string line = " ";
    for (std::size_t i = 0; i < row.size(); ++i) {
      line += ' ' + row[i] + std::string(widths[i] - row[i].size() + 1, ' ');
    }
    text += line.substr(0, line.find_last_not_of(' ') + 1) + '\n';
  }
}

Row HeadingRow(ChannelKind kind, const std::string& first) {
  Row row = {first};
  for (const Field field : kReadingOrder) {
    if (HasField(kind, field)) row.emplace_back(FieldName(field));
  }
  return row;
}

Row ChannelRow(ChannelKind kind, const std::string& title, const ChannelRecord& record) {
  Row row = {title};
  for (const Field field : kReadingOrder) {
    if (HasField(kind, field)) row.push_back(Printable(FieldText(kind, record, field)));
  }
  return row;
}

void AppendSettings(std::string& text, const CloneData& document, SettingsGroup group) {
  text += PlaceOf(group) + '\n';
  std::vector<Row> rows;
  for (const Setting& setting : Settings()) {
    if (setting.group != group) continue;
    rows.push_back({CaptionOf(setting), SettingText(document.settings, setting)});
  }
  AppendTable(text, rows);
}

void AppendSpecialChannels(std::string& text, const CloneImage& image, Band band) {
  constexpr auto kKind = ChannelKind::kSpecial;
  const SpecialSet& set = SpecialStore(image, band);
  text += std::string(BandName(band)) + " special channels\n";
  std::vector<Row> rows = {HeadingRow(kKind, "")};
  for (int k = 0; k < kSpecialChannelCount; ++k) {
    const auto row = static_cast<std::size_t>(k);
    const std::string title(kSpecialRowTitles[row]);
    if (EffectivelyPresent(set, StoredPresent(image, band), k)) {
      rows.push_back(ChannelRow(kKind, title, set[row]));
    } else {
      rows.push_back({title, "-"});
    }
  }
  AppendTable(text, rows);
}

void AppendMemoryChannels(std::string& text, const CloneImage& image) {
  constexpr auto kKind = ChannelKind::kMemory;
  std::vector<Row> rows = {HeadingRow(kKind, "CH")};
  for (int n = 0; n < kMemoryChannelCount; ++n) {
    const auto row = static_cast<std::size_t>(n);
    if (!image.ChannelInUse[row]) continue;
    rows.push_back(ChannelRow(kKind, ChannelTitle(n), image.MemoryTable[row]));
  }
  text += "Memory channels in use: " + std::to_string(rows.size() - 1) + " of " +
          std::to_string(kMemoryChannelCount) + '\n';
  if (rows.size() > 1) AppendTable(text, rows);
}

}  // namespace

std::string DocumentReport(const CloneData& document) {
  std::string text = "Radio\n";
  AppendTable(text, {{"Model", ModelText(document)}});
  for (const SettingsGroup group :
       {SettingsGroup::kGeneral, SettingsGroup::kDtmf, SettingsGroup::kAccess}) {
    AppendSettings(text, document, group);
  }
  text += "Auto dialer\n";
  std::vector<Row> dials;
  for (std::size_t i = 0; i < document.dial.size(); ++i) {
    dials.push_back({std::string(kDialTitles[i]), Printable(document.dial[i])});
  }
  AppendTable(text, dials);
  for (const Band band : kBands) AppendSpecialChannels(text, document.image, band);
  AppendMemoryChannels(text, document.image);
  return text;
}

std::string JsonText(const nlohmann::ordered_json& json) {
  constexpr int kIndent = 2;
  return json.dump(kIndent, ' ', true, nlohmann::ordered_json::error_handler_t::replace) + '\n';
}

}  // namespace q40
