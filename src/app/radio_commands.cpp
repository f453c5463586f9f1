#include "app/radio_commands.h"

#include "app/file_commands.h"
#include "app/prompts.h"
#include "app/radio_texts.h"
#include "app/session.h"
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
      keeper_(session, prompts, options_.backup_folder, this),
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

bool RadioCommands::MayWrite(Half half) {
  if (options_.may_write(half)) return true;
  prompts_.Note(tr("Nothing was written."));
  return false;
}

void RadioCommands::Write(Half half) {
  session_.Settle();
  if (!MayWrite(half)) return;
  CloneDocument& document = session_.document();
  Run({document.model(),
       MakeWritePlan(document.data(), half).All(),
       [&](SequenceWatcher& watcher, const WriteNet& net) {
         return SafeWrite(session_.link(), document, watcher, half, net);
       },
       {}});
}

void RadioCommands::Run(const Job& job) {
  emit writeStarting();
  files_.ForgetLetGo();
  keeper_.Plan(job.model, job.planned);
  const NetChoice choice = options_.net();
  const RadioContent known = session_.radio();
  session_.SetBusy(Session::Busy::kTalking);
  const WriteResult result = job.write(*this, keeper_.Net(choice.back_up, choice.verify));
  keeper_.Finish(result);
  // What a comparison has found is no knowledge to base the next write on: nobody has looked at it.
  const bool compared = result.stage == WriteResult::Stage::kCompare;
  if (compared && result.last.outcome != Outcome::kDone) session_.radio() = known;
  session_.SetBusy(Session::Busy::kNo);
  session_.TellFacts();
  ReportWrite(result, job.aside);
}

bool RadioCommands::BackUp() {
  files_.ForgetLetGo();
  session_.SetBusy(Session::Busy::kTalking);
  RadioCopy copy;
  const SequenceReport report = UnitSequences(session_.link(), *this).BackUp(std::nullopt, copy);
  session_.SetBusy(Session::Busy::kNo);
  session_.TellFacts();
  if (report.outcome != Outcome::kDone) return false;
  const std::string path = keeper_.KeepBackup(copy);
  if (!path.empty()) prompts_.Note(tr("Backed up as %1.").arg(Shown(FileName(path))));
  return !path.empty();
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

// In the status bar; what touched the radio and did not end well, in a window too.
void RadioCommands::ReportWrite(const WriteResult& result, const QString& aside) {
  // That a backup could not be kept has been said, at length.
  if (result.last.outcome == Outcome::kCancelled) return;
  const std::string backup = keeper_.WayBack();
  WriteAccount account = AccountOf(result, {Shown(FileName(backup)), Shown(backup)});
  account.text += aside;
  if (!keeper_.not_kept().isEmpty()) {
    account.text +=
        tr(" What a write leaves when it breaks off could not be stored, and is known only "
           "until the window closes: %1.")
            .arg(keeper_.not_kept());
  }
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
  if (Writes(sequence)) keeper_.BeforeFirstByte();
  emit begun(sequence);
}

void RadioCommands::NoteHeld(const UnitData& data) { session_.radio().SetHeld(data); }
void RadioCommands::NotePerhapsHeld(const UnitData& data) { session_.radio().SetPerhapsHeld(data); }

void RadioCommands::ShowProgress(const SequenceProgress& progress) {
  session_.radio().SetModel(progress.radio_model);
  emit progressed(progress);
  session_.TellFacts();
}

// What of the radio has come into the document.
void RadioCommands::NoteArrival(const DocumentChange& change) {
  if (session_.busy() != Session::Busy::kTalking || change.anew) return;
  if (change.settings) session_.part().SettingsArrived();
  if (change.as_read) session_.part().ChannelArrived(change.index);
  if (change.as_read || change.special_channels) emit channelsRead();
}

// The sentence in the status bar comes before the message box, whose few words it explains.
void RadioCommands::End(const SequenceReport& report) {
  emit ended();
  session_.part().End(report);
  emit told(session_.part().sequence(), report);
  if (report.radio_model >= 0) session_.radio().SetModel(report.radio_model);
  switch (report.outcome) {
    case Outcome::kInterrupted: NoteEnd(ReasonText(report)); return ComEnd3();
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
