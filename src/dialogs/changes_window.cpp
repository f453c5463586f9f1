#include "dialogs/changes_window.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QShortcut>
#include <QTableWidget>
#include <QVBoxLayout>

#include "widgets/row_table.h"

namespace q40 {
namespace {

// None for what no page shows: the bytes without a control, the model.
std::optional<Place> PlaceOf(const CellAddress& cell) {
  using Where = Place::Where;
  if (!cell.unit) return std::nullopt;
  const Unit unit = *cell.unit;
  switch (unit.kind()) {
    case Unit::Kind::kSettings:
      if (cell.setting == nullptr) return std::nullopt;
      return Place{Where::kSetting, {}, static_cast<int>(cell.setting - Settings().data())};
    case Unit::Kind::kSpecial: return Place{Where::kSpecial, unit.band(), unit.index()};
    case Unit::Kind::kDialer: return Place{Where::kDialer, {}, cell.index};
    default: return Place{Where::kMemory, {}, unit.index()};
  }
}

}  // namespace

ChangesWindow::ChangesWindow(QWidget* owner)
    : QWidget(owner, Qt::Window),
      against_(new QComboBox(this)),
      view_(new ChangesView(this)),
      account_(new QLabel(this)),
      note_table_(new QTableWidget(0, 4, this)),
      notes_(MakeNotes()),
      take_back_(new QPushButton(tr("&Take Back"), this)) {
  setObjectName(QStringLiteral("ChangesWindow"));
  setWindowTitle(tr("Changes"));
  against_->setObjectName(QStringLiteral("cmbAgainst"));
  against_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  against_->setMinimumContentsLength(40);
  connect(against_, &QComboBox::activated, this, &ChangesWindow::againstChosen);
  auto* caption = new QLabel(tr("&Before:"), this);
  caption->setBuddy(against_);
  take_back_->setObjectName(QStringLiteral("cmdTakeBack"));
  take_back_->setToolTip(tr("Puts the selected rows back to what they were before."));
  connect(take_back_, &QPushButton::clicked, this, &ChangesWindow::takeBackRequested);
  connect(view_, &ChangesView::selectionChanged, this, &ChangesWindow::ShowTakeBack);
  connect(view_, &ChangesView::chosen, this, [this](const CellAddress& cell) {
    if (const auto place = PlaceOf(cell)) emit placeChosen(*place);
  });
  auto* copy = new QPushButton(tr("&Copy"), this);
  copy->setObjectName(QStringLiteral("cmdCopyChanges"));
  copy->setToolTip(tr("Copies the selected rows as text, or all when none is selected."));
  connect(copy, &QPushButton::clicked, view_, &ChangesView::Copy);
  auto* close = new QPushButton(tr("C&lose"), this);
  close->setObjectName(QStringLiteral("cmdCloseChanges"));
  connect(close, &QPushButton::clicked, this, &QWidget::close);
  connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, this, &QWidget::close);

  auto* top = new QHBoxLayout;
  top->addWidget(caption);
  top->addWidget(against_, 1);
  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  for (QPushButton* button : {take_back_, copy, close}) {
    button->setAutoDefault(true);  // Enter presses the button that has the focus
    buttons->addWidget(button);
  }
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(top);
  layout->addWidget(view_, 3);
  layout->addWidget(notes_, 1);
  layout->addLayout(buttons);
  setTabOrder(against_, view_);
  ShowTakeBack();
  view_->FocusTable();
  resize(fontMetrics().averageCharWidth() * 115, fontMetrics().lineSpacing() * 26);
}

QWidget* ChangesWindow::MakeNotes() {
  auto* notes = new QWidget(this);
  account_->setObjectName(QStringLiteral("lblLost"));
  account_->setTextFormat(Qt::PlainText);
  account_->setWordWrap(true);
  note_table_->setObjectName(QStringLiteral("tblLost"));
  note_table_->setAccessibleName(tr("Not taken as written"));
  note_table_->setHorizontalHeaderLabels(
      {tr("Line"), tr("Channel"), tr("Item"), tr("What happened")});
  note_table_->setSelectionMode(QAbstractItemView::SingleSelection);
  note_table_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  SetUpRows(*note_table_);
  note_table_->verticalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
  QHeaderView* header = note_table_->horizontalHeader();
  header->setSectionResizeMode(QHeaderView::ResizeToContents);
  header->setSectionResizeMode(3, QHeaderView::Stretch);
  connect(note_table_, &QTableWidget::doubleClicked, this, &ChangesWindow::ChooseNote);
  for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
    auto* enter = new QShortcut(key, note_table_);
    enter->setContext(Qt::WidgetShortcut);
    enter->setAutoRepeat(false);
    connect(enter, &QShortcut::activated, this, &ChangesWindow::ChooseNote);
  }
  auto* layout = new QVBoxLayout(notes);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(account_);
  layout->addWidget(note_table_, 1);
  notes->hide();
  return notes;
}

void ChangesWindow::SetAgainst(const QStringList& names, int chosen) {
  against_->clear();
  against_->addItems(names);
  against_->setCurrentIndex(chosen);
}

void ChangesWindow::ShowNotes(const QString& account, const std::vector<PlaceList::Row>& rows) {
  notes_->setVisible(!account.isEmpty());
  account_->setText(account);
  note_table_->setVisible(!rows.empty());
  note_table_->setRowCount(static_cast<int>(rows.size()));
  note_places_.clear();
  for (const PlaceList::Row& row : rows) {
    for (int column = 0; column < note_table_->columnCount(); ++column) {
      note_table_->setItem(static_cast<int>(note_places_.size()), column,
                           new QTableWidgetItem(row.cells.value(column)));
    }
    note_places_.push_back(row.place);
  }
}

void ChangesWindow::ChooseNote() {
  const int row = note_table_->currentRow();
  if (row < 0) return;
  if (const auto& place = note_places_[static_cast<std::size_t>(row)]) emit placeChosen(*place);
}

void ChangesWindow::SetLocked(bool locked) {
  locked_ = locked;
  ShowTakeBack();
}

// The model and the version are no edit that could be taken back.
void ChangesWindow::ShowTakeBack() {
  bool any = false;
  for (const CellAddress& cell : view_->Selected()) any = any || cell.unit.has_value();
  take_back_->setEnabled(any && !locked_);
}

}  // namespace q40
