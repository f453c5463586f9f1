// The list of what the check-up found. Stays open beside the main window.
#pragma once

#include <QWidget>

#include "checkup/finding.h"

class QLabel;
class QTableWidget;

namespace q40 {

class CheckUpWindow : public QWidget {
  Q_OBJECT

 public:
  explicit CheckUpWindow(QWidget* owner);

  // Shows the findings of a check-up in place of those before. The row that was current stays it, as
  // far as there is one.
  void ShowFindings(Findings findings);

 signals:
  void checkRequested();
  // Double click, or the Enter key, on a finding.
  void placeChosen(const q40::Place& place);

 private:
  void Choose();
  void FillRow(int row, const Finding& finding);

  QLabel* summary_;
  QTableWidget* table_;
  Findings findings_;
};

}  // namespace q40
