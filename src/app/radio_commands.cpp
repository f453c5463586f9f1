#include "app/radio_commands.h"

#include <filesystem>

#include <QDateTime>

#include "app/file_commands.h"
#include "app/prompts.h"
#include "app/radio_texts.h"
#include "app/session.h"
#include "files/radio_copy_file.h"
#include "link/unit_sequences.h"
#include "widgets/paths.h"

namespace q40 {
namespace {

bool Reads(Sequence sequence) {
  return sequence == Sequence::kReadMemory || sequence == Sequence::kReadSettings;
}

// Some move units of all pages, or of none.
bool ShowsPages(Sequence sequence) {
  return Reads(sequence) || sequence == Sequence::kWriteSettings ||
         sequence == Sequence::kWriteMemory;
}

}  // namespace

RadioCommands::RadioCommands(Session& session, Prompts& prompts, FileCommands& files,
                             Options options, QObject* parent)
    : QObject(parent),
      session_(session),
      prompts_(prompts),
      files_(files),
      options_(std::move(options)),
      sequences_(session.link(), session.document(), *this, this) {
  connect(&session, &Session::changed, this, &RadioCommands::NoteArrival);
}

// ---- reading

void RadioCommands::Read(Reading sequence) {
  session_.Settle();
  files_.ForgetLetGo();
  session_.SetBusy(Session::Busy::kTalking);
  const SequenceReport report = (sequences_.*sequence)();
  session_.SetBusy(Session::Busy::kNo);
  ReportRead(report);
  session_.TellFacts();
  session_.TellNewData();
}

void RadioCommands::ReadFromMenu(Reading sequence, Sequence first) {
  emit pageWanted(first);
  follow_pages_ = true;
  Read(sequence);
  follow_pages_ = false;
}

// Of what failed, End has told before its message box.
void RadioCommands::ReportRead(const SequenceReport& report) {
  if (report.outcome != Outcome::kDone) return;
  const QString text = ReadText(session_.part().sequence(), report) + files_.let_go();
  if (report.note.empty()) return prompts_.Note(text);
  prompts_.NoteFailure(QString::fromStdString(report.note) + QLatin1String(". ") + text);
}

// ---- writing

void RadioCommands::Write(Half half) {
  emit writeStarting();
  session_.Settle();
  if (!options_.may_write(half)) return prompts_.Note(tr("Nothing was written."));
  files_.ForgetLetGo();
  session_.SetBusy(Session::Busy::kTalking);
  std::string backup;
  const WriteNet net = Net(backup);
  const WriteResult result = SafeWrite(session_.link(), session_.document(), *this, half, net);
  session_.SetBusy(Session::Busy::kNo);
  session_.TellFacts();
  ReportWrite(result, backup);
}

bool RadioCommands::LookUp(CloneData& radio, Half half) {
  std::vector<UnitData> wanted;
  for (const Unit unit : UnitsOf(half)) wanted.push_back({unit, {}});
  std::vector<UnitData> found;
  session_.SetBusy(Session::Busy::kTalking);
  const SequenceReport report =
      UnitSequences(session_.link(), *this).Read(Sequence::kLookUp, radio.model, wanted, found);
  session_.SetBusy(Session::Busy::kNo);
  if (report.outcome != Outcome::kDone) return false;
  for (const UnitData& data : found) {
    if (const auto why = LoadUnit(data, radio)) {
      prompts_.NoteFailure(
          Shown(data.unit.Name() + " of the radio cannot be decoded: " + *why + "."));
      return false;
    }
  }
  return true;
}

void RadioCommands::WriteFromMenu(Half half) {
  emit pageWanted(half == Half::kMemory ? Sequence::kWriteMemory : Sequence::kWriteSettings);
  follow_pages_ = true;
  Write(half);
  follow_pages_ = false;
}

// `backup` becomes the path of the backup and must outlive the net.
WriteNet RadioCommands::Net(std::string& backup) {
  const NetChoice choice = options_.net();
  WriteNet net;
  net.verify = choice.verify;
  if (choice.back_up) {
    net.keep_backup = [this, &backup](const RadioCopy& radio) {
      backup = KeepBackup(radio);
      return !backup.empty();
    };
  }
  return net;
}

// The path of the new file, named after model and time. Empty: the user has been told why.
std::string RadioCommands::KeepBackup(const RadioCopy& radio) {
  std::error_code error;  // of a folder that cannot be had the save tells
  std::filesystem::create_directories(options_.backup_folder, error);
  const QString time = QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd HH.mm.ss"));
  std::string name(ModelName(radio.model));
  name.insert(0, options_.backup_folder + '/').append(" ").append(time.toStdString());
  std::string path = name + ".Q40";
  for (int copy = 2; std::filesystem::exists(path, error); ++copy) {
    path = name + " (" + std::to_string(copy) + ").Q40";
  }
  if (const auto problem = SaveRadioCopy(path, radio)) {
    prompts_.ShowError(tr("The backup could not be kept, so nothing was written.\n") +
                       Shown(problem->Message()));
    return {};
  }
  return path;
}

// In the status bar; what touched the radio and did not end well, in a window too.
void RadioCommands::ReportWrite(const WriteResult& result, const std::string& backup) {
  // That a backup could not be kept has been said, at length.
  if (result.last.outcome == Outcome::kCancelled) return;
  const WriteAccount account = AccountOf(result, {Shown(FileName(backup)), Shown(backup)});
  if (account.good) return prompts_.Note(account.text);
  prompts_.NoteFailure(account.text);
  if (account.at_length) emit writeTold(account.text, account.differences);
}

// ---- what the sequences ask and report

bool RadioCommands::AskToSave() { return files_.AskToSave(); }
bool RadioCommands::SelectModel(int model) { return files_.SelectModel(model); }

void RadioCommands::Begin(Sequence sequence) {
  if (follow_pages_ && ShowsPages(sequence)) emit pageWanted(sequence);
  session_.part().Begin(sequence);
  emit begun(sequence);
}

void RadioCommands::ShowProgress(const SequenceProgress& progress) {
  emit progressed(progress);
  session_.TellFacts();
}

// What of the radio has come into the document.
void RadioCommands::NoteArrival(const DocumentChange& change) {
  if (session_.busy() != Session::Busy::kTalking || change.anew) return;
  if (change.settings) session_.part().SettingsArrived();
  if (change.as_read) session_.part().ChannelArrived(change.first_channel);
  if (change.as_read || change.special_channels) emit channelsRead();
}

// The sentence in the status bar comes before the message box, whose few words it explains.
void RadioCommands::End(const SequenceReport& report) {
  emit ended();
  session_.part().End(report);
  emit told(session_.part().sequence(), report);
  switch (report.outcome) {
    case Outcome::kPortError: NoteEnd(ReasonText(report)); return ComEnd2();
    case Outcome::kCommunicationError: NoteEnd(ReasonText(report)); return ComEnd1();
    case Outcome::kWrongModel:
      NoteEnd(WrongModelText(report, session_.part().sequence() == Sequence::kVerify
                                         ? QString()
                                         : tr("Nothing was written.")));
      prompts_.ShowError(QString::fromUtf8(kWrongModelText));
      return ComEnd3();
    case Outcome::kDataError:
      NoteEnd(ReasonText(report));
      prompts_.ShowError(QString::fromUtf8(kDataErrorText));
      return ComEnd3();
    default: return ComEnd3();
  }
}

void RadioCommands::ComEnd1() {
  prompts_.ShowError(QString::fromUtf8(kCommunicationErrorText));
  ComEnd3();
}

void RadioCommands::ComEnd2() {
  prompts_.ShowError(QString::fromUtf8(kPortErrorText));
  ComEnd3();
}

void RadioCommands::ComEnd3() { emit over(); }

// Why, what of the radio is here now, and what of the user's is not.
void RadioCommands::NoteEnd(const QString& why) {
  QStringList sentences = {why};
  const PartialRead& part = session_.part();
  if (Reads(part.sequence()) && !part.Text().isEmpty()) sentences << part.Text();
  prompts_.NoteFailure(sentences.join(QLatin1Char(' ')) + files_.let_go());
  session_.TellFacts();
}

}  // namespace q40
