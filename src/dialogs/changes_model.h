// Differences as a table: place, what, before, after, in groups with headings.
#pragma once

#include <vector>

#include <QAbstractTableModel>

#include "document/document_cells.h"

namespace q40 {

class ChangesModel final : public QAbstractTableModel {
  Q_OBJECT

 public:
  enum Column : int { kPlace, kWhat, kBefore, kAfter, kColumns };

  using QAbstractTableModel::QAbstractTableModel;

  void SetDifferences(std::vector<CellDifference> differences);
  // Shows those that contain the text in one of their cells, in whatever case.
  void SetFilter(const QString& filter);

  [[nodiscard]] const std::vector<CellDifference>& differences() const { return differences_; }
  // What a row shows; null for the heading of a group, which nobody can select.
  [[nodiscard]] const CellDifference* At(int row) const;
  [[nodiscard]] int shown() const { return shown_; }
  // "2 settings, 1 cell of special channels": of all, whatever the filter shows.
  [[nodiscard]] QString CountsText() const;

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                    int role) const override;
  [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;

 private:
  struct Line {
    int difference = -1;  // of a heading
    QString heading;
  };

  void Arrange();
  [[nodiscard]] bool Passes(const CellDifference& difference) const;

  std::vector<CellDifference> differences_;
  std::vector<Line> lines_;
  QString filter_;
  int shown_ = 0;
};

}  // namespace q40
