// The page "Memory": the grid of the 210 memory channels and what is done to them.
#pragma once

#include <QWidget>

#include "pages/channel_grid.h"

class QBoxLayout;
class QProgressBar;
class QPushButton;

namespace q40 {

class MemoryPage : public QWidget {
  Q_OBJECT

 public:
  // Shows the memory channels of the image, which must outlive the page.
  MemoryPage(const CloneImage& image, QWidget* parent);

  [[nodiscard]] ChannelGrid& grid() { return *grid_; }
  [[nodiscard]] QProgressBar& progress() { return *progress_; }

  // While locked, the page wants nothing changed.
  void SetLocked(bool locked);
  void SetCloneButtonsEnabled(bool enabled);

 signals:
  void openRequested(int n);  // channel 0..209
  void readRequested();
  void writeRequested();
  // What the user wants done, after the question that goes with it. Returns when it has been done.
  void insertRequested(int n);
  void deleteRequested(int n);
  void clearRequested(int n);
  void clearAllRequested();
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

  ChannelGrid* grid_;
  QProgressBar* progress_;
  std::vector<QPushButton*> edit_buttons_;
  QPushButton* read_;
  QPushButton* write_;
  bool locked_ = false;
};

}  // namespace q40
