#include "widgets/row_table.h"

#include <QHeaderView>

namespace q40 {

void SetUpRows(QTableView& table) {
  table.setSelectionBehavior(QAbstractItemView::SelectRows);
  table.setTabKeyNavigation(false);
  table.setCornerButtonEnabled(false);
  table.verticalHeader()->hide();
  QHeaderView* header = table.horizontalHeader();
  header->setHighlightSections(false);
  header->setSectionsClickable(false);
  header->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
}

void SetUpShortRows(QTableView& table) {
  SetUpRows(table);
  table.setWordWrap(false);
  table.verticalHeader()->setDefaultSectionSize(table.fontMetrics().height() + 6);
}

}  // namespace q40
