#include "import_other/column_table.h"

#include <algorithm>
#include <utility>

#include <QComboBox>
#include <QEvent>
#include <QHeaderView>

#include "import_other/raw_list_model.h"
#include "widgets/paths.h"

namespace q40 {
namespace {

// Narrower than its list, which opens as wide as its entries.
class MeaningBox final : public QComboBox {
 public:
  explicit MeaningBox(QWidget* parent) : QComboBox(parent) {
    for (const MeaningRow& row : kMeanings) addItem(Shown(row.words));
    setSizeAdjustPolicy(AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(4);
    setMaxVisibleItems(static_cast<int>(kMeaningCount));
  }

  void showPopup() override {
    int widest = 0;
    for (int i = 0; i < count(); ++i) {
      widest = std::max(widest, fontMetrics().horizontalAdvance(itemText(i)));
    }
    view()->setMinimumWidth(widest +
                            3 * fontMetrics().height());  // with the mark of the chosen one
    QComboBox::showPopup();
  }
};

}  // namespace

ColumnTable::ColumnTable(QWidget* parent) : QTableView(parent), rows_(new RawListModel(this)) {
  setModel(rows_);
  setSelectionMode(SingleSelection);
  setTabKeyNavigation(false);
  setCornerButtonEnabled(false);
  setWordWrap(false);
  setHorizontalScrollMode(ScrollPerPixel);
  verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
  horizontalHeader()->setHighlightSections(false);
  horizontalHeader()->setSectionsClickable(false);
  horizontalHeader()->setTextElideMode(Qt::ElideRight);
  horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  horizontalHeader()->setDefaultSectionSize(fontMetrics().averageCharWidth() * 30);
}

void ColumnTable::Show(const ForeignList& list, const ColumnMeanings& meanings) {
  if (rows_->Show(list)) MakeBoxes();
  for (std::size_t i = 0; i < boxes_.size(); ++i) {
    boxes_[i]->setCurrentIndex(static_cast<int>(meanings[i]));
  }
}

// The view lets go of the old ones with their cells, but not at once.
void ColumnTable::MakeBoxes() {
  qDeleteAll(std::exchange(boxes_, {}));
  QWidget* last = this;
  for (int column = 0; column < rows_->columnCount(); ++column) {
    QComboBox* box = MakeBox(column);
    boxes_.push_back(box);
    setTabOrder(last, box);
    last = box;
  }
  if (!boxes_.empty()) setRowHeight(0, boxes_.front()->sizeHint().height());
}

QComboBox* ColumnTable::MakeBox(int column) {
  auto* box = new MeaningBox(viewport());
  box->setObjectName(QStringLiteral("cmbMeaning_%1").arg(column));
  box->setAccessibleName(
      tr("Meaning of column %1, %2").arg(column + 1).arg(rows_->Heading(column)));
  connect(box, &QComboBox::activated, this, [this, column](int index) {
    emit meaningChosen(column, kMeanings[static_cast<std::size_t>(index)].meaning);
  });
  setIndexWidget(rows_->index(0, column), box);  // and filters its events
  return box;
}

// Of the boxes. One that gets the focus is scrolled to by the view itself.
bool ColumnTable::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::Wheel) return QTableView::eventFilter(watched, event);
  event->ignore();  // it scrolls the table, and changes no meaning on its way
  return true;
}

}  // namespace q40
