// One row of a list as a channel, by the rules of the edit dialog.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "lists/import_plan.h"

namespace q40 {

// The items of a row by their meanings.
class RowItems {
 public:
  RowItems(const ListRow& row, const ColumnMeanings& meanings) : row_(row), meanings_(meanings) {}

  // Whether the list has such a column.
  [[nodiscard]] bool Has(Meaning meaning) const;
  // Empty where the list, or the row, has none.
  [[nodiscard]] std::string_view At(Meaning meaning) const;
  // Of the name, or where that is empty the second name.
  [[nodiscard]] std::string_view Name() const;

 private:
  const ListRow& row_;
  const ColumnMeanings& meanings_;
};

// Makes channels of rows, in an image of its own.
class ChannelMaker {
 public:
  explicit ChannelMaker(const CloneData& document);

  // Whether the row becomes a channel; `record` without its name then. `notes` either way.
  bool Make(const RowItems& items, ChannelRecord& record, std::vector<PlanNote>& notes);
  // Whether a row that has a frequency has it in the bands of the model.
  [[nodiscard]] bool IsInBands(const RowItems& items) const;

 private:
  class Row;

  CloneImage image_;
  int model_;
  CloneImage defaults_;  // the special channels of a new document
};

}  // namespace q40
