// A part of the channel list: rows that are selected as a whole, with one current cell that is edited in
// place.
#pragma once

#include <QTableView>

#include "channel_list/channel_list_filter.h"

namespace q40 {

class CellDelegate;

class ChannelTable final : public QTableView {
  Q_OBJECT

 public:
  ChannelTable(ChannelListModel& channels, QWidget* parent);

  [[nodiscard]] ChannelListFilter& rows() const { return *rows_; }
  [[nodiscard]] ChannelListModel& channels() const { return rows_->channels(); }

  // In the order of the list.
  [[nodiscard]] std::vector<ChannelPlace> SelectedPlaces() const;
  // The rows that are shown, from the current one on.
  [[nodiscard]] std::vector<ChannelPlace> PlacesFromCurrent() const;
  // The row that is shown above (-1) or below (1) one that is.
  [[nodiscard]] std::optional<ChannelPlace> ShownBeside(const ChannelPlace& place, int by) const;
  // The columns that are shown, as they stand; model columns.
  [[nodiscard]] std::vector<int> ShownColumns() const;
  [[nodiscard]] std::vector<Field> ShownFields() const;
  // From the current column on.
  [[nodiscard]] std::vector<Field> FieldsFromCurrent() const;
  [[nodiscard]] Field CurrentField() const;

  // Selects these channels, the first of them current, as far as they are shown.
  void Select(const std::vector<ChannelPlace>& places);
  // Makes a cell current, selects its row and scrolls to it.
  void GoTo(const QModelIndex& cell);
  // There is a current cell as long as there is a row.
  void KeepCurrent();
  // Hands over what is being typed; or gives it up.
  void FinishEdit(bool take);
  // Hands it over, as Enter does. False: it was refused, and stays.
  bool LeaveEdit();
  // Looks anew which rows are shown. A row that is being edited stays with those that have been, also
  // when it is none of them any more: it must not go from under the hands of the user.
  void Refilter();

 signals:
  // A text that could not be taken, or what followed from one.
  void said(const QString& text);
  void currentCellChanged();
  // The selected rows were dragged to before this row of the list.
  void rowsDropped(int to);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void dropEvent(QDropEvent* event) override;
  void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;

 private:
  [[nodiscard]] QWidget* Editor() const;
  void Leave(int rows, int columns);

  ChannelListFilter* rows_;
  CellDelegate* cells_;
};

}  // namespace q40
