// The special channels of the shown band: VFO, CALL, RPT, PH and PL.
#pragma once

#include <QWidget>

#include "document/clone_document.h"
#include "pages/channel_grid.h"

class QPushButton;

namespace q40 {

class SpecialChannels : public QWidget {
  Q_OBJECT

 public:
  // Edits the special channels of the document, which must outlive the panel.
  SpecialChannels(CloneDocument& document, QWidget* parent);

  [[nodiscard]] ChannelGrid& grid() { return *grid_; }

  // Redraws row k (0..4) of the shown set.
  void Grid2Data(int k);
  // Redraws all five rows.
  void UpdateVFOData();

  // While locked, the panel changes nothing.
  void SetLocked(bool locked);

 signals:
  void openRequested(int k);
  void edited();
  // Which channel Clear is about to empty, or has emptied.
  void noted(const QString& text);

 private:
  void ShowClearButton(int row);
  void FitHeight();
  void ClearLimit();

  CloneDocument& document_;
  ChannelGrid* grid_;
  QPushButton* clear_;
  bool locked_ = false;
};

}  // namespace q40
