#include "link/unit_sequences.h"

#include "link/write_plan.h"

namespace q40 {

bool UnitSequences::Identify(std::optional<int> model) {
  std::string reply;
  constexpr bool kExactly = true;
  if (!AskIdentity(reply, kExactly) || !TakeIdentity(reply)) return false;
  return !model || IsModel(*model);
}

SequenceReport UnitSequences::BackUp(std::optional<int> model, RadioCopy& copy) {
  copy = {};
  Begin(Sequence::kBackUp, kUnitCount);
  if (!OpenPort() || !Identify(model)) return Finish(false);
  copy.model = report_.radio_model;
  copy.version_letter = report_.version_letter;
  for (const Unit unit : UnitsOf(Half::kBoth)) {
    if (unit.kind() != Unit::Kind::kMemory) Pause();
    copy.units.push_back({unit, {}});
    if (!ReadUnitExactly(unit, copy.units.back().digits)) return Finish(false);
  }
  EndClone();
  return Finish(true);
}

SequenceReport UnitSequences::Read(Sequence sequence, int model,
                                   const std::vector<UnitData>& wanted,
                                   std::vector<UnitData>& found) {
  Begin(sequence, wanted.size());
  if (!OpenPort() || !Identify(model)) return Finish(false);
  for (const UnitData& data : wanted) {
    Pause();
    found.push_back({data.unit, {}});
    if (!ReadUnitExactly(data.unit, found.back().digits)) return Finish(false);
  }
  EndClone();
  return Finish(true);
}

SequenceReport UnitSequences::Write(Sequence sequence, int model,
                                    const std::vector<UnitData>& units) {
  Begin(sequence, units.size());
  if (const auto bad = FirstBadUnit(units)) {
    report_.where = bad->where;
    report_.remedy = "Correct the file.";
    return Finish(Fail(Outcome::kDataError, bad->why));
  }
  if (!Announce()) return Finish(false);
  Pause();
  if (!Identify(model)) return Finish(false);
  for (const UnitData& data : units) {
    Pause();
    if (!WriteUnit(data)) return Finish(false);
  }
  EndClone();
  return Finish(true);
}

}  // namespace q40
