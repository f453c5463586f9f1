// What an import took from a list in another form than it was written.
#pragma once

#include "dialogs/place_list.h"
#include "files/channel_csv.h"

namespace q40 {

class ImportNotes : public PlaceList {
  Q_OBJECT

 public:
  explicit ImportNotes(QWidget* owner);

  // One row a note: line, channel, item, what happened.
  static std::vector<Row> RowsOf(const ImportReport& report);
  // `account` is what the import as a whole did, in sentences.
  void ShowNotes(const QString& account, const ImportReport& report);
};

}  // namespace q40
