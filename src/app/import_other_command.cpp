#include "app/import_other_command.h"

#include <QByteArray>
#include <QCoreApplication>

#include "app/list_commands.h"
#include "app/prompts.h"
#include "app/session.h"
#include "app/user_options.h"
#include "files/channel_csv.h"
#include "files/whole_file.h"
#include "import_other/import_other_window.h"
#include "lists/mapping_folder.h"
#include "widgets/paths.h"

namespace q40 {
namespace {

constexpr const char* kPlacementKey = "ImportOther";

QString tr(const char* text) { return QCoreApplication::translate("ImportOther", text); }

// What of the list does not fit; that a channel was replaced is no news any more.
ImportReport ReportOf(const ImportPlan& plan) {
  ImportReport report;
  for (const PlannedRow& row : plan.rows) {
    for (const PlanNote& note : row.notes) {
      if (!note.loss) continue;
      ++report.note_count;
      if (report.notes.size() == kNotesListed) continue;
      report.notes.push_back({row.line, note.item, note.text});
      if (row.channel >= 0) report.notes.back().channel = ListedChannel{.index = row.channel};
    }
  }
  return report;
}

void Fill(const ImportOtherParts& at, const std::string& path, const ImportPlan& plan) {
  CloneDocument& document = at.session.document();
  const CloneImage filled = Filled(plan, document.image());
  if (filled == document.image()) {
    return at.prompts.Note(tr("Nothing has changed: the channels are as the list has them."));
  }
  at.lists.TellImporting(path);
  document.StoreChannels(filled);
  at.lists.TellImported(path, tr("Imported: %1.").arg(Shown(plan.Summary())), ReportOf(plan));
}

}  // namespace

void ImportOther(const ImportOtherParts& at, QWidget& window) {
  at.session.Settle();
  const CloneDocument& document = at.session.document();
  const std::string path =
      at.prompts.AskPath(Prompts::FileDialog::kImportOther, at.session.path(), document.model());
  if (path.empty()) return;
  std::string bytes;
  if (const auto problem = ReadFile(path, kLongestList + 1, bytes)) {
    return at.prompts.DataError(*problem);
  }
  ImportOtherWindow dialog({std::move(bytes), FileName(path), MappingFolder(at.user_folder)},
                           document.data(), &window);
  if (auto problem = dialog.problem()) {
    problem->path = path;
    return at.prompts.DataError(*problem);
  }
  dialog.restoreGeometry(UserOptions::Bytes(kPlacementKey));
  const bool accepted = dialog.exec() == QDialog::Accepted;
  UserOptions::SetBytes(kPlacementKey, dialog.saveGeometry());
  if (accepted) Fill(at, path, dialog.plan());
}

}  // namespace q40
