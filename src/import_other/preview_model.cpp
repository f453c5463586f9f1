#include "import_other/preview_model.h"

#include <algorithm>

#include <QApplication>
#include <QStyle>

#include "import_other/raw_list_model.h"
#include "widgets/paths.h"

namespace q40 {
namespace {

bool HasLoss(const PlannedRow& row) {
  return std::any_of(row.notes.begin(), row.notes.end(),
                     [](const PlanNote& note) { return note.loss; });
}

QString Text(const PlannedRow& row, int column) {
  switch (column) {
    case PreviewModel::kLine: return QString::number(row.line);
    case PreviewModel::kPlace: return Shown(row.PlaceText());
    case PreviewModel::kBecomes: return Shown(row.becomes);
    default: return Shown(row.NotesText());
  }
}

}  // namespace

void PreviewModel::Show(ImportPlan plan) {
  beginResetModel();
  plan_ = std::move(plan);
  endResetModel();
}

QString PreviewModel::Account(int row) const {
  if (row < 0 || row >= rowCount()) return {};
  const PlannedRow& planned = plan_.rows[static_cast<std::size_t>(row)];
  const QString notes = Text(planned, kNotes);
  return tr("Line %1: ").arg(planned.line) + (notes.isEmpty() ? Text(planned, kBecomes) : notes);
}

int PreviewModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(plan_.rows.size());
}

int PreviewModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : kColumns;
}

QVariant PreviewModel::data(const QModelIndex& index, int role) const {
  if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
  const PlannedRow& row = plan_.rows[static_cast<std::size_t>(index.row())];
  if (role == Qt::DisplayRole) return Text(row, index.column());
  if (role == Qt::ToolTipRole) return WholeToolTip(Text(row, index.column()));
  if (index.column() != kNotes || !HasLoss(row)) return {};
  if (role == Qt::DecorationRole) {
    return QApplication::style()->standardIcon(QStyle::SP_MessageBoxWarning);
  }
  if (role == Qt::AccessibleTextRole) return tr("Does not fit: ") + Text(row, kNotes);
  return {};
}

QVariant PreviewModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (role != Qt::DisplayRole || orientation != Qt::Horizontal) return {};
  static constexpr const char* kTitles[] = {"Line", "Channel", "Becomes", "Notes"};
  return tr(kTitles[section]);
}

}  // namespace q40
