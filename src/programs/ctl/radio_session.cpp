#include "programs/ctl/radio_session.h"

#include <algorithm>

#include "base/hex.h"
#include "link/unit_sequences.h"
#include "programs/ctl/trace_option.h"

namespace q40 {
namespace {

std::string JobName(Sequence sequence) {
  switch (sequence) {
    case Sequence::kReadSettings: return "Reading settings";
    case Sequence::kReadMemory: return "Reading memory";
    case Sequence::kWriteSettings: return "Writing settings";
    case Sequence::kWriteMemory: return "Writing memory";
    case Sequence::kBackUp: return "Backing up";
    case Sequence::kVerify: return "Verifying";
    case Sequence::kCompare: return "Comparing";
    case Sequence::kRestore: return "Restoring";
    case Sequence::kWriteUnits: return "Writing changes";
    default: return "Identifying";
  }
}

bool IsBlockAnswer(std::string_view answer) {
  constexpr std::size_t kLength = kBlockDigits + 4;
  if (answer.size() < kLength) return false;
  answer = answer.substr(answer.size() - kLength);
  const std::string_view digits = answer.substr(2, kBlockDigits);
  return answer.starts_with("\r\n") && answer.ends_with("\r\n") &&
         std::all_of(digits.begin(), digits.end(), IsHexDigit);
}

std::string CountText(std::size_t differences) {
  return std::to_string(differences) + (differences == 1 ? " difference" : " differences");
}

void PrintDifferences(CommandContext& context, const std::vector<CellDifference>& differences) {
  std::string text;
  for (const CellDifference& difference : differences) text += DifferenceText(difference) + '\n';
  Print(context, text);
}

}  // namespace

RadioSession::RadioSession(CommandContext& context, const std::string& device,
                           CloneDocument& document)
    : context_(context),
      document_(document),
      device_(device),
      line_(LineTo(context, device)),
      link_(line_->port(), line_->timers(), line_->pump()),
      sequences_(link_, document, *this, this) {}

int RadioSession::Identify() { return Conclude(sequences_.Identify()); }

int RadioSession::Read(Half half) {
  switch (half) {
    case Half::kSettings: return Conclude(sequences_.ReadSettings());
    case Half::kMemory: return Conclude(sequences_.ReadMemory());
    default: return Conclude(sequences_.ReadAll());
  }
}

int RadioSession::Write(Half half, const WriteNet& net, const WayOut& ways) {
  return ConcludeWrite(SafeWrite(link_, document_, *this, half, net), ways);
}

int RadioSession::Restore(const RadioCopy& copy, const WriteNet& net, const WayOut& ways) {
  return ConcludeWrite(RestoreRadio(link_, *this, copy, net), ways);
}

int RadioSession::Swap(int model, const std::vector<UnitSwap>& swaps, const WayOut& ways) {
  return ConcludeWrite(SwapUnits(link_, *this, model, swaps), ways);
}

int RadioSession::BackUp(RadioCopy& copy) {
  return Conclude(UnitSequences(link_, *this).BackUp(std::nullopt, copy));
}

int RadioSession::ConcludeWrite(const WriteResult& result, const WayOut& ways) {
  const int code = ConcludeResult(result);
  if (code == kExitDone || code == kExitNotAsKnown) return code;
  // Each in a line of its own, to be pasted.
  for (const std::string& way : WayTexts(result, ways)) context_.console.Error(code, way);
  return code;
}

int RadioSession::ConcludeResult(const WriteResult& result) {
  using Stage = WriteResult::Stage;
  if (result.stage == Stage::kBackup && result.last.outcome == Outcome::kCancelled) {
    context_.console.Note(AftermathText(result, {}));  // the reason has been said
    return kExitCannotWrite;
  }
  if (result.last.outcome == Outcome::kNotAsKnown) return ConcludeUnknown(result);
  if (result.last.outcome != Outcome::kDone) {
    return Conclude(result.last, ' ' + AftermathText(result, {}));
  }
  Conclude(result.last);
  report_ = result.write;
  return result.stage == Stage::kVerify ? ConcludeVerified(result) : static_cast<int>(kExitDone);
}

int RadioSession::ConcludeUnknown(const WriteResult& result) {
  PrintDifferences(context_, result.differences);
  return context_.console.Error(kExitNotAsKnown, "Nothing was written: " + result.last.why + ", " +
                                                     FewUnitsText(result.unlike) + " (" +
                                                     CountText(result.differences.size()) + "). " +
                                                     result.last.remedy);
}

int RadioSession::ConcludeVerified(const WriteResult& result) {
  if (result.differences.empty()) return kExitDone;
  PrintDifferences(context_, result.differences);
  return context_.console.Error(
      kExitNotKept, "The radio did not keep everything: " + CountText(result.differences.size()) +
                        " between what was written and what it holds.");
}

int RadioSession::Dump(int first_block, int count) {
  Console& console = context_.console;
  link_.OpenPort();
  for (int block = first_block; block < first_block + count; ++block) {
    const auto address = static_cast<Address>(block * kBlockSize);
    const auto reply = link_.ServiceRead(ReadCommand(address), {});
    if (link_.StopRequested()) return console.Error(kExitInterrupted, "Interrupted");
    if (!reply) {
      return console.Error(kExitPortError, kPortErrorText + Advice(link_.port().Problem()));
    }
    if (!IsBlockAnswer(*reply)) {
      return console.Error(kExitCommunicationError, std::string(kCommunicationErrorText) +
                                                        ": no proper answer for address " +
                                                        AddressText(address) + " within 0.5 s. " +
                                                        std::string(kCheckTheCable));
    }
    const std::string line = BlockText(block) + '\t' +
                             reply->substr(reply->size() - kBlockDigits - 2, kBlockDigits) + '\n';
    if (const int code = Print(context_, line)) {
      return link_.StopRequested() ? static_cast<int>(kExitInterrupted) : code;
    }
    if (console.ReaderIsGone()) break;
  }
  return kExitDone;
}

bool RadioSession::SelectModel(int model) {
  if (keep_model_ && model != document_.model()) return false;
  document_.ChangeModel(model);
  return true;
}

void RadioSession::Begin(Sequence sequence) {
  context_.console.Progress(JobName(sequence), 0, 0, {});
}

void RadioSession::ShowProgress(const SequenceProgress& progress) {
  context_.console.Progress(JobName(progress.sequence), progress.done, progress.total,
                            progress.where);
}

void RadioSession::End(const SequenceReport& /*report*/) { context_.console.EndProgress(); }

// ": /dev/ttyUSB0 does not exist. Plug in the cable, or choose another port."
std::string RadioSession::Advice(const PortProblem& problem) const {
  std::string text = ": " + (problem.what.empty() ? device_ : problem.what);
  if (!problem.remedy.empty()) text += ". " + problem.remedy;
  return text;
}

// "the radio is an RX-Q40T, the data is for an RX-Q40E"
std::string RadioSession::ModelsText(const SequenceReport& report) const {
  if (report.outcome == Outcome::kWrongModel) return report.why;
  return "the radio is an " + std::string(ModelName(report.radio_model)) + ", the data is for an " +
         std::string(ModelName(document_.model()));
}

// The one place where the end of a sequence becomes words and an exit code. `written`: what a write
// left behind; empty for a read.
int RadioSession::Conclude(const SequenceReport& report, const std::string& written) {
  report_ = report;
  const std::string at = report.where.empty() ? std::string() : " (" + report.where + ")";
  const std::string remedy = report.remedy.empty() ? std::string() : ' ' + report.remedy;
  const std::string reason = ": " + report.why + at + '.' + remedy + written;
  Console& console = context_.console;
  switch (report.outcome) {
    case Outcome::kDone:
      // Not an error, but nothing that --quiet may swallow.
      return report.note.empty() ? static_cast<int>(kExitDone)
                                 : console.Error(kExitDone, report.note);
    case Outcome::kInterrupted: return console.Error(kExitInterrupted, "Interrupted." + written);
    case Outcome::kPortError:
      return console.Error(kExitPortError,
                           kPortErrorText + Advice(link_.port().Problem()) + written);
    case Outcome::kCommunicationError:
      return console.Error(kExitCommunicationError, kCommunicationErrorText + reason);
    case Outcome::kDataError: return console.Error(kExitDataError, kDataErrorText + reason);
    case Outcome::kNotAsKnown: return kExitNotAsKnown;  // said with its differences
    case Outcome::kWrongModel:
    case Outcome::kCancelled:
      return console.Error(
          kExitWrongModel,
          "Model is not correct: " + ModelsText(report) + "." +
              (written.empty() ? " The file is as it was. --force starts it anew with the radio's "
                                 "model."
                               : written + " Write a file of the radio's model."));
  }
  return kExitDone;
}

void AddOnlyOption(CLI::App& command, std::string& only) {
  command.add_option("--only", only, "one half only")->check(CLI::IsMember({"settings", "memory"}));
}

Half HalfOf(const std::string& only) {
  if (only == "settings") return Half::kSettings;
  return only == "memory" ? Half::kMemory : Half::kBoth;
}

CLI::Option* AddBackupOption(CLI::App& command, std::optional<std::string>& path) {
  return command
      .add_option("--backup", path,
                  "read the radio first and keep what it holds in this new clone file")
      ->type_name("FILE");
}

CLI::Option* AddRestOptions(CLI::App& command, bool& rest, std::optional<std::string>& before) {
  auto* option = command.add_flag(
      "--rest", rest, "go on where it broke off: write what the radio does not hold yet, verified");
  command
      .add_option("--before", before,
                  "with --rest: what the radio held before, a backup; if it holds something else\n"
                  "by now, nothing is written")
      ->type_name("FILE")
      ->needs(option);
  return option;
}

}  // namespace q40
