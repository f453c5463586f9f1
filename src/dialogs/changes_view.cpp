#include "dialogs/changes_view.h"

#include <algorithm>

#include <QClipboard>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>
#include <QShortcut>
#include <QTableView>
#include <QVBoxLayout>

#include "widgets/paths.h"
#include "widgets/row_table.h"

namespace q40 {
namespace {

bool IsSameCell(const CellDifference& a, const CellDifference& b) {
  return a.at == b.at && a.name == b.name;
}

// Rows that follow each other as one range: thousands of single ones take seconds.
class RowRanges {
 public:
  explicit RowRanges(const QAbstractItemModel& model) : model_(model) {}

  void Add(int row) {
    if (row != last_ + 1) Flush();
    if (first_ < 0) first_ = row;
    last_ = row;
  }
  QItemSelection Take() {
    Flush();
    return ranges_;
  }

 private:
  void Flush() {
    if (first_ >= 0) {
      ranges_.append(QItemSelectionRange(model_.index(first_, 0),
                                         model_.index(last_, model_.columnCount() - 1)));
    }
    first_ = -1;
  }

  const QAbstractItemModel& model_;
  QItemSelection ranges_;
  int first_ = -1;
  int last_ = -1;
};

}  // namespace

ChangesView::ChangesView(QWidget* parent)
    : QWidget(parent),
      model_(new ChangesModel(this)),
      filter_(new QLineEdit(this)),
      summary_(new QLabel(this)),
      table_(MakeTable()) {
  filter_->setObjectName(QStringLiteral("txtFilter"));
  filter_->setClearButtonEnabled(true);
  filter_->setPlaceholderText(tr("Place, what, before or after"));
  connect(filter_, &QLineEdit::textChanged, this, &ChangesView::Filter);
  summary_->setObjectName(QStringLiteral("lblChanges"));
  summary_->setTextFormat(Qt::PlainText);
  summary_->setWordWrap(true);
  auto* caption = new QLabel(tr("&Filter:"), this);
  caption->setBuddy(filter_);

  auto* row = new QHBoxLayout;
  row->addWidget(caption);
  row->addWidget(filter_, 1);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addLayout(row);
  layout->addWidget(summary_);
  layout->addWidget(table_, 1);
}

QTableView* ChangesView::MakeTable() {
  auto* table = new QTableView(this);
  table->setObjectName(QStringLiteral("tblChanges"));
  table->setAccessibleName(tr("Changes"));
  table->setModel(model_);
  table->setSelectionMode(QAbstractItemView::ExtendedSelection);
  SetUpShortRows(*table);
  QHeaderView* header = table->horizontalHeader();
  header->setStretchLastSection(true);
  const int character = table->fontMetrics().averageCharWidth();
  for (const auto& [column, characters] : {std::pair{0, 18}, std::pair{1, 26}, std::pair{2, 26}}) {
    table->setColumnWidth(column, character * characters);
  }
  connect(table, &QTableView::doubleClicked, this, &ChangesView::Choose);
  connect(table->selectionModel(), &QItemSelectionModel::selectionChanged, this,
          &ChangesView::selectionChanged);
  const auto key = [&](const QKeySequence& sequence, auto run) {
    auto* shortcut = new QShortcut(sequence, table);
    shortcut->setContext(Qt::WidgetShortcut);
    shortcut->setAutoRepeat(false);
    connect(shortcut, &QShortcut::activated, this, run);
  };
  key(Qt::Key_Return, &ChangesView::Choose);
  key(Qt::Key_Enter, &ChangesView::Choose);
  key(QKeySequence::Copy, &ChangesView::Copy);
  return table;
}

void ChangesView::Show(std::vector<CellDifference> differences, const QString& none,
                       const QString& about) {
  none_ = none;
  about_ = about;
  if (differences == model_->differences()) return TellCounts();
  std::vector<CellDifference> selected;
  for (const CellDifference* one : SelectedRows()) selected.push_back(*one);
  const CellDifference* at = model_->At(table_->currentIndex().row());
  const CellDifference current = at == nullptr ? CellDifference() : *at;
  const int scrolled = table_->verticalScrollBar()->value();
  model_->SetDifferences(std::move(differences));
  Restore(selected, current);
  table_->verticalScrollBar()->setValue(scrolled);
  TellCounts();
}

void ChangesView::Filter(const QString& text) {
  model_->SetFilter(text.trimmed());
  Restore({}, {});
  TellCounts();
}

void ChangesView::Restore(const std::vector<CellDifference>& selected,
                          const CellDifference& current) {
  table_->clearSpans();
  RowRanges ranges(*model_);
  int place = -1;
  auto next = selected.begin();
  for (int row = 0; row < model_->rowCount(); ++row) {
    const CellDifference* one = model_->At(row);
    if (one == nullptr) {
      table_->setSpan(row, 0, 1, ChangesModel::kColumns);
      continue;
    }
    if (place < 0 || IsSameCell(*one, current)) place = row;
    const auto found = std::find_if(next, selected.end(),
                                    [&](const auto& cell) { return IsSameCell(cell, *one); });
    if (found == selected.end()) continue;
    next = found + 1;
    ranges.Add(row);
  }
  QItemSelectionModel* model = table_->selectionModel();
  model->setCurrentIndex(model_->index(place, 0), QItemSelectionModel::NoUpdate);
  model->select(ranges.Take(), QItemSelectionModel::ClearAndSelect);
  emit selectionChanged();  // which a reset takes away without a word
}

std::vector<const CellDifference*> ChangesView::SelectedRows() const {
  std::vector<const CellDifference*> rows;
  for (const QModelIndex& index : table_->selectionModel()->selectedRows()) {
    rows.push_back(model_->At(index.row()));
  }
  // They come in the order in which they were selected; the differences lie in theirs.
  std::sort(rows.begin(), rows.end());
  return rows;
}

std::vector<CellAddress> ChangesView::Selected() const {
  std::vector<CellAddress> cells;
  for (const CellDifference* one : SelectedRows()) cells.push_back(one->at);
  return cells;
}

QString ChangesView::AsText() const {
  std::vector<const CellDifference*> rows = SelectedRows();
  const bool all = rows.empty();
  for (int row = 0; all && row < model_->rowCount(); ++row) {
    if (model_->At(row) != nullptr) rows.push_back(model_->At(row));
  }
  std::string text;
  for (const CellDifference* one : rows) text += DifferenceText(*one) + '\n';
  return QString::fromStdString(text);
}

void ChangesView::Copy() const { QGuiApplication::clipboard()->setText(AsText()); }

void ChangesView::FocusTable() { table_->setFocus(); }

void ChangesView::TellCounts() {
  const auto count = static_cast<int>(model_->differences().size());
  QString text = none_;
  if (count > 0) {
    text = count == 1 ? tr("1 change: ") : tr("%1 changes: ").arg(count);
    text += model_->CountsText() + QLatin1Char('.');
    if (model_->shown() < count) text += tr(" The filter shows %1.").arg(model_->shown());
  }
  if (!about_.isEmpty()) text += QLatin1Char(' ') + about_;
  summary_->setText(text);
}

void ChangesView::Choose() {
  const CellDifference* one = model_->At(table_->currentIndex().row());
  if (one != nullptr) emit chosen(one->at);
}

}  // namespace q40
