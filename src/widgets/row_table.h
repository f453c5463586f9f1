// A table that is read row by row: a list with columns.
#pragma once

#include <QTableView>

namespace q40 {

// Whole rows are selected, Tab leaves the table, rows have no heads, and the headings only tell what stands
// below them.
void SetUpRows(QTableView& table);
// The same with rows of one line each, which the columns cut off.
void SetUpShortRows(QTableView& table);

}  // namespace q40
