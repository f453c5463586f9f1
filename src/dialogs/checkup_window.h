// The list of what the check-up found.
#pragma once

#include "dialogs/place_list.h"

namespace q40 {

class CheckUpWindow : public PlaceList {
  Q_OBJECT

 public:
  explicit CheckUpWindow(QWidget* owner);

  void ShowFindings(const Findings& findings);

 signals:
  void checkRequested();
};

}  // namespace q40
