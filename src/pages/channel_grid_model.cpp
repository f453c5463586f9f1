#include "pages/channel_grid_model.h"

#include "base/decimal.h"
#include "pages/grid_columns.h"
#include "radio/channel_fields.h"
#include "widgets/paths.h"

namespace q40 {
namespace {

QString Text(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

}  // namespace

ChannelGridModel::ChannelGridModel(ChannelKind kind, const CloneImage& image, QObject* parent)
    : QAbstractTableModel(parent),
      kind_(kind),
      image_(image),
      rows_(kind == ChannelKind::kMemory ? kMemoryChannelCount : kSpecialChannelCount) {}

int ChannelGridModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int ChannelGridModel::columnCount(const QModelIndex& parent) const {
  if (parent.isValid()) return 0;
  return (kind_ == ChannelKind::kMemory ? kMemoryGridColumns : kSpecialGridColumns) - 1;
}

Field ChannelGridModel::FieldAt(int row, int column) const {
  if (by_heading_ || rows_[static_cast<std::size_t>(row)].order == Order::kByHeading) {
    return kHeadingFields[static_cast<std::size_t>(column)];
  }
  return FieldIn(kind_, column);
}

const ChannelRecord& ChannelGridModel::RecordAt(int row) const {
  const auto at = static_cast<std::size_t>(row);
  return kind_ == ChannelKind::kMemory ? image_.MemoryTable[at] : image_.ShownSpecialSet[at];
}

bool ChannelGridModel::InUse(int row) const {
  if (kind_ == ChannelKind::kMemory) return image_.ChannelInUse[static_cast<std::size_t>(row)];
  return EffectivelyPresent(image_.ShownSpecialSet, image_.ShownPresent, row);
}

QVariant ChannelGridModel::data(const QModelIndex& index, int role) const {
  if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
  if (role == Qt::FontRole) return cell_font_;
  if (!InUse(index.row())) return role == Qt::DisplayRole ? QVariant(QString()) : QVariant();
  const Field field = FieldAt(index.row(), index.column());
  if (role == Qt::DisplayRole) return Text(RecordAt(index.row()).Text(kind_, field));
  const bool foreign = field != kHeadingFields[static_cast<std::size_t>(index.column())];
  if (role == Qt::ToolTipRole && foreign) return Text(FieldName(field));
  return {};
}

QString ChannelGridModel::RowTitle(int row) const {
  if (kind_ == ChannelKind::kSpecial) return Text(kSpecialRowTitles[static_cast<std::size_t>(row)]);
  return QString::fromStdString(ChannelTitle(row));
}

QString ChannelGridModel::Described(int row) const {
  if (!InUse(row)) return tr("%1 (empty)").arg(RowTitle(row));
  const ChannelRecord& record = RecordAt(row);
  std::string text(WithoutStar(record.Text(kind_, Field::kFrequency)));
  if (HasField(kind_, Field::kName)) text += ' ' + record.Text(kind_, Field::kName);
  return QStringLiteral("%1 (%2)").arg(RowTitle(row), QString::fromStdString(text).trimmed());
}

QVariant ChannelGridModel::headerData(int section, Qt::Orientation orientation, int role) const {
  const bool row = orientation == Qt::Vertical;
  const RowState state = row ? rows_[static_cast<std::size_t>(section)] : RowState();
  const bool starred = state.starred;
  if (role == Qt::ToolTipRole && (starred || !state.was.isEmpty())) {
    QStringList tip = {state.was};
    if (starred) tip.prepend(tr("Imported with Skip on: the scan passes this channel over."));
    tip.removeAll(QString());
    return PlainToolTip(tip.join(QLatin1Char('\n')));
  }
  if (role == kMarkRole) return !state.was.isEmpty();
  if (role != Qt::DisplayRole) return {};
  if (row) return (starred ? QStringLiteral("*") : QString()) + RowTitle(section);
  return Text(RowOf(kHeadingFields[static_cast<std::size_t>(section)]).heading);
}

void ChannelGridModel::Redraw(int first, int last, Order order) {
  bool title_changed = false;
  for (int row = first; row <= last; ++row) {
    RowState& state = rows_[static_cast<std::size_t>(row)];
    title_changed = title_changed || state.starred;
    state.order = order;
    state.starred = false;
  }
  emit dataChanged(index(first, 0), index(last, columnCount() - 1));
  if (title_changed) emit headerDataChanged(Qt::Vertical, first, last);
}

void ChannelGridModel::StarTitle(int row) {
  rows_[static_cast<std::size_t>(row)].starred = true;
  emit headerDataChanged(Qt::Vertical, row, row);
}

void ChannelGridModel::MarkTitle(int row, const QString& was) {
  RowState& state = rows_[static_cast<std::size_t>(row)];
  if (state.was == was) return;
  state.was = was;
  emit headerDataChanged(Qt::Vertical, row, row);
}

void ChannelGridModel::ShowByHeading(bool on) {
  by_heading_ = on;
  emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
}

void ChannelGridModel::SetCellFont(const QFont& font) {
  cell_font_ = font;
  emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1), {Qt::FontRole});
}

}  // namespace q40
