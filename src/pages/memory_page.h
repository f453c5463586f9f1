// The page "Memory": the grid of the 210 memory channels and what is done to them.
#pragma once

#include <QWidget>

#include "document/clone_document.h"
#include "pages/channel_grid.h"

class QBoxLayout;
class QProgressBar;
class QPushButton;

namespace q40 {

class MemoryPage : public QWidget {
  Q_OBJECT

 public:
  // Edits the memory channels of the document, which must outlive the page.
  MemoryPage(CloneDocument& document, QWidget* parent);

  [[nodiscard]] ChannelGrid& grid() { return *grid_; }
  [[nodiscard]] QProgressBar& progress() { return *progress_; }

  // Redraws the row of channel n.
  void Grid1Data(int n);
  void RedrawAll();
  // Draws the row of channel n as a read from the radio does.
  void ShowReadChannel(int n);

  // While locked, the page changes nothing.
  void SetLocked(bool locked);
  void SetCloneButtonsEnabled(bool enabled);

 signals:
  void openRequested(int n);  // channel 0..209
  void readRequested();
  void writeRequested();
  void edited();
  // What a command is about to do, or has done, to which channel.
  void noted(const QString& text);

 private:
  QPushButton* AddButton(QBoxLayout& row, const char* name, const char* caption,
                         void (MemoryPage::*run)());
  void Insert();
  void Delete();
  void Clear();
  void ClearAll();
  void StepDown();
  void StepUp();
  // Redraws the rows from grid row `first` to the last, and sets the flags that the command
  // changes.
  void Changed(int first, int last, bool settings_too);

  CloneDocument& document_;
  ChannelGrid* grid_;
  QProgressBar* progress_;
  std::vector<QPushButton*> edit_buttons_;
  QPushButton* read_;
  QPushButton* write_;
  bool locked_ = false;
};

}  // namespace q40
