// The table of what differs, with its filter and its counts: part of the windows that show changes.
#pragma once

#include <vector>

#include <QWidget>

#include "dialogs/changes_model.h"

class QLabel;
class QLineEdit;
class QTableView;

namespace q40 {

class ChangesView final : public QWidget {
  Q_OBJECT

 public:
  explicit ChangesView(QWidget* parent);

  // `none` is said in place of the counts when there is no difference, `about` behind them. What was
  // selected stays so, as far as it still differs.
  void Show(std::vector<CellDifference> differences, const QString& none, const QString& about);

  [[nodiscard]] std::vector<CellAddress> Selected() const;
  // The selected rows as text, one a line; all that are shown when none is selected.
  [[nodiscard]] QString AsText() const;
  void Copy() const;
  void FocusTable();

 signals:
  void selectionChanged();
  // Double click, or the Enter key.
  void chosen(const q40::CellAddress& cell);

 private:
  QTableView* MakeTable();
  void Filter(const QString& text);
  void Restore(const std::vector<CellDifference>& selected, const CellDifference& current);
  [[nodiscard]] std::vector<const CellDifference*> SelectedRows() const;
  void TellCounts();
  void Choose();

  ChangesModel* model_;
  QLineEdit* filter_;
  QLabel* summary_;
  QTableView* table_;
  QString none_;
  QString about_;
};

}  // namespace q40
