// A channel grid: a table of which one whole row is selected at a time.
#pragma once

#include <QTableView>

#include "pages/channel_grid_model.h"

namespace q40 {

class ChannelGrid final : public QTableView {
  Q_OBJECT

 public:
  ChannelGrid(ChannelKind kind, const CloneImage& image, QWidget* parent);

  [[nodiscard]] ChannelGridModel& cells() { return *model_; }

  // The current row, counted from 1. There always is one.
  [[nodiscard]] int CurrentRow() const { return currentIndex().row() + 1; }
  // Makes a row current, selects it and scrolls until it is visible.
  void SelectRow(int row);

  // Sets the face of the channel columns: fixed pitch, half as wide as high where the system has
  // such a face, so that the texts fit their columns.
  void ChangeFont();

  // Never moves the view sideways: a selected row always starts in the first column.
  void scrollTo(const QModelIndex& index, ScrollHint hint) override;

 signals:
  // Double click, or the Enter key, on a row; it is the current one.
  void openRequested(int row);
  // Another row became current.
  void rowChanged(int row);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void scrollContentsBy(int dx, int dy) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  bool viewportEvent(QEvent* event) override;
  [[nodiscard]] QItemSelectionModel::SelectionFlags selectionCommand(
      const QModelIndex& index, const QEvent* event) const override;
  void changeEvent(QEvent* event) override;
  void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;

 private:
  void Open(int index);
  void ApplyWidths(double scale);
  void FitHeadings(double scale);

  ChannelGridModel* model_;
  double scale_ = 0;  // of the present column widths; 0 before there are any
};

}  // namespace q40
