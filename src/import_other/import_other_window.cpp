#include "import_other/import_other_window.h"

#include <algorithm>

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <QTableView>
#include <QTimer>
#include <QVBoxLayout>

#include "import_other/column_table.h"
#include "import_other/form_bar.h"
#include "import_other/mapping_bar.h"
#include "import_other/options_bar.h"
#include "import_other/preview_model.h"
#include "import_other/raw_list_model.h"
#include "widgets/outer_size.h"
#include "widgets/paths.h"
#include "widgets/row_table.h"

namespace q40 {
namespace {

QLabel* Caption(const QString& text, QWidget& of) {
  auto* label = new QLabel(text, of.parentWidget());
  label->setBuddy(&of);
  return label;
}

QString Counted(std::size_t count, const QString& one) {
  return count == 1 ? QStringLiteral("1 ") + one : QStringLiteral("%1 %2s").arg(count).arg(one);
}

}  // namespace

ImportOtherWindow::ImportOtherWindow(Source source, const CloneData& document, QWidget* owner)
    : QDialog(owner),
      name_(source.name),
      draft_(std::move(source.bytes), std::move(source.name), document),
      mappings_(new MappingBar(
          std::move(source.mapping_folder), [this] { return draft_.Kept(); }, this)),
      form_(new FormBar(this)),
      facts_(AddLabel("lblListFacts")),
      missing_(AddLabel("lblMissing")),
      columns_(new ColumnTable(this)),
      options_(new OptionsBar(document, draft_.options(), this)),
      preview_(new PreviewModel(this)),
      rows_(MakePreview()),
      row_(AddLabel("lblRow")),
      summary_(AddLabel("lblSummary")),
      due_(new QTimer(this)) {
  setObjectName(QStringLiteral("ImportOtherWindow"));
  setWindowTitle(tr("Import Other List"));
  due_->setSingleShot(true);
  due_->setInterval(0);
  LayOut();
  Connect();
  ShowList();
  Refresh();
}

// A table that goes has no current row any more, and nobody is left to show that.
ImportOtherWindow::~ImportOtherWindow() {
  disconnect(rows_->selectionModel(), nullptr, this, nullptr);
}

const ImportPlan& ImportOtherWindow::plan() const { return preview_->plan(); }

// ---- how it looks

QLabel* ImportOtherWindow::AddLabel(const char* name) {
  auto* label = new QLabel(this);
  label->setObjectName(QLatin1String(name));
  label->setTextFormat(Qt::PlainText);
  label->setWordWrap(true);
  return label;
}

QTableView* ImportOtherWindow::MakePreview() {
  auto* table = new QTableView(this);
  table->setObjectName(QStringLiteral("tblPreview"));
  table->setAccessibleName(tr("What each row becomes"));
  table->setModel(preview_);
  table->setSelectionMode(QAbstractItemView::SingleSelection);
  SetUpShortRows(*table);
  const int text = table->fontMetrics().height();
  table->setIconSize({text, text});
  QHeaderView* header = table->horizontalHeader();
  header->setStretchLastSection(true);
  const int character = table->fontMetrics().averageCharWidth();
  for (const auto& [column, characters] : {std::pair{0, 8}, std::pair{1, 14}, std::pair{2, 46}}) {
    table->setColumnWidth(column, character * characters);
  }
  return table;
}

QWidget* ImportOtherWindow::MakeButtons() {
  auto* buttons = new QWidget(this);
  auto* layout = new QHBoxLayout(buttons);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addStretch();
  const auto button = [&](const char* name, const QString& caption) {
    auto* made = new QPushButton(caption, buttons);
    made->setObjectName(QLatin1String(name));
    layout->addWidget(made);
    return made;
  };
  ok_ = button("cmdImportOther", tr("OK"));
  ok_->setDefault(true);
  connect(ok_, &QPushButton::clicked, this, &ImportOtherWindow::accept);
  connect(button("cmdCancelImportOther", tr("Cancel")), &QPushButton::clicked, this,
          &QDialog::reject);
  return buttons;
}

void ImportOtherWindow::LayOut() {
  columns_->setObjectName(QStringLiteral("tblColumns"));
  columns_->setAccessibleName(tr("Columns of the list"));
  const int line = fontMetrics().lineSpacing();
  row_->setFixedHeight(3 * line);
  row_->setAlignment(Qt::AlignLeft | Qt::AlignTop);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(mappings_);
  layout->addWidget(missing_);
  layout->addWidget(form_);
  layout->addWidget(facts_);
  layout->addWidget(Caption(tr("&Columns, and what they mean:"), *columns_));
  layout->addWidget(columns_, 2);
  layout->addWidget(options_);
  layout->addWidget(Caption(tr("&What each row becomes:"), *rows_));
  layout->addWidget(rows_, 3);
  layout->addWidget(row_);
  layout->addWidget(summary_);
  layout->addWidget(MakeButtons());
  const QSize wanted(fontMetrics().averageCharWidth() * 130, line * 44);
  resize(wanted.boundedTo(RoomBeside(*parentWidget())));
}

// ---- what is chosen

void ImportOtherWindow::Connect() {
  connect(due_, &QTimer::timeout, this, &ImportOtherWindow::Refresh);
  connect(mappings_, &MappingBar::guessWanted, this, &ImportOtherWindow::TakeGuess);
  connect(mappings_, &MappingBar::mappingChosen, this, &ImportOtherWindow::TakeMapping);
  connect(form_, &FormBar::chosen, this, &ImportOtherWindow::TakeForm);
  connect(columns_, &ColumnTable::meaningChosen, this, [this](int column, Meaning meaning) {
    draft_.SetMeaning(static_cast<std::size_t>(column), meaning);
    mappings_->SetByHand();
    Await();
  });
  connect(options_, &OptionsBar::chosen, this, [this](const PlanOptions& options) {
    draft_.SetOptions(options);
    Await();
  });
  connect(rows_->selectionModel(), &QItemSelectionModel::currentChanged, this,
          &ImportOtherWindow::ShowRow);
}

void ImportOtherWindow::TakeForm(const ListForm& form) {
  draft_.SetForm(form);
  mappings_->SetByHand();
  ShowList();
}

void ImportOtherWindow::TakeMapping(const KeptMapping& kept) {
  draft_.Use(kept);
  ShowList();
}

void ImportOtherWindow::TakeGuess() {
  draft_.Guess();
  ShowList();
}

void ImportOtherWindow::Await() {
  if (!due_->isActive()) due_->start();
}

// Not what was about to be planned otherwise.
void ImportOtherWindow::accept() {
  if (due_->isActive()) Refresh();
  if (ok_->isEnabled()) QDialog::accept();
}

// ---- what follows from it

void ImportOtherWindow::ShowList() {
  const ForeignList& list = draft_.list();
  const bool read = !draft_.problem();
  form_->Show(draft_.form(), read ? &list.form : nullptr);
  columns_->Show(list, draft_.meanings());
  mappings_->SetKeepable(read);
  facts_->setText(Shown(name_) + QStringLiteral(": ") + Counted(list.rows.size(), tr("row")) +
                  QStringLiteral(", ") + Counted(list.Columns(), tr("column")) + QLatin1Char('.'));
  ShowMissing();
  Await();
}

void ImportOtherWindow::ShowMissing() {
  constexpr qsizetype kNamed = 3;
  QStringList texts;
  for (const std::string& text : draft_.missing()) texts << Shown(text);
  missing_->setVisible(!texts.isEmpty());
  const qsizetype more = texts.size() - kNamed;
  QString shown = texts.mid(0, kNamed).join(QStringLiteral("; "));
  if (more > 0) shown += tr("; and %1 more").arg(more);
  missing_->setText(tr("Of this mapping: %1.").arg(shown));
  missing_->setToolTip(WholeToolTip(texts.join(QLatin1Char('\n'))));
}

// The row that the user was looking at stays in its place.
void ImportOtherWindow::Refresh() {
  due_->stop();
  const int row = rows_->currentIndex().row();
  const int scrolled = rows_->verticalScrollBar()->value();
  preview_->Show(draft_.Plan());
  rows_->setCurrentIndex(preview_->index(std::max(row, 0), PreviewModel::kPlace));
  rows_->verticalScrollBar()->setValue(scrolled);
  ok_->setEnabled(plan().Count(RowOutcome::kChannel) > 0);
  ShowSummary();
  ShowRow();
}

void ImportOtherWindow::ShowSummary() {
  if (!plan().problem.empty()) {
    return summary_->setText(tr("Nothing can be imported: %1.").arg(Shown(plan().problem)));
  }
  QString text = Shown(plan().Summary()) + QLatin1Char('.');
  const int losses = plan().Losses();
  if (losses == 1) text += tr(" 1 note tells what does not fit.");
  if (losses > 1) text += tr(" %1 notes tell what does not fit.").arg(losses);
  summary_->setText(text);
}

void ImportOtherWindow::ShowRow() { row_->setText(preview_->Account(rows_->currentIndex().row())); }

}  // namespace q40
