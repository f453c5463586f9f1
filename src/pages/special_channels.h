// The special channels of the shown band: VFO, CALL, RPT, PH and PL.
#pragma once

#include <QWidget>

#include "pages/channel_grid.h"

class QPushButton;

namespace q40 {

class SpecialChannels : public QWidget {
  Q_OBJECT

 public:
  // Shows the special channels of the image, which must outlive the panel.
  SpecialChannels(const CloneImage& image, QWidget* parent);

  [[nodiscard]] ChannelGrid& grid() { return *grid_; }

  // Redraws all five rows.
  void UpdateVFOData();

  // While locked, the panel wants nothing changed.
  void SetLocked(bool locked);

 signals:
  void openRequested(int k);
  // The user wants PH or PL emptied, and has been asked. Returns when it has been done.
  void clearLimitRequested(int k);
  // Which channel Clear is about to empty, or has emptied.
  void noted(const QString& text);

 private:
  void ShowClearButton(int row);
  void FitHeight();
  void ClearLimit();

  const CloneImage& image_;
  ChannelGrid* grid_;
  QPushButton* clear_;
  bool locked_ = false;
};

}  // namespace q40
