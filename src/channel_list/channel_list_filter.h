// The rows of a list that are shown: those in use, if the others are hidden, in which a text is found.
#pragma once

#include <QSortFilterProxyModel>

#include "channel_list/channel_list_model.h"

namespace q40 {

class ChannelListFilter final : public QSortFilterProxyModel {
  Q_OBJECT

 public:
  ChannelListFilter(ChannelListModel& channels, QObject* parent);

  void SetHideEmpty(bool hide);
  // Looked for in all values and in the title of the row, in either case; of numbers a comma is a point.
  void SetWanted(const QString& text);

  // After a change of the data. It is not done by itself.
  void Refilter() { invalidateFilter(); }

  [[nodiscard]] ChannelListModel& channels() const { return channels_; }
  // By rows of this model, as they are shown.
  [[nodiscard]] ChannelPlace PlaceAt(int row) const;
  // Where the text is found next, from a cell on (without it), around the end; invalid: nowhere, or there
  // is none. `columns` in the order in which they are shown.
  [[nodiscard]] QModelIndex Next(const QModelIndex& from, const std::vector<int>& columns,
                                 bool backward) const;

 protected:
  [[nodiscard]] bool filterAcceptsRow(int row, const QModelIndex& parent) const override;

 private:
  [[nodiscard]] bool Matches(const QModelIndex& index) const;

  ChannelListModel& channels_;
  bool hide_empty_ = false;
  QString wanted_;
};

}  // namespace q40
