// What each row of a foreign list becomes, as a table: line, place, what it becomes, notes.
#pragma once

#include <QAbstractTableModel>

#include "lists/import_plan.h"

namespace q40 {

class PreviewModel final : public QAbstractTableModel {
  Q_OBJECT

 public:
  enum Column : int { kLine, kPlace, kBecomes, kNotes, kColumns };

  using QAbstractTableModel::QAbstractTableModel;

  void Show(ImportPlan plan);
  [[nodiscard]] const ImportPlan& plan() const { return plan_; }
  // "Line 12: " and its notes, each as long as it is; empty when there is no such row.
  [[nodiscard]] QString Account(int row) const;

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
  // A row with a loss has an icon in front of its notes, and says so to those who cannot see it.
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                    int role) const override;

 private:
  ImportPlan plan_;
};

}  // namespace q40
