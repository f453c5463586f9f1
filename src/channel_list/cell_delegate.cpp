#include "channel_list/cell_delegate.h"

#include <QAbstractItemView>
#include <QAbstractProxyModel>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>
#include <QToolTip>

#include "channel_list/channel_list_model.h"

namespace q40 {
namespace {

QModelIndex InList(const QModelIndex& index) {
  const auto* proxy = qobject_cast<const QAbstractProxyModel*>(index.model());
  return proxy == nullptr ? index : proxy->mapToSource(index);
}

const ChannelListModel& ListOf(const QModelIndex& index) {
  return static_cast<const ChannelListModel&>(*index.model());
}

QLineEdit& LineOf(QWidget& editor) {
  auto* box = qobject_cast<QComboBox*>(&editor);
  return box == nullptr ? static_cast<QLineEdit&>(editor) : *box->lineEdit();
}

// Where there is a list, Alt+Up and Alt+Down are its keys, and do not move rows.
bool OpensList(const QWidget& editor, const QEvent& event) {
  const auto& key = static_cast<const QKeyEvent&>(event);
  const bool arrow = key.key() == Qt::Key_Up || key.key() == Qt::Key_Down;
  return arrow && key.modifiers().testFlag(Qt::AltModifier) &&
         qobject_cast<const QComboBox*>(&editor) != nullptr;
}

QColor MarkColor(const QStyleOptionViewItem& option) {
  if (option.state.testFlag(QStyle::State_Selected)) {
    return option.palette.color(QPalette::HighlightedText);
  }
  const bool dark = option.palette.color(QPalette::Base).lightness() < 128;
  return dark ? QColor(255, 170, 80) : QColor(190, 60, 0);
}

}  // namespace

QWidget* CellDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem& /*option*/,
                                    const QModelIndex& index) const {
  edited_ = InList(index);
  const QString heading =
      index.model()->headerData(index.column(), Qt::Horizontal, Qt::AccessibleTextRole).toString();
  const QStringList choices = ListOf(edited_).Choices(edited_);
  QWidget* editor = nullptr;
  if (choices.isEmpty()) {
    auto* line = new QLineEdit(parent);
    line->setFrame(false);
    editor = line;
  } else {
    auto* box = new QComboBox(parent);
    box->setEditable(true);  // so that typing finds an entry, and what is none can be told
    box->setInsertPolicy(QComboBox::NoInsert);
    box->setFrame(false);
    box->addItems(choices);
    box->lineEdit()->setAccessibleName(heading);
    editor = box;
  }
  editor->setAccessibleName(heading);
  editor->setAutoFillBackground(true);
  return editor;
}

void CellDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const {
  const QString text = index.data(Qt::EditRole).toString();
  if (auto* box = qobject_cast<QComboBox*>(editor)) {
    box->setCurrentIndex(box->findText(text));
  }
  LineOf(*editor).setText(text);
  LineOf(*editor).selectAll();
}

void CellDelegate::setModelData(QWidget* editor, QAbstractItemModel* model,
                                const QModelIndex& index) const {
  model->setData(index, LineOf(*editor).text(), Qt::EditRole);
}

bool CellDelegate::eventFilter(QObject* watched, QEvent* event) {
  auto* editor = qobject_cast<QWidget*>(watched);
  if (editor != nullptr && event->type() == QEvent::ShortcutOverride &&
      OpensList(*editor, *event)) {
    event->accept();
    return true;
  }
  if (editor == nullptr || event->type() != QEvent::KeyPress) {
    return QStyledItemDelegate::eventFilter(watched, event);
  }
  const auto& key = static_cast<const QKeyEvent&>(*event);
  const bool up = key.modifiers().testFlag(Qt::ShiftModifier);
  switch (key.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter: Leave(*editor, up ? -1 : 1, 0); return true;
    case Qt::Key_Tab: Leave(*editor, 0, 1); return true;
    case Qt::Key_Backtab: Leave(*editor, 0, -1); return true;
    default: return QStyledItemDelegate::eventFilter(watched, event);
  }
}

// What cannot be stays in the editor, with the reason, until it is put right or given up with Esc.
bool CellDelegate::Leave(QWidget& editor, int rows, int columns) {
  const QString why =
      edited_.isValid() ? ListOf(edited_).Refusal(edited_, LineOf(editor).text()) : QString();
  if (!why.isEmpty()) {
    QToolTip::showText(editor.mapToGlobal(editor.rect().bottomLeft()), why, &editor);
    emit refused(why);
    LineOf(editor).selectAll();
    return false;
  }
  emit commitData(&editor);
  emit closeEditor(&editor, NoHint);
  emit left(rows, columns);
  return true;
}

// A mark is a corner, and not only a colour. The current cell has a frame: of a row that is selected as
// a whole it is the one that typing changes.
void CellDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                         const QModelIndex& index) const {
  QStyledItemDelegate::paint(painter, option, index);
  painter->save();
  const QRect cell = option.rect;
  const auto* view = qobject_cast<const QAbstractItemView*>(option.widget);
  if (view != nullptr && view->currentIndex() == index && view->hasFocus()) {
    const bool selected = option.state.testFlag(QStyle::State_Selected);
    painter->setPen(
        QPen(option.palette.color(selected ? QPalette::HighlightedText : QPalette::Text), 2));
    painter->drawRect(cell.adjusted(1, 1, -2, -2));
  }
  if (!index.data(ChannelListModel::kMarkRole).toString().isEmpty()) {
    const int size = cell.height() / 2;
    const QPoint corner = cell.topRight() + QPoint(1, 0);
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(MarkColor(option));
    painter->drawPolygon(QPolygon({corner, corner - QPoint(size, 0), corner + QPoint(0, size)}));
  }
  painter->restore();
}

}  // namespace q40
