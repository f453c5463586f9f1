#include "dialogs/checkup_window.h"

#include <QPushButton>

#include "widgets/outer_size.h"

namespace q40 {

CheckUpWindow::CheckUpWindow(QWidget* owner)
    : PlaceList({"frmCheckUp", "lblFindings", "tblFindings", "cmdCloseCheckUp"}, tr("Check-Up"),
                {tr("Place"), tr("Field"), tr("What happens")}, owner) {
  connect(AddButton("cmdCheckAgain", tr("Check &Again")), &QPushButton::clicked, this,
          &CheckUpWindow::checkRequested);
}

void CheckUpWindow::ShowFindings(const Findings& findings) {
  std::vector<Row> rows;
  for (const Finding& finding : findings) {
    rows.push_back({{PlaceTitle(finding.place), QString::fromStdString(finding.field),
                     QString::fromStdString(finding.text)},
                    finding.place});
  }
  ShowRows(rows.empty() ? tr("No findings.")
           : rows.size() == 1
               ? tr("1 finding. Double click or Enter shows its place.")
               : tr("%1 findings. Double click or Enter shows the place of one.").arg(rows.size()),
           rows);
}

}  // namespace q40
