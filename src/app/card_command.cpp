#include "app/card_command.h"

#include <QCoreApplication>
#include <QLocale>
#include <QPrintDialog>
#include <QPrinter>

#include "app/prompts.h"
#include "app/session.h"
#include "app/user_options.h"
#include "card_paint/card_pdf.h"
#include "dialogs/dlg_card.h"
#include "files/clone_file.h"
#include "files/whole_file.h"
#include "version.h"
#include "widgets/paths.h"

namespace q40 {
namespace {

constexpr const char* kOtherPaper = "CardOnOtherPaper";  // than the country's
constexpr const char* kPocket = "CardFolded";
constexpr const char* kSpecial = "CardSpecialChannels";

QString tr(const char* text) { return QCoreApplication::translate("CardCommand", text); }

bool LetterIsUsual() { return QLocale::system().measurementSystem() == QLocale::ImperialUSSystem; }

CardOptions Remembered() {
  const bool letter = LetterIsUsual() != UserOptions::IsOn(kOtherPaper);
  return {letter ? CardPaper::kLetter : CardPaper::kA4, UserOptions::IsOn(kPocket),
          UserOptions::IsOn(kSpecial)};
}

void Remember(const CardOptions& options) {
  UserOptions::SetOn(kOtherPaper, (options.paper == CardPaper::kLetter) != LetterIsUsual());
  UserOptions::SetOn(kPocket, options.pocket);
  UserOptions::SetOn(kSpecial, options.special);
}

// A card of data that is in no file must not pass for one of the file.
std::string NameOf(const Session& session) {
  if (session.path().empty()) return tr("not saved").toStdString();
  const std::string changed = session.document().HasChanges() ? tr(", changed").toStdString() : "";
  return FileName(session.path()) + changed;
}

QString MadeText(const std::string& path) {
  return tr("The channel card is in %1.").arg(Shown(path));
}

}  // namespace

void CardCommand::Run() {
  session_.Settle();
  dlgCard dialog(session_.document().data(), NameOf(session_), Remembered(), &owner_);
  for (bool done = false; !done;) {
    const int choice = dialog.exec();
    Remember(dialog.Options());
    done = choice == QDialog::Rejected ||
           (choice == dlgCard::kPrint ? Print(dialog.pages()) : Save(dialog.pages()));
  }
}

bool CardCommand::Save(const CardPages& pages) {
  const std::string path =
      prompts_.AskPath(Prompts::FileDialog::kCard, session_.path(), session_.document().model());
  if (path.empty()) return false;
  const auto pdf = CardPdf(pages, std::string("rxq40 ") + kVersion);
  if (!pdf) return Failed("The channel card could not be made.");
  if (const auto problem = WriteFile(path, *pdf)) {
    prompts_.DataError(*problem);
    return false;
  }
  prompts_.Note(MadeText(path));
  return true;
}

// On the paper of the card, whatever paper the printer's dialog has been left with.
bool CardCommand::Print(const CardPages& pages) {
  QPrinter printer(QPrinter::HighResolution);
  printer.setDocName(tr("Channel card"));
  printer.setPageLayout(pages.Paper());
  QPrintDialog dialog(&printer, &owner_);
  dialog.setOption(QAbstractPrintDialog::PrintPageRange, false);
  if (dialog.exec() != QDialog::Accepted) return false;
  printer.setPageLayout(pages.Paper());
  const std::string file = PathBytes(printer.outputFileName());  // instead of a printer
  if (IsCloneFile(file)) return Failed("A clone file does not become a channel card.");
  if (!pages.PaintAll(printer)) return Failed("The channel card could not be printed.");
  prompts_.Note(file.empty() ? tr("The channel card is on its way to the printer.")
                             : MadeText(file));
  return true;
}

bool CardCommand::Failed(const char* what) {
  prompts_.NoteFailure(tr(what));
  prompts_.ShowError(tr(what));
  return false;
}

}  // namespace q40
