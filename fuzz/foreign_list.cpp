// Lists that others have made: read, guessed, mapped, planned.
//
// Input: a byte of options, the lines of a mapping up to an empty one, the bytes of the list.
#include "lists/foreign_list.h"

#include <set>

#include "checkup/checkup.h"
#include "document/defaults.h"
#include "files/clone_file.h"
#include "lists/import_plan.h"
#include "lists/mapping.h"
#include "radio/memory_map.h"
#include "target.h"

namespace q40::fuzz {
namespace {

constexpr auto kKind = ChannelKind::kMemory;

// A few channels in use, with names that lists may have as well.
CloneData Document(int model) {
  CloneData document = FreshData();
  ChangeModel(document, model);
  for (const std::size_t n : {0U, 3U, 200U}) {
    document.image.MemoryTable[n] = document.image.TemplateChannel();
    document.image.MemoryTable[n].Set(kKind, Field::kName, 1, n == 0 ? "HAMBRG" : "A2");
    document.image.ChannelInUse[n] = true;
  }
  return document;
}

void CheckMapping(const KeptMapping& kept) {
  KeptMapping again;
  Check(!ReadMapping(MappingText(kept), {}, again), "a mapping that is written can be read");
  Check(again == kept, "a mapping is read as it was written");
}

void CheckMeanings(const ForeignList& list, const ColumnMeanings& meanings) {
  Check(meanings.size() == list.Columns(), "every column has a meaning");
  const KeptMapping kept = KeptOf(list, meanings);
  CheckMapping(kept);
  std::vector<std::string> missing;
  Check(MeaningsFor(list, kept, missing) == meanings && missing.empty(),
        "a mapping finds the columns of the list that it was made of");
}

void CheckPlan(const ForeignList& list, const ColumnMeanings& meanings, const PlanOptions& options,
               const CloneData& before) {
  const ImportPlan plan = PlanImport(list, meanings, options, before);
  Check(plan.rows.size() == (plan.problem.empty() ? list.rows.size() : 0), "every row is planned");
  std::set<int> channels;
  for (const PlannedRow& row : plan.rows) {
    const bool done = row.outcome == RowOutcome::kChannel;
    Check(done || !row.notes.empty(), "a row that becomes nothing says why");
    Check(done == (row.channel >= 0 && row.channel < kMemoryChannelCount), "a channel has a place");
    if (!done) continue;
    Check(channels.insert(row.channel).second, "no channel is filled twice");
    const bool was_used = before.image.ChannelInUse[static_cast<std::size_t>(row.channel)];
    Check(options.replace_in_use || !was_used, "no channel in use is filled unasked");
  }
  CloneData after = before;
  after.image = Filled(plan, before.image);
  Check(CloneFileText(after, after.model).has_value(), "what was imported can be saved");
  for (const Finding& finding : CheckUp(after)) {
    Check(!channels.contains(finding.place.index) || finding.place.where != Place::Where::kMemory ||
              (finding.kind != FindingKind::kNameLost && finding.kind != FindingKind::kOutOfBand &&
               finding.kind != FindingKind::kOffsetLost),
          "names, frequencies and offsets are kept");
  }
}

}  // namespace

void Run(Input input) {
  const int bits = input.Byte();
  std::string mapping;
  for (auto line = input.Line(); !line.empty(); line = input.Line()) {
    mapping.append(line).append("\n");
  }
  KeptMapping kept;
  const bool mapped = !ReadMapping(mapping, {}, kept);
  if (mapped) CheckMapping(kept);
  ForeignList list;
  if (ReadForeignList(input.Rest(), {}, kept.form, list)) return;
  Check(!list.rows.empty() || list.heading_line > 0, "a list has rows or headings");
  const ColumnMeanings guessed = GuessMapping(list);
  CheckMeanings(list, guessed);
  std::vector<std::string> missing;
  const ColumnMeanings meanings = mapped ? MeaningsFor(list, kept, missing) : guessed;
  CheckMeanings(list, meanings);
  const PlanOptions options{(bits & 64) != 0 ? 190 : 0, (bits & 4) != 0, (bits & 8) != 0,
                            (bits & 16) != 0};
  CheckPlan(list, meanings, options, Document(bits % kModelCount));
}

}  // namespace q40::fuzz
