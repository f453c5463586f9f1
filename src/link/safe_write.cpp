#include "link/safe_write.h"

#include "base/hex.h"
#include "link/unit_sequences.h"

namespace q40 {
namespace {

// False: `result` says why the write must not start.
bool BackUp(Link& link, int model, SequenceWatcher& watcher, const WriteNet& net,
            WriteResult& result) {
  RadioCopy radio;
  result.stage = WriteResult::Stage::kBackup;
  result.last = UnitSequences(link, watcher).BackUp(model, radio);
  if (result.last.outcome != Outcome::kDone) return false;
  result.backup_kept = net.keep_backup(radio);
  if (result.backup_kept) return true;
  result.last.outcome = Outcome::kCancelled;
  result.last.why = "the backup could not be kept";
  return false;
}

void AddDifferences(const UnitData& a, const UnitData& b, WriteResult& result) {
  auto more = UnitDifferences(a, b);
  result.differences.insert(result.differences.end(), more.begin(), more.end());
}

// Reads back what was acknowledged.
void Verify(Link& link, SequenceWatcher& watcher, int model, WriteResult& result) {
  if (result.write.outcome != Outcome::kDone) return;
  result.stage = WriteResult::Stage::kVerify;
  std::vector<UnitData> found;
  result.last =
      UnitSequences(link, watcher).Read(Sequence::kVerify, model, result.write.acknowledged, found);
  if (result.last.outcome != Outcome::kDone) return;
  for (std::size_t i = 0; i < found.size(); ++i) {
    AddDifferences(result.write.acknowledged[i], found[i], result);
  }
}

// Writes units as they are, and reads them back.
void WriteAndVerify(Link& link, SequenceWatcher& watcher, Sequence sequence, int model,
                    const std::vector<UnitData>& units, WriteResult& result) {
  result.stage = WriteResult::Stage::kWrite;
  result.last = result.write = UnitSequences(link, watcher).Write(sequence, model, units);
  Verify(link, watcher, model, result);
}

// What must be written of what the radio was found to hold. No value: it may not be written.
std::optional<std::vector<UnitData>> ToWrite(const std::vector<UnitSwap>& swaps,
                                             const std::vector<UnitData>& found,
                                             WriteResult& result) {
  std::vector<UnitData> units;
  for (std::size_t i = 0; i < found.size(); ++i) {
    const UnitSwap& swap = swaps[i];
    const std::string& holds = found[i].digits;
    if (!swap.IsKnown(holds)) {
      AddDifferences({swap.target.unit, swap.known.front()}, found[i], result);
      result.unlike.push_back(found[i]);
    } else if (UpperCase(holds) != UpperCase(swap.target.digits)) {
      units.push_back(swap.target);
    }
  }
  if (result.unlike.empty()) return units;
  result.last.outcome = Outcome::kNotAsKnown;
  result.last.why = "the radio does not hold what it was known to hold";
  result.last.remedy = "Read it, or write everything.";
  result.last.where.clear();
  return std::nullopt;
}

}  // namespace

WriteResult SafeWrite(Link& link, CloneDocument& document, SequenceWatcher& watcher, Half half,
                      const WriteNet& net) {
  WriteResult result;
  result.half = half;
  result.planned = MakeWritePlan(document.data(), half).All();
  // The write refuses data that is none, and says so itself: no need to read the radio first.
  const bool backs_up = net.keep_backup && !FirstBadUnit(result.planned);
  if (backs_up && !BackUp(link, document.model(), watcher, net, result)) return result;
  result.stage = WriteResult::Stage::kWrite;
  result.last = result.write = Sequences(link, document, watcher).Write(half);
  if (net.verify) Verify(link, watcher, document.model(), result);
  return result;
}

WriteResult RestoreRadio(Link& link, SequenceWatcher& watcher, const RadioCopy& copy,
                         const WriteNet& net) {
  WriteResult result;
  result.half = Half::kBoth;
  result.planned = copy.units;
  const bool backs_up = net.keep_backup && !FirstBadUnit(copy.units);
  if (backs_up && !BackUp(link, copy.model, watcher, net, result)) return result;
  WriteAndVerify(link, watcher, Sequence::kRestore, copy.model, copy.units, result);
  return result;
}

WriteResult SwapUnits(Link& link, SequenceWatcher& watcher, int model,
                      const std::vector<UnitSwap>& swaps) {
  WriteResult result;
  for (const UnitSwap& swap : swaps) result.planned.push_back(swap.target);
  if (FirstBadUnit(result.planned)) {  // refused, and said so, before the first byte
    WriteAndVerify(link, watcher, Sequence::kWriteUnits, model, result.planned, result);
    return result;
  }
  result.stage = WriteResult::Stage::kCompare;
  std::vector<UnitData> found;
  result.last = UnitSequences(link, watcher).Read(Sequence::kCompare, model, result.planned, found);
  if (result.last.outcome != Outcome::kDone) return result;
  const auto units = ToWrite(swaps, found, result);
  if (units && !units->empty()) {
    WriteAndVerify(link, watcher, Sequence::kWriteUnits, model, *units, result);
  }
  return result;
}

}  // namespace q40
