#include "app/unit_commands.h"

#include <algorithm>

#include "app/prompts.h"
#include "app/radio_commands.h"
#include "app/radio_texts.h"
#include "app/session.h"
#include "files/radio_copy_file.h"
#include "radio/models.h"
#include "widgets/paths.h"

namespace q40 {
namespace {

// Which half was not compared, a sentence with a blank before it.
QString NotComparedText(const RadioContent& radio) {
  const bool settings = radio.Knows(Half::kSettings);
  const bool memory = radio.Knows(Half::kMemory);
  if (settings && memory) return {};
  return UnitCommands::tr(
             " What the radio holds of its %1 is not known, so that was neither compared "
             "nor written.")
      .arg(settings ? UnitCommands::tr("memory channels")
           : memory ? UnitCommands::tr("settings")
                    : UnitCommands::tr("settings and memory channels, in part,"));
}

}  // namespace

UnitCommands::UnitCommands(Session& session, Prompts& prompts, RadioCommands& radio,
                           QObject* parent)
    : QObject(parent), session_(session), prompts_(prompts), radio_(radio) {}

// ---- changes

bool UnitCommands::MayCompare() {
  const auto units = UnitsOf(Half::kBoth);
  const RadioContent& radio = session_.radio();
  if (std::any_of(units.begin(), units.end(), [&](Unit unit) { return !radio.At(unit).empty(); })) {
    return true;
  }
  switch (prompts_.AskInstead(
      tr("It is not known what the radio holds: since the start of the program it was neither read "
         "nor "
         "written nor backed up.\n\nBack it up first: then only what differs is written. Or write "
         "everything. Reading it would replace what is loaded here."))) {
    case Prompts::Instead::kBackUp: return radio_.BackUp();
    case Prompts::Instead::kWriteAll: radio_.WriteFromMenu(Half::kBoth); return false;
    default: return false;
  }
}

void UnitCommands::WriteChanges() {
  session_.Settle();
  if (!MayCompare()) return;
  const CloneData& data = session_.document().data();
  const RadioContent& radio = session_.radio();
  const QString aside = NotComparedText(radio);
  // A radio of another model refuses by itself, when it has told what it is.
  const auto swaps = radio.model() == data.model
                         ? ChangedUnits(radio, data)
                         : RestOf(MakeWritePlan(data, Half::kBoth).All(), radio);
  if (!swaps.empty()) {
    if (radio_.MayWrite(Half::kBoth)) Swap(data.model, swaps, aside);
    return;
  }
  prompts_.Note(tr("Nothing differs from what the radio is known to hold. Nothing was sent.") +
                aside);
}

void UnitCommands::Swap(int model, const std::vector<UnitSwap>& swaps, const QString& aside) {
  std::vector<UnitData> planned;
  planned.reserve(swaps.size());
  for (const UnitSwap& swap : swaps) planned.push_back(swap.target);
  radio_.Run({model, planned,
              [&](SequenceWatcher& watcher, const WriteNet&) {
                return SwapUnits(session_.link(), watcher, model, swaps);
              },
              aside});
}

// ---- what broke off

void UnitCommands::WriteRest() {
  const UnfinishedWrite rest = *session_.unfinished().pending();
  Swap(rest.model, RestOf(rest.swaps), {});
}

void UnitCommands::ForgetRest() {
  if (prompts_.Confirm("FORGET OK",
                       tr("The radio may hold a part of what was written.\nDo you want to "
                          "forget what was left of it?"))) {
    session_.unfinished().Forget();
  }
}

void UnitCommands::FindRest() {
  if (const QString damaged = session_.unfinished().Find(); !damaged.isEmpty()) {
    return prompts_.NoteFailure(damaged);
  }
  if (!session_.unfinished().pending()) return;
  const std::string backup = radio_.keeper().WayBack();
  const QString text =
      UnfinishedText(*session_.unfinished().pending(), {Shown(FileName(backup)), Shown(backup)});
  prompts_.NoteFailure(text);
  emit told(text, {});
}

// ---- backups

void UnitCommands::Restore(const std::string& path) {
  RadioCopy copy;
  if (const auto problem = OpenRadioCopy(path, copy)) return prompts_.DataError(*problem);
  const QString text =
      tr("Everything in the radio, an %1, is replaced by what is kept in\n%2\n\nDo you "
         "want to restore it?")
          .arg(Shown(ModelName(copy.model)), Shown(FileName(path)));
  if (!prompts_.Confirm("RESTORE OK", text)) return;
  radio_.Run({copy.model,
              copy.units,
              [&](SequenceWatcher& watcher, const WriteNet& net) {
                return RestoreRadio(session_.link(), watcher, copy, net);
              },
              {}});
}

}  // namespace q40
