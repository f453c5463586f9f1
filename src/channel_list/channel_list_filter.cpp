#include "channel_list/channel_list_filter.h"

#include <algorithm>

namespace q40 {

ChannelListFilter::ChannelListFilter(ChannelListModel& channels, QObject* parent)
    : QSortFilterProxyModel(parent), channels_(channels) {
  setDynamicSortFilter(false);
  setSourceModel(&channels);
}

void ChannelListFilter::SetHideEmpty(bool hide) {
  hide_empty_ = hide;
  invalidateFilter();
}

void ChannelListFilter::SetWanted(const QString& text) {
  wanted_ = text.trimmed();
  const bool number = std::all_of(wanted_.begin(), wanted_.end(), [](QChar c) {
    return c.isDigit() || c == QLatin1Char(',') || c == QLatin1Char('.');
  });
  if (number) wanted_.replace(QLatin1Char(','), QLatin1Char('.'));
  invalidateFilter();
}

ChannelPlace ChannelListFilter::PlaceAt(int row) const {
  return channels_.PlaceAt(mapToSource(index(row, 0)).row());
}

bool ChannelListFilter::Matches(const QModelIndex& index) const {
  return index.data().toString().contains(wanted_, Qt::CaseInsensitive);
}

bool ChannelListFilter::filterAcceptsRow(int row, const QModelIndex& /*parent*/) const {
  const bool empty = channels_.index(row, 0).data().toString().isEmpty();
  // The repeater row has no frequency of its own and is there all the same.
  const ChannelPlace place = channels_.PlaceAt(row);
  const bool repeater = place.kind == ChannelKind::kSpecial && place.index == kRptRow;
  if (hide_empty_ && empty && !repeater) return false;
  if (wanted_.isEmpty()) return true;
  const QString title = channels_.headerData(row, Qt::Vertical, Qt::DisplayRole).toString();
  if (title.compare(wanted_, Qt::CaseInsensitive) == 0) return true;
  for (int column = 0; column < channels_.columnCount(); ++column) {
    if (Matches(channels_.index(row, column))) return true;
  }
  return false;
}

QModelIndex ChannelListFilter::Next(const QModelIndex& from, const std::vector<int>& columns,
                                    bool backward) const {
  const int width = static_cast<int>(columns.size());
  const int cells = width * rowCount();
  if (cells == 0 || wanted_.isEmpty()) return {};
  const auto column = std::find(columns.begin(), columns.end(), from.column());
  const int start = from.isValid() && column != columns.end()
                        ? from.row() * width + static_cast<int>(column - columns.begin())
                        : cells - 1;
  for (int step = 1; step <= cells; ++step) {
    const int at = (start + (backward ? cells - step : step)) % cells;
    const QModelIndex cell = index(at / width, columns[static_cast<std::size_t>(at % width)]);
    if (Matches(cell)) return cell;
  }
  return {};
}

}  // namespace q40
