#include "import_other/raw_list_model.h"

#include <algorithm>

#include <QTextDocument>

#include "base/plain_text.h"
#include "widgets/paths.h"

namespace q40 {

QString CellOf(std::string_view item) {
  constexpr std::size_t kLongest = 80;
  const std::string cut = FirstCharacters(item, kLongest);
  return cut.size() == item.size() ? Shown(item) : Shown(cut) + QChar(0x2026);
}

// Only a marked-up one is wrapped.
QString WholeToolTip(const QString& text) {
  constexpr int kOneLine = 80;
  return text.size() > kOneLine ? Qt::convertFromPlainText(text, Qt::WhiteSpaceNormal)
                                : PlainToolTip(text);
}

bool RawListModel::Show(const ForeignList& list) {
  const auto same = [](const ListRow& a, const ListRow& b) {
    return a.line == b.line && a.items == b.items;
  };
  const auto end =
      list.rows.begin() + static_cast<std::ptrdiff_t>(std::min(list.rows.size(), kRowsShown));
  if (headings_ == list.headings &&
      std::equal(rows_.begin(), rows_.end(), list.rows.begin(), end, same)) {
    return false;
  }
  beginResetModel();
  headings_ = list.headings;
  rows_.assign(list.rows.begin(), end);
  endResetModel();
  return true;
}

QString RawListModel::Heading(int column) const {
  const QString heading = CellOf(headings_[static_cast<std::size_t>(column)]);
  return heading.isEmpty() ? tr("Column %1").arg(column + 1) : heading;
}

int RawListModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() || headings_.empty() ? 0 : static_cast<int>(rows_.size()) + 1;
}

int RawListModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(headings_.size());
}

QVariant RawListModel::data(const QModelIndex& index, int role) const {
  if (!checkIndex(index, CheckIndexOption::IndexIsValid) || index.row() == 0) return {};
  const std::string_view item = ForeignList::Item(rows_[static_cast<std::size_t>(index.row() - 1)],
                                                  static_cast<std::size_t>(index.column()));
  if (role == Qt::DisplayRole) return CellOf(item);
  if (role == Qt::ToolTipRole) return WholeToolTip(Shown(item));
  return {};
}

QVariant RawListModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation == Qt::Vertical) {
    if (role != Qt::DisplayRole) return {};
    return section == 0 ? tr("Means")
                        : QString::number(rows_[static_cast<std::size_t>(section - 1)].line);
  }
  if (role == Qt::DisplayRole) return Heading(section);
  if (role != Qt::ToolTipRole) return {};
  return WholeToolTip(Shown(headings_[static_cast<std::size_t>(section)]));
}

}  // namespace q40
