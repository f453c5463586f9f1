#include "dialogs/place_list.h"

#include <algorithm>

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QShortcut>
#include <QTableWidget>
#include <QVBoxLayout>

#include "widgets/row_table.h"

namespace q40 {

PlaceList::PlaceList(const Names& names, const QString& title, const QStringList& headings,
                     QWidget* owner)
    : QWidget(owner, Qt::Window),
      summary_(new QLabel(this)),
      table_(MakeTable(names.table, title, headings)),
      buttons_(new QHBoxLayout) {
  setObjectName(QLatin1String(names.window));
  setWindowTitle(title);
  summary_->setObjectName(QLatin1String(names.summary));
  summary_->setTextFormat(Qt::PlainText);
  summary_->setWordWrap(true);
  connect(table_, &QTableWidget::doubleClicked, this, &PlaceList::Choose);
  for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
    auto* enter = new QShortcut(key, table_);
    enter->setContext(Qt::WidgetShortcut);
    enter->setAutoRepeat(false);
    connect(enter, &QShortcut::activated, this, &PlaceList::Choose);
  }
  connect(AddButton(names.close, tr("&Close")), &QPushButton::clicked, this, &QWidget::close);
  connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, this, &QWidget::close);
  buttons_->insertStretch(0);

  auto* layout = new QVBoxLayout(this);
  layout->addWidget(summary_);
  layout->addWidget(table_, 1);
  layout->addLayout(buttons_);
  table_->setFocus();
  resize(fontMetrics().averageCharWidth() * 115, fontMetrics().lineSpacing() * 24);
}

QTableWidget* PlaceList::MakeTable(const char* name, const QString& title,
                                   const QStringList& headings) {
  auto* table = new QTableWidget(0, static_cast<int>(headings.size()), this);
  table->setObjectName(QLatin1String(name));
  table->setAccessibleName(title);
  table->setHorizontalHeaderLabels(headings);
  table->setSelectionMode(QAbstractItemView::SingleSelection);
  table->setEditTriggers(QAbstractItemView::NoEditTriggers);
  SetUpRows(*table);
  table->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
  // The sentences wrap; a row is as high as its sentence at the width that the window gives it.
  table->verticalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
  QHeaderView* header = table->horizontalHeader();
  header->setSectionResizeMode(QHeaderView::ResizeToContents);
  header->setSectionResizeMode(table->columnCount() - 1, QHeaderView::Stretch);
  return table;
}

QPushButton* PlaceList::AddButton(const char* name, const QString& caption) {
  auto* made = new QPushButton(caption, this);
  made->setObjectName(QLatin1String(name));
  made->setAutoDefault(true);  // Enter presses the button that has the focus
  buttons_->insertWidget(buttons_->count() - 1, made);
  return made;
}

QString PlaceList::PlaceTitle(const Place& place) {
  QString title = QString::fromStdString(PlaceText(place));
  title[0] = title[0].toUpper();
  return title;
}

void PlaceList::ShowRows(const QString& summary, const std::vector<Row>& rows) {
  const int current = table_->currentRow();
  summary_->setText(summary);
  places_.clear();
  table_->setRowCount(static_cast<int>(rows.size()));
  for (const Row& row : rows) {
    for (int column = 0; column < table_->columnCount(); ++column) {
      auto* item = new QTableWidgetItem(row.cells.value(column));
      item->setTextAlignment(Qt::AlignLeft | Qt::AlignTop);
      table_->setItem(static_cast<int>(places_.size()), column, item);
    }
    places_.push_back(row.place);
  }
  if (!rows.empty()) table_->selectRow(std::clamp(current, 0, table_->rowCount() - 1));
}

void PlaceList::Choose() {
  const int row = table_->currentRow();
  if (row < 0) return;
  if (const auto& place = places_[static_cast<std::size_t>(row)]) {
    emit placeChosen(*place);
  } else {
    emit rowChosen(row);
  }
}

}  // namespace q40
