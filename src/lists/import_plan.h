// What a foreign list becomes in a document, row by row, before anything is done.
//
// A row becomes a whole channel, as a new one of the edit dialog with the list's values put in by
// the dialog's rules, or nothing. What of it does not fit leaves its default and is noted.
#pragma once

#include <string>
#include <vector>

#include "document/clone_data.h"
#include "lists/foreign_list.h"
#include "lists/meaning.h"

namespace q40 {

struct PlanOptions {
  int first_channel = 0;        // 0..209: from here to D9 channels are filled
  bool replace_in_use = false;  // false: only channels that are not in use are filled
  bool only_fm = false;         // rows of another mode are left out; without one a row counts as FM
  bool only_own_bands = false;  // rows outside the bands of the document's model are left out
};

enum class RowOutcome : unsigned char {
  kChannel,     // becomes a channel
  kLeftOut,     // by one of the filters
  kPassedOver,  // cannot become a channel: the first note says why
  kNoPlace,     // could, but no channel is left, or the one that it names is not free
};

struct PlanNote {
  std::string item;  // what it is about, "Tone sent", "Step"; empty: the row as a whole
  std::string text;  // a sentence or a part of one; without control characters
  // Whether something of the list does not fit, or will not be kept. False: worth knowing only, as
  // that a channel is replaced or that a filter has left the row out.
  bool loss = true;

  // "Name: "DB0ABC-L" is stored as "DB0ABC""
  [[nodiscard]] std::string Message() const;
};

struct PlannedRow {
  int line = 0;  // of the list, from 1
  RowOutcome outcome = RowOutcome::kPassedOver;
  int channel = -1;      // 0..209 with kChannel, otherwise -1
  ChannelRecord record;  // with kChannel: what the channel will be
  // What is characteristic of the channel: "438.7250 -7.6000 Tone 67.0 DB0ABC". Of a row that becomes
  // none its output frequency and name as they are written, so that it can be recognised.
  std::string becomes;
  std::vector<PlanNote> notes;

  // "12", "D3" with kChannel; "left out", "passed over", "no place" otherwise.
  [[nodiscard]] std::string PlaceText() const;
  // All of them on one line, "; " between them.
  [[nodiscard]] std::string NotesText() const;
  // The whole row: "line 3: channel 12 becomes 438.7250 -7.6000 Tone 67.0 DB0ABC; Step: ...".
  [[nodiscard]] std::string Message() const;
};

struct ImportPlan {
  // Why there is no plan at all: no column is the output frequency, or two have one meaning. Then
  // there are no rows.
  std::string problem;
  std::vector<PlannedRow> rows;  // one for each row of the list, in its order

  [[nodiscard]] int Count(RowOutcome outcome) const;
  // Notes that are losses, over all rows.
  [[nodiscard]] int Losses() const;
  // Every row became a channel or was left out by a filter, and nothing of it was lost.
  [[nodiscard]] bool Whole() const { return problem.empty() && Losses() == 0; }
  // "12 channels from 5 on; 3 rows left out, 1 passed over, 2 without a place": for people.
  [[nodiscard]] std::string Summary() const;
};

// Depends on nothing but its arguments; made anew at every change of one of them. `document` gives the
// model, its version, and the channels that are there. A name that was shortened is never equal to
// another one of the plan or of a channel that stays.
ImportPlan PlanImport(const ForeignList& list, const ColumnMeanings& meanings,
                      const PlanOptions& options, const CloneData& document);

// The image after the plan; CloneDocument::StoreChannels makes it one change of a document. `image`
// must be that of the document for which the plan was made.
CloneImage Filled(const ImportPlan& plan, const CloneImage& image);

// The first channel that is not in use, from which on most will want to fill; 0 when all are.
int FirstFreeChannel(const CloneImage& image);

}  // namespace q40
