#include "dialogs/backups_window.h"

#include <QHeaderView>
#include <QPushButton>
#include <QTableWidget>

#include "radio/models.h"
#include "widgets/paths.h"

namespace q40 {
namespace {

QString TimeOf(const BackupEntry& entry) {
  constexpr int kDate = 10;
  QString time = Shown(entry.name.time);
  return time.left(kDate) + time.mid(kDate).replace(QLatin1Char('.'), QLatin1Char(':'));
}

QString ReasonOf(const BackupEntry& entry) {
  const QString reason = Shown(BackupReasonText(entry.name.reason));
  return reason.isEmpty() ? BackupsWindow::tr("not known: %1").arg(Shown(FileName(entry.path)))
                          : reason;
}

QString ChannelsOf(const BackupEntry& entry) {
  if (!entry.problem.empty()) return BackupsWindow::tr("no clone: ") + Shown(entry.problem);
  QString count = QString::number(entry.channels);
  if (entry.undecodable == 0) return count;
  return BackupsWindow::tr("%1, of which %2 cannot be decoded").arg(count).arg(entry.undecodable);
}

}  // namespace

BackupsWindow::BackupsWindow(QWidget* owner)
    : PlaceList({"BackupsWindow", "lblBackups", "tblBackups", "cmdCloseBackups"}, tr("Backups"),
                {tr("Time"), tr("Model"), tr("Made"), tr("Channels")}, owner) {
  using W = BackupsWindow;
  const struct {
    const char* name;
    QString caption;
    void (W::*wanted)();
    bool of_one;
  } buttons[] = {{"cmdBackUpNow", tr("&Back Up Now"), &W::backUpWanted, false},
                 {"cmdOpenBackup", tr("&Open"), &W::openWanted, true},
                 {"cmdCompareBackup", tr("Co&mpare"), &W::compareWanted, true},
                 {"cmdRestoreBackup", tr("&Restore..."), &W::restoreWanted, true},
                 {"cmdDeleteBackup", tr("&Delete..."), &W::deleteWanted, true},
                 {"cmdShowBackups", tr("Show &Folder"), &W::folderWanted, false}};
  for (const auto& row : buttons) {
    QPushButton* button = AddButton(row.name, row.caption);
    connect(button, &QPushButton::clicked, this, row.wanted);
    if (row.of_one) of_one_.push_back(button);
  }
  connect(this, &PlaceList::rowChosen, this, &BackupsWindow::openWanted);
  connect(&table(), &QTableWidget::itemSelectionChanged, this, &BackupsWindow::EnableButtons);
  EnableButtons();
}

std::string BackupsWindow::Selected() const {
  const int row = table().currentRow();
  return row < 0 ? std::string() : paths_[static_cast<std::size_t>(row)];
}

void BackupsWindow::EnableButtons() {
  for (QPushButton* button : of_one_) button->setEnabled(table().currentRow() >= 0);
}

// The backup that was selected stays it, as far as there is one.
void BackupsWindow::ShowBackups(const std::vector<BackupEntry>& entries,
                                const std::string& way_back) {
  const std::string selected = Selected();
  paths_.clear();
  std::vector<Row> rows;
  int current = 0;
  QString whole;
  for (const BackupEntry& entry : entries) {
    const bool marked = entry.path == way_back;
    if (entry.path == selected) current = static_cast<int>(rows.size());
    if (marked) whole = TimeOf(entry);
    const QString model = entry.name.model < 0 ? QString() : Shown(ModelName(entry.name.model));
    rows.push_back({{TimeOf(entry), model,
                     ReasonOf(entry) + (marked ? tr(" (the last of a whole radio)") : QString()),
                     ChannelsOf(entry)},
                    std::nullopt});
    paths_.push_back(entry.path);
  }
  QString summary = rows.empty() ? tr("No backups yet.") : tr("Backups, the latest first.");
  if (!whole.isEmpty()) {
    summary += tr(" A write broke off: the last backup of a whole radio is that of %1.").arg(whole);
  }
  ShowRows(summary, rows);
  if (!rows.empty()) table().selectRow(current);
  EnableButtons();
}

}  // namespace q40
