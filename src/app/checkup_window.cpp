#include "app/checkup_window.h"

#include <algorithm>

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QShortcut>
#include <QTableWidget>
#include <QVBoxLayout>

#include "app/outer_size.h"

namespace q40 {
namespace {

constexpr int kTextColumn = 2;

// With a capital, as a place stands at the start of a line here.
QString PlaceTitle(const Place& place) {
  QString title = QString::fromStdString(PlaceText(place));
  title[0] = title[0].toUpper();
  return title;
}

QTableWidget* MakeTable(QWidget* parent) {
  auto* table = new QTableWidget(0, kTextColumn + 1, parent);
  table->setObjectName(QStringLiteral("tblFindings"));
  table->setAccessibleName(CheckUpWindow::tr("Findings"));
  table->setHorizontalHeaderLabels(
      {CheckUpWindow::tr("Place"), CheckUpWindow::tr("Field"), CheckUpWindow::tr("What happens")});
  table->setSelectionBehavior(QAbstractItemView::SelectRows);
  table->setSelectionMode(QAbstractItemView::SingleSelection);
  table->setEditTriggers(QAbstractItemView::NoEditTriggers);
  table->setTabKeyNavigation(false);
  table->setCornerButtonEnabled(false);
  table->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
  table->verticalHeader()->hide();
  // The sentences wrap; a row is as high as its sentence at the width that the window gives it.
  table->verticalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
  QHeaderView* header = table->horizontalHeader();
  header->setHighlightSections(false);
  header->setSectionsClickable(false);
  header->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  header->setSectionResizeMode(QHeaderView::ResizeToContents);
  header->setSectionResizeMode(kTextColumn, QHeaderView::Stretch);
  return table;
}

}  // namespace

CheckUpWindow::CheckUpWindow(QWidget* owner)
    : QWidget(owner, Qt::Window), summary_(new QLabel(this)), table_(MakeTable(this)) {
  setObjectName(QStringLiteral("frmCheckUp"));
  setWindowTitle(tr("Check-Up"));
  summary_->setObjectName(QStringLiteral("lblFindings"));
  connect(table_, &QTableWidget::doubleClicked, this, &CheckUpWindow::Choose);
  for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
    auto* enter = new QShortcut(key, table_);
    enter->setContext(Qt::WidgetShortcut);
    enter->setAutoRepeat(false);
    connect(enter, &QShortcut::activated, this, &CheckUpWindow::Choose);
  }

  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  const auto button = [&](const char* name, const QString& caption) {
    auto* made = new QPushButton(caption, this);
    made->setObjectName(QLatin1String(name));
    made->setAutoDefault(true);  // Enter presses the button that has the focus
    buttons->addWidget(made);
    return made;
  };
  connect(button("cmdCheckAgain", tr("Check &Again")), &QPushButton::clicked, this,
          &CheckUpWindow::checkRequested);
  connect(button("cmdCloseCheckUp", tr("&Close")), &QPushButton::clicked, this, &QWidget::close);
  connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, this, &QWidget::close);

  auto* layout = new QVBoxLayout(this);
  layout->addWidget(summary_);
  layout->addWidget(table_, 1);
  layout->addLayout(buttons);
  table_->setFocus();
  resize(QSize(fontMetrics().averageCharWidth() * 115, fontMetrics().lineSpacing() * 24)
             .boundedTo(RoomBeside(*owner)));
}

void CheckUpWindow::ShowFindings(Findings findings) {
  const int current = table_->currentRow();
  findings_ = std::move(findings);
  const auto count = static_cast<int>(findings_.size());
  summary_->setText(
      count == 0   ? tr("No findings.")
      : count == 1 ? tr("1 finding. Double click or Enter shows its place.")
                   : tr("%1 findings. Double click or Enter shows the place of one.").arg(count));
  table_->setRowCount(count);
  for (int row = 0; row < count; ++row) FillRow(row, findings_[static_cast<std::size_t>(row)]);
  if (count > 0) table_->selectRow(std::clamp(current, 0, count - 1));
}

void CheckUpWindow::FillRow(int row, const Finding& finding) {
  const QString texts[] = {PlaceTitle(finding.place), QString::fromStdString(finding.field),
                           QString::fromStdString(finding.text)};
  for (int column = 0; column <= kTextColumn; ++column) {
    auto* item = new QTableWidgetItem(texts[column]);
    item->setTextAlignment(Qt::AlignLeft | Qt::AlignTop);
    table_->setItem(row, column, item);
  }
}

void CheckUpWindow::Choose() {
  const int row = table_->currentRow();
  if (row >= 0) emit placeChosen(findings_[static_cast<std::size_t>(row)].place);
}

}  // namespace q40
