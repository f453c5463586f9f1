// The page "Settings 1": general settings, model and band, and the special channels of the band.
#pragma once

#include "pages/settings_page.h"
#include "radio/models.h"

namespace q40 {

class OptionGroup;

class SettingsPage1 : public SettingsPage {
  Q_OBJECT

 public:
  // `special_channels` becomes part of the page.
  SettingsPage1(QWidget* special_channels, QWidget* parent);

  // Each shows a choice without reporting it.
  void ShowModel(int model);
  void ShowBand(Band band);
  // The first model option that is set, in the order 0, 1, 2; 3 when none of these is.
  [[nodiscard]] int ChosenModel() const;

  void SetAutoSelectEnabled(bool enabled);

 signals:
  // The user chose an option, maybe the one that was set already.
  void modelChosen(int model);
  void bandChosen(Band band);
  void autoSelectRequested();

 private:
  QWidget* MakeLists();
  QWidget* MakeTimeOut();
  QWidget* MakeBoxes();
  QWidget* MakeModel();
  QWidget* MakeBand();
  QWidget* MakeLevel(Value slider, const char* label, const char* caption);

  OptionGroup* opbModel_ = nullptr;
  OptionGroup* optBand_ = nullptr;
  QPushButton* cmdAuto_ = nullptr;
};

}  // namespace q40
