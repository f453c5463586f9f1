// The first rows of a foreign list, with a box above each column in which its meaning is chosen.
#pragma once

#include <vector>

#include <QTableView>

#include "lists/meaning.h"

class QComboBox;

namespace q40 {

class RawListModel;
struct ForeignList;

class ColumnTable final : public QTableView {
  Q_OBJECT

 public:
  explicit ColumnTable(QWidget* parent);

  void Show(const ForeignList& list, const ColumnMeanings& meanings);

 signals:
  void meaningChosen(int column, q40::Meaning meaning);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void MakeBoxes();
  QComboBox* MakeBox(int column);

  RawListModel* rows_;
  std::vector<QComboBox*> boxes_;  // one for each column
};

}  // namespace q40
