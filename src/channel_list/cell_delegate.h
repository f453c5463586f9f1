// The editors of the list's cells, and its marks.
#pragma once

#include <QStyledItemDelegate>

namespace q40 {

class ChannelListModel;

class CellDelegate final : public QStyledItemDelegate {
  Q_OBJECT

 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                        const QModelIndex& index) const override;
  void setEditorData(QWidget* editor, const QModelIndex& index) const override;
  void setModelData(QWidget* editor, QAbstractItemModel* model,
                    const QModelIndex& index) const override;
  void paint(QPainter* painter, const QStyleOptionViewItem& option,
             const QModelIndex& index) const override;

  // Takes what was typed and goes on from there. False: it cannot be; the editor stays open.
  bool Leave(QWidget& editor, int rows, int columns);

 signals:
  // What was typed cannot be; the editor stays open.
  void refused(const QString& why);
  // An edit was taken; where the user goes from there, in rows and columns.
  void left(int rows, int columns);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  mutable QPersistentModelIndex edited_;  // of the editor that is open, in the list's own model
};

}  // namespace q40
