#include "dialogs/import_notes.h"

#include "widgets/paths.h"

namespace q40 {
namespace {

Place PlaceOf(const ListedChannel& channel) {
  return {channel.kind == ChannelKind::kMemory ? Place::Where::kMemory : Place::Where::kSpecial,
          channel.band, channel.index};
}

}  // namespace

ImportNotes::ImportNotes(QWidget* owner)
    : PlaceList({"frmImportNotes", "lblImportNotes", "tblImportNotes", "cmdCloseImportNotes"},
                tr("Import Notes"), {tr("Line"), tr("Channel"), tr("Item"), tr("What happened")},
                owner) {}

std::vector<PlaceList::Row> ImportNotes::RowsOf(const ImportReport& report) {
  std::vector<Row> rows;
  for (const ImportNote& note : report.notes) {
    Row row;
    if (note.channel) row.place = PlaceOf(*note.channel);
    row.cells << QString::number(note.line) << (row.place ? PlaceTitle(*row.place) : QString())
              << Shown(note.item) << Shown(note.text);
    rows.push_back(std::move(row));
  }
  return rows;
}

void ImportNotes::ShowNotes(const QString& account, const ImportReport& report) {
  const std::vector<Row> rows = RowsOf(report);
  QString summary = account;
  if (!rows.empty()) summary += tr(" Double click or Enter shows the channel of a note.");
  const auto more = report.note_count - static_cast<int>(rows.size());
  if (more > 0) summary += tr(" %1 more notes are not listed.").arg(more);
  ShowRows(summary, rows);
}

}  // namespace q40
