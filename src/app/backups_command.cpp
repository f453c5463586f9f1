#include "app/backups_command.h"

#include <filesystem>

#include <QDesktopServices>
#include <QUrl>

#include "app/file_commands.h"
#include "app/prompts.h"
#include "app/radio_commands.h"
#include "app/session.h"
#include "app/unit_commands.h"
#include "dialogs/backups_window.h"
#include "dialogs/report_window.h"
#include "document/document_cells.h"
#include "document/document_units.h"
#include "files/radio_copy_file.h"
#include "widgets/paths.h"

namespace q40 {
namespace {

// What an owner would call the difference between a copy of a radio and the document.
QStringList DifferencesFrom(const RadioCopy& copy, const CloneData& document) {
  CloneData data = document;
  EncodeSettings(data.settings, data.image);
  QStringList lines;
  for (const UnitData& kept : copy.units) {
    const UnitData loaded{kept.unit, DigitsOf(data, kept.unit)};
    if (SameValues(kept, loaded)) continue;
    for (const CellDifference& difference : UnitDifferences(kept, loaded)) {
      lines << Shown(DifferenceText(difference));
    }
  }
  return lines;
}

}  // namespace

BackupsCommand::BackupsCommand(Parts parts, QWidget& owner)
    : QObject(&owner), at_(std::move(parts)), owner_(owner) {
  connect(&at_.radio.keeper(), &WriteKeeper::backupKept, this, &BackupsCommand::FillWhenShown);
  connect(&at_.session.unfinished(), &UnfinishedWork::changed, this,
          &BackupsCommand::FillWhenShown);
}

const std::string& BackupsCommand::folder() const { return at_.radio.keeper().folder(); }

void BackupsCommand::Make() {
  list_ = new BackupsWindow(&owner_);
  using W = BackupsWindow;
  const auto run = [this](auto command) {
    return [this, command] {
      if (at_.may_run()) command();
    };
  };
  connect(list_, &W::backUpWanted, this, run([this] { at_.radio.BackUp(); }));
  connect(list_, &W::openWanted, this, run([this] { Open(); }));
  connect(list_, &W::compareWanted, this, run([this] { Compare(); }));
  connect(list_, &W::restoreWanted, this, run([this] { at_.units.Restore(list_->Selected()); }));
  connect(list_, &W::deleteWanted, this, run([this] { Delete(); }));
  connect(list_, &W::folderWanted, this, &BackupsCommand::ShowFolder);
}

void BackupsCommand::Show() {
  if (list_ == nullptr) Make();
  Fill();
  emit opened(*list_);
}

void BackupsCommand::FillWhenShown() {
  if (list_ != nullptr && list_->isVisible()) Fill();
}

void BackupsCommand::Fill() {
  const auto& pending = at_.session.unfinished().pending();
  list_->ShowBackups(ListBackups(folder()),
                     pending ? LastWholeBackup(folder(), pending->model) : std::string());
}

void BackupsCommand::Open() {
  if (!list_->Selected().empty()) at_.files.OpenBackup(list_->Selected());
}

void BackupsCommand::Compare() {
  RadioCopy copy;
  const std::string path = list_->Selected();
  if (const auto problem = OpenRadioCopy(path, copy)) return at_.prompts.DataError(*problem);
  at_.session.Settle();
  const CloneData& document = at_.session.document().data();
  const QStringList lines = DifferencesFrom(copy, document);
  const QString name = Shown(FileName(path));
  QString summary = tr("What is loaded is what %1 holds.").arg(name);
  if (!lines.isEmpty()) {
    summary = tr("Differences between %1 and what is loaded: %2.")
                  .arg(name, QString::number(lines.size()));
  }
  if (copy.model != document.model) summary += tr(" They are of different models.");
  if (differences_ == nullptr)
    differences_ = new ReportWindow("frmCompare", tr("Compare"), &owner_);
  differences_->Tell(summary, lines);
  emit opened(*differences_);
}

void BackupsCommand::Delete() {
  const std::string path = list_->Selected();
  const QString text = tr("%1\nis deleted.\nThis cannot be undone.").arg(Shown(FileName(path)));
  if (!at_.prompts.Confirm("DELETE OK", text)) return;
  std::error_code error;
  std::filesystem::remove(path, error);
  if (error) {
    at_.prompts.NoteFailure(
        tr("%1 could not be deleted: %2.").arg(Shown(path), Shown(error.message())));
  } else {
    at_.prompts.Note(tr("Deleted %1.").arg(Shown(FileName(path))));
  }
  Fill();
}

void BackupsCommand::ShowFolder() {
  std::error_code error;  // of one that cannot be had the desktop tells
  std::filesystem::create_directories(folder(), error);
  const QByteArray path = QByteArray::fromStdString(folder()).toPercentEncoding("/");
  if (!QDesktopServices::openUrl(QUrl::fromEncoded("file://" + path))) {
    at_.prompts.NoteFailure(tr("The folder cannot be shown. It is %1").arg(Shown(folder())));
  }
}

}  // namespace q40
