#include "files/channel_csv.h"

#include "files/channel_csv_columns.h"
#include "files/csv_text.h"

namespace q40 {
namespace {

constexpr std::string_view kLineEnd = "\r\n";

// One record. An empty record (an absent PH or PL) gives empty texts.
void AppendRecord(std::string& text, std::string_view bank, std::string_view channel,
                  ChannelKind kind, const ChannelRecord& record) {
  for (const std::string_view item : {kModelItem, bank, channel}) {
    AppendCsvItem(text, item);
    text += ',';
  }
  for (const Field field : kCsvOrder) {
    std::string item;
    if (field == Field::kSkip) {
      const bool skip = kind == ChannelKind::kMemory && record.Number(kind, Field::kSkip) == 1;
      item = skip ? "On" : "Off";
    } else if (!HasField(kind, field)) {
      item = kNoName;
    } else {
      item = record.Text(kind, field);
      // Without the blank a spreadsheet would take the word for a formula.
      const bool formula = item.starts_with('-') || item.starts_with('+');
      if (field == Field::kShift && formula) item.insert(0, 1, ' ');
    }
    AppendCsvItem(text, item);
    text += field == Field::kSkip ? kLineEnd : std::string_view(",");
  }
}

void AppendHeader(std::string& text) {
  for (const std::string_view item : kFirstHeadings) {
    AppendCsvItem(text, item);
    text += ',';
  }
  for (const Field field : kCsvOrder) {
    AppendCsvItem(text, RowOf(field).csv);
    text += field == Field::kSkip ? kLineEnd : std::string_view(",");
  }
}

}  // namespace

std::string ExportRows(const CloneImage& image, std::span<const ChannelPlace> places) {
  static const ChannelRecord kAbsent;
  std::string text;
  AppendHeader(text);
  for (const ChannelPlace& place : places) {
    const bool memory = place.kind == ChannelKind::kMemory;
    AppendRecord(text, memory ? kMemoryBank : BankOf(place.band), TitleOf(place), place.kind,
                 InUse(image, place) ? RecordAt(image, place) : kAbsent);
  }
  return text;
}

std::string ExportChannels(const CloneImage& image) {
  std::vector<ChannelPlace> places;
  for (const Band band : kBands) {
    for (int k = 0; k < kSpecialChannelCount; ++k) {
      places.push_back({ChannelKind::kSpecial, band, k});
    }
  }
  for (int n = 0; n < kMemoryChannelCount; ++n) {
    const ChannelPlace place{ChannelKind::kMemory, Band::kVhf, n};
    if (InUse(image, place)) places.push_back(place);
  }
  return ExportRows(image, places);
}

std::optional<FileProblem> CheckCsvSize(std::string_view text, const std::string& name) {
  if (text.size() <= kLongestCsv) return std::nullopt;
  return FileProblem{FileProblem::Kind::kBadData, name, 0, "longer than 16 MiB, no channel list"};
}

std::optional<FileProblem> ProblemOf(const ImportReport& report, const std::string& name) {
  if (report.unclosed_quote_line == 0) return std::nullopt;
  return FileProblem{FileProblem::Kind::kBadData, name, report.unclosed_quote_line,
                     "a quote that is never closed; nothing was imported"};
}

}  // namespace q40
