#include "channel_list/channel_table.h"

#include <algorithm>

#include <QApplication>
#include <QDropEvent>
#include <QHeaderView>
#include <QKeyEvent>

#include "channel_list/cell_delegate.h"

namespace q40 {

ChannelTable::ChannelTable(ChannelListModel& channels, QWidget* parent)
    : QTableView(parent),
      rows_(new ChannelListFilter(channels, this)),
      cells_(new CellDelegate(this)) {
  setModel(rows_);
  setItemDelegate(cells_);
  connect(cells_, &CellDelegate::refused, this, &ChannelTable::said);
  connect(cells_, &CellDelegate::left, this, &ChannelTable::Leave);
  // After the cell that the user goes to has had its say.
  for (const auto told : {&ChannelListModel::refused, &ChannelListModel::followed}) {
    connect(&channels, told, this, &ChannelTable::said, Qt::QueuedConnection);
  }
  setSelectionBehavior(SelectRows);
  setSelectionMode(ExtendedSelection);
  setEditTriggers(DoubleClicked | EditKeyPressed | AnyKeyPressed);
  setWordWrap(false);
  setAlternatingRowColors(true);
  setCornerButtonEnabled(false);
  setHorizontalScrollMode(ScrollPerPixel);
  setContextMenuPolicy(Qt::ActionsContextMenu);
  if (channels.kind() == ChannelKind::kMemory) {
    setDragDropMode(InternalMove);
    setDragDropOverwriteMode(false);
    setDropIndicatorShown(true);
  }
  horizontalHeader()->setSectionsMovable(true);
  horizontalHeader()->setHighlightSections(false);
  verticalHeader()->setDefaultAlignment(Qt::AlignCenter);
  const int text = fontMetrics().height();
  verticalHeader()->setMinimumSectionSize(text);
  verticalHeader()->setDefaultSectionSize(text + text / 2);
  for (int column = 0; column < channels.columnCount(); ++column) {
    const QString heading = channels.headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
    const bool name = channels.FieldAt(column) == Field::kName;
    int wide = fontMetrics().horizontalAdvance(name ? QString(kNameLength + 1, QLatin1Char('W'))
                                                    : QStringLiteral("0123456"));
    for (const QString& line : heading.split(QLatin1Char('\n'))) {
      wide = std::max(wide, fontMetrics().horizontalAdvance(line + QStringLiteral("MM")));
    }
    setColumnWidth(column, wide);
  }
  setCurrentIndex(rows_->index(0, 0));
}

std::vector<ChannelPlace> ChannelTable::SelectedPlaces() const {
  std::vector<int> rows;
  for (const QModelIndex& index : selectionModel()->selectedRows()) rows.push_back(index.row());
  std::sort(rows.begin(), rows.end());
  std::vector<ChannelPlace> places;
  places.reserve(rows.size());
  for (const int row : rows) places.push_back(rows_->PlaceAt(row));
  return places;
}

std::vector<ChannelPlace> ChannelTable::PlacesFromCurrent() const {
  std::vector<ChannelPlace> places;
  if (!currentIndex().isValid()) return places;
  for (int row = currentIndex().row(); row < rows_->rowCount(); ++row) {
    places.push_back(rows_->PlaceAt(row));
  }
  return places;
}

std::optional<ChannelPlace> ChannelTable::ShownBeside(const ChannelPlace& place, int by) const {
  const QModelIndex shown =
      rows_->mapFromSource(channels().index(ChannelListModel::RowAt(place), 0));
  const int row = shown.row() + by;
  if (!shown.isValid() || row < 0 || row >= rows_->rowCount()) return std::nullopt;
  return rows_->PlaceAt(row);
}

std::vector<int> ChannelTable::ShownColumns() const {
  std::vector<int> columns;
  for (int visual = 0; visual < horizontalHeader()->count(); ++visual) {
    const int column = horizontalHeader()->logicalIndex(visual);
    if (!isColumnHidden(column)) columns.push_back(column);
  }
  return columns;
}

std::vector<Field> ChannelTable::ShownFields() const {
  std::vector<Field> fields;
  for (const int column : ShownColumns()) fields.push_back(channels().FieldAt(column));
  return fields;
}

std::vector<Field> ChannelTable::FieldsFromCurrent() const {
  std::vector<Field> fields = ShownFields();
  fields.erase(fields.begin(), std::find(fields.begin(), fields.end(), CurrentField()));
  return fields;
}

Field ChannelTable::CurrentField() const {
  return channels().FieldAt(std::max(0, currentIndex().column()));
}

void ChannelTable::Select(const std::vector<ChannelPlace>& places) {
  QItemSelection selection;
  QModelIndex first;
  for (const ChannelPlace& place : places) {
    const int column = std::max(0, currentIndex().column());
    const QModelIndex cell =
        rows_->mapFromSource(channels().index(ChannelListModel::RowAt(place), column));
    if (!cell.isValid()) continue;
    if (!first.isValid()) first = cell;
    selection.select(cell, cell);
  }
  if (!first.isValid()) return;
  selectionModel()->setCurrentIndex(first, QItemSelectionModel::NoUpdate);
  selectionModel()->select(selection,
                           QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
  scrollTo(first);
}

void ChannelTable::GoTo(const QModelIndex& cell) {
  if (!cell.isValid()) return;
  setCurrentIndex(cell);
  scrollTo(cell);
}

void ChannelTable::KeepCurrent() {
  if (!currentIndex().isValid()) GoTo(rows_->index(0, ShownColumns().front()));
}

// Null: no cell is being edited.
QWidget* ChannelTable::Editor() const {
  if (state() != EditingState) return nullptr;
  QWidget* editor = indexWidget(currentIndex());
  if (editor == nullptr) editor = QApplication::focusWidget();
  if (editor == nullptr || !viewport()->isAncestorOf(editor)) return nullptr;
  while (editor->parentWidget() != viewport()) editor = editor->parentWidget();
  return editor;
}

void ChannelTable::FinishEdit(bool take) {
  QWidget* editor = Editor();
  if (editor == nullptr) return;
  if (take) commitData(editor);
  closeEditor(editor, QAbstractItemDelegate::RevertModelCache);
}

bool ChannelTable::LeaveEdit() {
  QWidget* editor = Editor();
  return editor == nullptr || cells_->Leave(*editor, 0, 0);
}

void ChannelTable::Refilter() {
  if (state() != EditingState) rows_->Refilter();
}

// From the current cell, over what is shown; at an end it stays. Who goes nowhere keeps the selection.
void ChannelTable::Leave(int rows, int columns) {
  if (rows == 0 && columns == 0) return;
  const std::vector<int> shown = ShownColumns();
  const auto at = std::find(shown.begin(), shown.end(), currentIndex().column());
  if (at == shown.end()) return;
  const int column = static_cast<int>(at - shown.begin()) + columns;
  const int row = currentIndex().row() + rows;
  if (row < 0 || row >= rows_->rowCount() || column < 0 ||
      column >= static_cast<int>(shown.size())) {
    return;
  }
  GoTo(rows_->index(row, shown[static_cast<std::size_t>(column)]));
}

void ChannelTable::keyPressEvent(QKeyEvent* event) {
  const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (!enter || state() == EditingState) return QTableView::keyPressEvent(event);
  Leave(event->modifiers().testFlag(Qt::ShiftModifier) ? -1 : 1, 0);
}

// The rows are not moved by the view, which would take them away where they were: the document moves
// them.
void ChannelTable::dropEvent(QDropEvent* event) {
  if (event->source() != this) return;
  const QModelIndex under = indexAt(event->position().toPoint());
  const bool below = dropIndicatorPosition() == BelowItem;
  const int row = under.isValid() ? under.row() + (below ? 1 : 0) : rows_->rowCount();
  const int to = row < rows_->rowCount() ? rows_->PlaceAt(row).index : channels().rowCount();
  event->setDropAction(Qt::CopyAction);
  event->accept();
  stopAutoScroll();
  setState(NoState);
  viewport()->update();
  emit rowsDropped(to);
}

void ChannelTable::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
  QTableView::currentChanged(current, previous);
  viewport()->update();  // the frame of the cell before
  emit currentCellChanged();
}

}  // namespace q40
