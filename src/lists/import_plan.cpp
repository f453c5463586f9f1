#include "lists/import_plan.h"

#include <algorithm>
#include <array>

#include "base/plain_text.h"
#include "checkup/checkup.h"
#include "document/channel_cells.h"
#include "lists/list_numbers.h"
#include "lists/list_words.h"
#include "lists/mapping.h"
#include "lists/row_channel.h"
#include "lists/short_name.h"
#include "radio/channel_fields.h"
#include "radio/memory_map.h"

namespace q40 {
namespace {

constexpr auto kKind = ChannelKind::kMemory;
constexpr int kNoChannel = -1;

ChannelPlace PlaceOf(int channel) { return {kKind, Band::kVhf, channel}; }

std::string Counted(int count, const std::string& what) {
  return std::to_string(count) + ' ' + what + (count == 1 ? "" : "s");
}

// "TSQ 88.5 123.0", "DCS 023"; empty without a tone.
std::string ToneText(const ChannelRecord& record) {
  const std::string& kind = record.Text(kKind, Field::kTone);
  const auto pair = [&](Field sent, Field heard) {
    const std::string text(WithoutUnit(sent, record.Text(kKind, sent)));
    const std::string other(WithoutUnit(heard, record.Text(kKind, heard)));
    return ' ' + (text == other ? text : text + ' ' + other);
  };
  if (kind == "Tone") return kind + pair(Field::kTxTone, Field::kTxTone);
  if (kind == "TSQ") return kind + pair(Field::kTxTone, Field::kRxTone);
  if (kind == "DCS") return kind + pair(Field::kTxDcs, Field::kRxDcs);
  return {};
}

std::string ChannelText(const ChannelRecord& record) {
  std::string text = OffsetText(record.Frequency());
  const auto add = [&](const std::string& part) { text += (part.empty() ? "" : " ") + part; };
  const std::string& shift = record.Text(kKind, Field::kShift);
  if (shift != "None") {
    add(shift.front() + OffsetText(record.Number(kKind, Field::kShiftFrequency)));
  }
  add(ToneText(record));
  if (record.Text(kKind, Field::kBandwidth) == "Narrow") add("Narrow");
  if (record.Number(kKind, Field::kSkip) == 1) add("Skip");
  add(record.Text(kKind, Field::kName));
  return text;
}

// How a row that becomes no channel can be recognised.
std::string WrittenText(const RowItems& items) {
  constexpr std::size_t kShown = 24;
  std::string text;
  for (const std::string_view item : {items.At(Meaning::kOutput), items.Name()}) {
    if (!item.empty()) text += (text.empty() ? "" : " ") + Printable(FirstCharacters(item, kShown));
  }
  return text;
}

class Planner {
 public:
  Planner(const ForeignList& list, const ColumnMeanings& meanings, const PlanOptions& options,
          const CloneData& document)
      : list_(list), meanings_(meanings), options_(options), document_(document), maker_(document) {
    for (std::size_t n = 0; n < kMemoryChannelCount; ++n) {
      taken_[n] = !options.replace_in_use && document.image.ChannelInUse[n];
    }
  }

  ImportPlan Make() {
    plan_.problem = WhyNotUsable(meanings_);
    if (!plan_.problem.empty()) return std::move(plan_);
    next_ = std::max(options_.first_channel, 0);
    for (const ListRow& row : list_.rows) TakeRow(row);
    GiveNames();
    for (PlannedRow& row : plan_.rows) {
      if (row.outcome == RowOutcome::kChannel) row.becomes = ChannelText(row.record);
    }
    AddFindings();
    return std::move(plan_);
  }

 private:
  void TakeRow(const ListRow& list_row) {
    const RowItems items(list_row, meanings_);
    PlannedRow row;
    row.line = list_row.line;
    row.becomes = WrittenText(items);
    if (const std::string why = WhyLeftOut(items); !why.empty()) {
      row.outcome = RowOutcome::kLeftOut;
      row.notes.push_back({{}, why, false});
    } else if (maker_.Make(items, row.record, row.notes)) {
      row.channel = FindPlace(items, row);
      row.outcome = row.channel == kNoChannel ? RowOutcome::kNoPlace : RowOutcome::kChannel;
    }
    if (row.outcome != RowOutcome::kChannel) {
      row.record = {};
    } else {
      Occupy(row);
    }
    plan_.rows.push_back(std::move(row));
  }

  [[nodiscard]] std::string WhyLeftOut(const RowItems& items) const {
    const std::string_view mode = items.At(Meaning::kMode);
    if (options_.only_fm && !mode.empty() && !ModeIn(mode).fm) return Quoted(mode) + " is not FM";
    if (!options_.only_own_bands || maker_.IsInBands(items)) return {};
    return "outside the bands of the " + std::string(ModelName(document_.model));
  }

  // A memory channel, or -1 with a note.
  int FindPlace(const RowItems& items, PlannedRow& row) {
    if (items.Has(Meaning::kChannel)) return NamedPlace(items.At(Meaning::kChannel), row);
    while (next_ < kMemoryChannelCount && taken_[static_cast<std::size_t>(next_)]) ++next_;
    if (next_ < kMemoryChannelCount) return next_;
    row.notes.insert(row.notes.begin(), {{}, "no channel is left", true});
    return kNoChannel;
  }

  int NamedPlace(std::string_view item, PlannedRow& row) const {
    const auto channel = ChannelIn(item);
    std::string why;
    if (!channel) {
      why = Quoted(item) + " is none: 0-199, D0-D9";
    } else if (const int line = lines_[static_cast<std::size_t>(*channel)]; line != 0) {
      why = ChannelTitle(*channel) + " is filled by line " + std::to_string(line);
    } else if (taken_[static_cast<std::size_t>(*channel)]) {
      why = ChannelTitle(*channel) + " is in use";
    } else {
      return *channel;
    }
    row.notes.insert(row.notes.begin(), {std::string(RowOf(Meaning::kChannel).words), why, true});
    return kNoChannel;
  }

  void Occupy(PlannedRow& row) {
    const auto n = static_cast<std::size_t>(row.channel);
    taken_[n] = true;
    lines_[n] = row.line;
    if (!document_.image.ChannelInUse[n]) return;
    const ChannelRecord& before = document_.image.MemoryTable[n];
    const std::string& name = before.Text(kKind, Field::kName);
    row.notes.push_back(
        {{},
         "replaces " + OffsetText(before.Frequency()) + (name.empty() ? "" : ' ' + Printable(name)),
         false});
  }

  // ---- names

  // Names that fit are given first, wherever they stand: only what was shortened makes way.
  void GiveNames() {
    NamesGiven given;
    for (std::size_t n = 0; n < kMemoryChannelCount; ++n) {
      const bool stays = document_.image.ChannelInUse[n] && lines_[n] == 0;
      if (stays) given.Add(document_.image.MemoryTable[n].Text(kKind, Field::kName));
    }
    for (const bool shortened : {false, true}) {
      for (std::size_t i = 0; i < plan_.rows.size(); ++i) {
        if (plan_.rows[i].outcome == RowOutcome::kChannel) GiveName(i, shortened, given);
      }
    }
  }

  void GiveName(std::size_t i, bool shortened, NamesGiven& given) {
    const RowItems items(list_.rows[i], meanings_);
    const std::string_view written = items.Name();
    if (written.empty()) return;
    std::string name = ShortName(written);
    if (IsSameName(name, written) == shortened) return;
    if (shortened && !name.empty()) name = given.Distinct(name);
    if (!shortened) given.Add(name);
    PlannedRow& row = plan_.rows[i];
    row.record.Set(kKind, Field::kName, name.empty() ? 0 : 1, name);
    if (!shortened) return;
    row.notes.push_back({std::string(RowOf(Meaning::kName).words),
                         name.empty() ? Quoted(written) + " has no character of a name"
                                      : Quoted(written) + " becomes " + Quoted(name),
                         true});
  }

  // ---- what the radio will not keep

  void AddFindings() {
    std::array<PlannedRow*, kMemoryChannelCount> rows{};
    for (PlannedRow& row : plan_.rows) {
      if (row.channel != kNoChannel) rows[static_cast<std::size_t>(row.channel)] = &row;
    }
    CloneData after = document_;
    after.image = Filled(plan_, document_.image);
    for (const Finding& finding : CheckUp(after)) {
      if (finding.place.where != Place::Where::kMemory) continue;
      PlannedRow* row = rows[static_cast<std::size_t>(finding.place.index)];
      if (row == nullptr || RowOf(finding.kind).severity == Severity::kHint) continue;
      row->notes.push_back({finding.field, finding.text, true});
    }
  }

  const ForeignList& list_;
  const ColumnMeanings& meanings_;
  const PlanOptions& options_;
  const CloneData& document_;
  ChannelMaker maker_;
  ImportPlan plan_;
  int next_ = 0;
  std::array<bool, kMemoryChannelCount> taken_{};
  std::array<int, kMemoryChannelCount> lines_{};  // of the row that fills it; 0: none
};

}  // namespace

// Without the full stop of a sentence: others may follow on the same line.
std::string PlanNote::Message() const {
  std::string message = item.empty() ? text : item + ": " + text;
  if (message.ends_with('.')) message.pop_back();
  return message;
}

std::string PlannedRow::PlaceText() const {
  switch (outcome) {
    case RowOutcome::kChannel: return ChannelTitle(channel);
    case RowOutcome::kLeftOut: return "left out";
    case RowOutcome::kNoPlace: return "no place";
    default: return "passed over";
  }
}

std::string PlannedRow::NotesText() const {
  std::string text;
  for (const PlanNote& note : notes) text += (text.empty() ? "" : "; ") + note.Message();
  return text;
}

std::string PlannedRow::Message() const {
  const bool done = outcome == RowOutcome::kChannel;
  std::string text = "line " + std::to_string(line) + ": ";
  if (done) text += "channel ";
  text += PlaceText() + (done ? " becomes " : ", ") + (becomes.empty() ? "nothing in it" : becomes);
  if (!notes.empty()) text += (done ? "; " : ": ") + NotesText();
  return text;
}

int ImportPlan::Count(RowOutcome outcome) const {
  return static_cast<int>(std::count_if(
      rows.begin(), rows.end(), [&](const PlannedRow& row) { return row.outcome == outcome; }));
}

int ImportPlan::Losses() const {
  int losses = 0;
  for (const PlannedRow& row : rows) {
    losses += static_cast<int>(std::count_if(row.notes.begin(), row.notes.end(),
                                             [](const PlanNote& note) { return note.loss; }));
  }
  return losses;
}

std::string ImportPlan::Summary() const {
  std::string text = Counted(Count(RowOutcome::kChannel), "channel");
  const auto add = [&](RowOutcome outcome, const std::string& what) {
    if (const int count = Count(outcome)) text += ", " + Counted(count, "row") + ' ' + what;
  };
  add(RowOutcome::kLeftOut, "left out");
  add(RowOutcome::kPassedOver, "passed over");
  add(RowOutcome::kNoPlace, "without a place");
  return text;
}

ImportPlan PlanImport(const ForeignList& list, const ColumnMeanings& meanings,
                      const PlanOptions& options, const CloneData& document) {
  return Planner(list, meanings, options, document).Make();
}

CloneImage Filled(const ImportPlan& plan, const CloneImage& image) {
  CloneImage filled = image;
  for (const PlannedRow& row : plan.rows) {
    if (row.outcome == RowOutcome::kChannel) PutRecord(filled, PlaceOf(row.channel), row.record);
  }
  return filled;
}

int FirstFreeChannel(const CloneImage& image) {
  const auto* const end = image.ChannelInUse.begin() + kMemoryChannelCount;
  const auto* const free = std::find(image.ChannelInUse.begin(), end, false);
  return free == end ? 0 : static_cast<int>(free - image.ChannelInUse.begin());
}

}  // namespace q40
