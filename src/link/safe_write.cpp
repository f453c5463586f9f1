#include "link/safe_write.h"

#include <algorithm>
#include <cctype>

#include "link/read_aside.h"

namespace q40 {
namespace {

// False: `result` says why the write must not start.
bool BackUp(Link& link, int model, SequenceWatcher& watcher, const WriteNet& net,
            WriteResult& result) {
  CloneDocument radio;
  radio.ChangeModel(model);  // and nobody is asked for another one
  result.stage = WriteResult::Stage::kBackup;
  result.last = ReadAside(link, radio, watcher, Half::kBoth, Sequence::kBackUp);
  if (result.last.outcome != Outcome::kDone) return false;
  result.backup_kept = net.keep_backup(radio.data());
  if (result.backup_kept) return true;
  result.last.outcome = Outcome::kCancelled;
  result.last.why = "the backup could not be kept";
  return false;
}

void Compare(const std::vector<UnitData>& written, const std::vector<UnitData>& found,
             std::vector<CellDifference>& differences) {
  for (std::size_t i = 0; i < found.size(); ++i) {
    auto more = UnitDifferences(written[i], found[i]);
    differences.insert(differences.end(), more.begin(), more.end());
  }
}

// "settings and channels 0 to 41"
std::string AcknowledgedText(std::size_t settings, std::size_t channels, bool all_settings,
                             const SequenceReport& write) {
  std::string text;
  if (settings > 0) {
    text = all_settings ? "settings" : "settings up to " + write.acknowledged.back().unit.Name();
  }
  if (channels > 0) {
    if (settings > 0) text += " and ";
    text += channels == 1 ? "channel 0"
                          : "channels 0 to " + ChannelTitle(static_cast<int>(channels) - 1);
  }
  return text;
}

}  // namespace

WriteResult SafeWrite(Link& link, CloneDocument& document, SequenceWatcher& watcher, Half half,
                      const WriteNet& net) {
  WriteResult result;
  // The write refuses data that is none, and says so itself: no need to read the radio first.
  const bool backs_up = net.keep_backup && !FirstBadUnit(MakeWritePlan(document.data(), half));
  if (backs_up && !BackUp(link, document.model(), watcher, net, result)) return result;
  Sequences sequences(link, document, watcher);
  result.stage = WriteResult::Stage::kWrite;
  result.write = sequences.Write(half);
  result.last = result.write;
  if (!net.verify || result.write.outcome != Outcome::kDone) return result;
  result.stage = WriteResult::Stage::kVerify;
  std::vector<UnitData> found;
  result.last = sequences.Verify(result.write.acknowledged, found);
  if (result.last.outcome == Outcome::kDone) {
    Compare(result.write.acknowledged, found, result.differences);
  }
  return result;
}

std::string WrittenText(const SequenceReport& write, Half half) {
  const std::size_t planned = UnitsOf(half).size();
  const std::size_t settings_planned = half == Half::kMemory ? 0 : kSettingsUnits;
  std::size_t done = write.acknowledged.size();
  if (done == 0 && !write.in_flight) return "nothing was written";

  const std::size_t settings = std::min(done, settings_planned);
  std::string text =
      AcknowledgedText(settings, done - settings, settings == settings_planned, write);
  if (!text.empty()) text += " written";
  if (write.in_flight) {
    if (!text.empty()) text += ", ";
    text += write.in_flight->Name() + " perhaps (sent, but not acknowledged)";
    ++done;
  }
  if (done >= planned) return text;
  if (done <= settings_planned) return text + ", the rest as before";
  const int next = static_cast<int>(done - settings_planned);
  return text + ", " + ChannelTitle(next) + " onwards as before";
}

std::string AftermathText(const WriteResult& result, Half half, const std::string& restore) {
  using Stage = WriteResult::Stage;
  if (result.stage == Stage::kBackup) return "The backup was not made, so nothing was written.";
  std::string text;
  if (result.stage == Stage::kVerify) {
    text = "Everything was written, but not verified.";
  } else {
    text = WrittenText(result.write, half) + '.';
    text[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(text[0])));
  }
  const bool touched = !result.write.acknowledged.empty() || result.write.in_flight;
  if (result.backup_kept && touched) text += " To bring the backup back: " + restore;
  return text;
}

}  // namespace q40
