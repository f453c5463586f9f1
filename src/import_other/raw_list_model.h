// The first rows of a foreign list as they are written, under their headings. Row 0 is empty: there the
// meanings of the columns are chosen.
#pragma once

#include <QAbstractTableModel>

#include "lists/foreign_list.h"

namespace q40 {

// Of an item or a heading: without control characters, on one line, and no longer than a cell can show.
QString CellOf(std::string_view item);
// The whole of it as a tool tip that is no wider than a screen.
QString WholeToolTip(const QString& text);

class RawListModel final : public QAbstractTableModel {
  Q_OBJECT

 public:
  static constexpr std::size_t kRowsShown = 20;

  using QAbstractTableModel::QAbstractTableModel;

  // False: they are what is shown already.
  bool Show(const ForeignList& list);

  // "Frequenz"; "Column 3" where there is none.
  [[nodiscard]] QString Heading(int column) const;

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                    int role) const override;

 private:
  std::vector<std::string> headings_;
  std::vector<ListRow> rows_;
};

}  // namespace q40
