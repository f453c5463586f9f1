#include "channel_list/channel_list_window.h"

#include <QAccessible>
#include <QApplication>
#include <QCheckBox>
#include <QDataStream>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QShortcut>
#include <QSplitter>
#include <QVBoxLayout>

#include "channel_list/row_commands.h"

namespace q40 {
namespace {

constexpr int kSpecialRowsShown = 5;

template <void (RowCommands::*command)(ChannelTable&)>
void Run(RowCommands& commands, ChannelTable& table) {
  (commands.*command)(table);
}

// What is done to the selected rows of the table that has, or had last, the keyboard.
struct RowAction {
  const char* name;  // null: a separator
  const char* caption = "";
  const char* keys = "";
  void (*run)(RowCommands& commands, ChannelTable& table) = nullptr;
  bool memory_only = false;
  bool reads_only = false;
};
constexpr RowAction kRowActions[] = {
    {"mnuListCut", "Cu&t", "Ctrl+X", Run<&RowCommands::Cut>},
    {"mnuListCopy", "&Copy", "Ctrl+C", Run<&RowCommands::Copy>, false, true},
    {"mnuListPaste", "&Paste", "Ctrl+V", Run<&RowCommands::Paste>},
    {"mnuListDuplicate", "D&uplicate", "Ctrl+U", Run<&RowCommands::Duplicate>, true},
    {nullptr},
    {"mnuListInsert", "&Insert Rows", "Ins", Run<&RowCommands::Insert>, true},
    {"mnuListDelete", "&Delete (Rows Move Up)", "Ctrl+-", Run<&RowCommands::Delete>, true},
    {"mnuListClear", "C&lear (Rows Stay)", "Del", Run<&RowCommands::Clear>},
    {"mnuListMoveUp", "Move &Up", "Alt+Up", Run<&RowCommands::MoveUp>, true},
    {"mnuListMoveDown", "Move Do&wn", "Alt+Down", Run<&RowCommands::MoveDown>, true},
    {nullptr},
    {"mnuListSetValue", "Set &Value...", "Ctrl+T", Run<&RowCommands::SetValue>},
    {"mnuListFillDown", "Fill D&own", "Ctrl+D", Run<&RowCommands::FillDown>},
    {"mnuListFillSeries", "Fill &Series...", "Ctrl+Shift+D", Run<&RowCommands::FillSeries>},
    {nullptr},
    {"mnuListSortUp", "Sort &Ascending", "", Run<&RowCommands::SortAscending>, true},
    {"mnuListSortDown", "Sort Desc&ending", "", Run<&RowCommands::SortDescending>, true},
    {"mnuListCloseGaps", "Close &Gaps", "", Run<&RowCommands::CloseGaps>, true},
};

ChannelTable* MakeTable(const char* name, const QString& title, ChannelListModel* channels,
                        QWidget* parent) {
  auto* table = new ChannelTable(*channels, parent);
  table->setObjectName(QLatin1String(name));
  table->setAccessibleName(title);
  return table;
}

}  // namespace

ChannelListWindow::ChannelListWindow(CloneDocument& document, QWidget* owner)
    : QMainWindow(owner, Qt::Window),
      document_(document),
      marks_(document),
      memory_(MakeTable("tblChannels", tr("Memory channels"),
                        new ChannelListModel(ChannelKind::kMemory, document, marks_, this), this)),
      special_(MakeTable("tblSpecialChannels", tr("Special channels"),
                         new ChannelListModel(ChannelKind::kSpecial, document, marks_, this),
                         this)),
      commands_(new RowCommands(document, *this)),
      find_(new QLineEdit(this)),
      hide_empty_(new QCheckBox(tr("Hide &empty channels"), this)),
      status_(new QLabel(this)),
      parts_(new QSplitter(Qt::Vertical, this)) {
  setObjectName(QStringLiteral("ChannelListWindow"));
  setWindowTitle(tr("Channel List"));
  LayOut();
  MakeMenus();
  MakeFind();
  connect(commands_, &RowCommands::said, this, &ChannelListWindow::Say);
  connect(commands_, &RowCommands::noted, this, &ChannelListWindow::noted);
  for (ChannelTable* table : {memory_, special_}) {
    connect(table, &ChannelTable::said, this, &ChannelListWindow::Say);
    connect(table, &ChannelTable::currentCellChanged, this, &ChannelListWindow::ShowCell);
  }
  connect(memory_, &ChannelTable::rowsDropped, this, [this](int to) {
    if (!locked_) commands_->MoveTo(*memory_, to);
  });
  const auto follow = [this] {
    for (QAction* action : memory_only_) action->setEnabled(&Active() == memory_);
  };
  connect(qApp, &QApplication::focusChanged, this, follow);
  memory_->setFocus();
}

// The tables go while there is still something that they can tell what they do.
ChannelListWindow::~ChannelListWindow() {
  disconnect(qApp, nullptr, this, nullptr);
  delete takeCentralWidget();
}

void ChannelListWindow::LayOut() {
  auto* all = new QWidget(this);
  auto* layout = new QVBoxLayout(all);
  auto* top = new QHBoxLayout;
  auto* label = new QLabel(tr("&Find"), all);
  label->setBuddy(find_);
  find_->setObjectName(QStringLiteral("txtFind"));
  find_->setAccessibleName(tr("Find"));
  find_->setPlaceholderText(tr("name, frequency or any value"));
  find_->setClearButtonEnabled(true);
  hide_empty_->setObjectName(QStringLiteral("chkHideEmpty"));
  top->addWidget(label);
  top->addWidget(find_, 1);
  top->addWidget(hide_empty_);
  parts_->addWidget(memory_);
  parts_->addWidget(special_);
  parts_->setChildrenCollapsible(false);
  parts_->setStretchFactor(0, 1);
  parts_->setStretchFactor(1, 0);
  status_->setObjectName(QStringLiteral("lblListStatus"));
  status_->setTextFormat(Qt::PlainText);
  status_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  status_->setWordWrap(true);
  status_->setAlignment(Qt::AlignLeft | Qt::AlignTop);
  status_->setFixedHeight(2 * fontMetrics().lineSpacing());
  layout->addLayout(top);
  layout->addWidget(parts_, 1);
  layout->addWidget(status_);
  setCentralWidget(all);
  const int row = memory_->verticalHeader()->defaultSectionSize();
  resize(fontMetrics().averageCharWidth() * 165, row * 29);
  parts_->setSizes({row * 16, row * (kSpecialRowsShown + 3)});
}

QAction* ChannelListWindow::AddAction(QMenu& menu, const char* name, const QString& caption,
                                      const QString& keys, std::function<void()> run) {
  QAction* action = menu.addAction(caption);
  action->setObjectName(QLatin1String(name));
  action->setShortcut(QKeySequence(keys));
  connect(action, &QAction::triggered, this, std::move(run));
  return action;
}

void ChannelListWindow::MakeMenus() {
  edit_menu_ = menuBar()->addMenu(tr("&Edit"));
  for (const RowAction& row : kRowActions) {
    if (row.name == nullptr) {
      edit_menu_->addSeparator();
      continue;
    }
    QAction* action =
        AddAction(*edit_menu_, row.name, tr(row.caption), QLatin1String(row.keys), [this, &row] {
          if (locked_ && !row.reads_only) {
            return Say(tr("Please wait until the radio is done."));
          }
          ChannelTable& table = Active();
          if (!table.LeaveEdit()) return;
          QCoreApplication::sendPostedEvents(&table, QEvent::MetaCall);  // what it says, before
          if (!row.memory_only || &table == memory_) row.run(*commands_, table);
        });
    action->setAutoRepeat(false);  // a held key runs its command once
    // In the tables alone: the keys mean other things in the box above them.
    action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    parts_->addAction(action);
    memory_->addAction(action);
    if (row.memory_only) {
      memory_only_.push_back(action);
    } else {
      special_->addAction(action);
    }
  }
  MakeViewMenu();
}

void ChannelListWindow::MakeViewMenu() {
  QMenu* view = menuBar()->addMenu(tr("&View"));
  AddAction(*view, "mnuListFind", tr("&Find"), QStringLiteral("Ctrl+F"), [this] {
    find_->setFocus(Qt::ShortcutFocusReason);
    find_->selectAll();
  });
  AddAction(*view, "mnuListFindNext", tr("Find &Next"), QStringLiteral("F3"),
            [this] { FindNext(false); });
  AddAction(*view, "mnuListFindPrevious", tr("Find &Previous"), QStringLiteral("Shift+F3"),
            [this] { FindNext(true); });
  AddAction(*view, "mnuListNextPart", tr("Next P&art"), QStringLiteral("F6"),
            [this] { NextPart(false); });
  AddAction(*view, "mnuListPreviousPart", tr("Previous Par&t"), QStringLiteral("Shift+F6"),
            [this] { NextPart(true); });
  view->addSeparator();
  QMenu* columns = view->addMenu(tr("&Columns"));
  columns->setObjectName(QStringLiteral("mnuListColumns"));
  connect(columns, &QMenu::aboutToShow, this, [this, columns] { FillColumns(*columns); });
  AddAction(*view, "mnuListClose", tr("&Close"), QStringLiteral("Ctrl+W"), [this] { close(); });
  for (ChannelTable* table : {memory_, special_}) {
    QHeaderView* header = table->horizontalHeader();
    header->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(header, &QHeaderView::customContextMenuRequested, this,
            [header, columns, table](const QPoint& place) {
              table->setFocus();
              columns->popup(header->mapToGlobal(place));
            });
  }
}

// One stays.
void ChannelListWindow::FillColumns(QMenu& menu) {
  menu.clear();
  ChannelTable& table = Active();
  for (int visual = 0; visual < table.horizontalHeader()->count(); ++visual) {
    const int column = table.horizontalHeader()->logicalIndex(visual);
    QAction* action = menu.addAction(
        table.model()->headerData(column, Qt::Horizontal, Qt::AccessibleTextRole).toString());
    action->setCheckable(true);
    action->setChecked(!table.isColumnHidden(column));
    connect(action, &QAction::toggled, this, [this, &table, column](bool on) {
      if (!on && table.ShownColumns().size() == 1) return Say(tr("One column stays."));
      table.setColumnHidden(column, !on);
      if (!on) table.GoTo(table.rows().index(table.currentIndex().row(), table.ShownColumns()[0]));
    });
  }
}

void ChannelListWindow::MakeFind() {
  connect(find_, &QLineEdit::textChanged, this, &ChannelListWindow::Narrow);
  connect(find_, &QLineEdit::returnPressed, this, [this] {
    Active().setFocus();
    FindNext(false);
  });
  connect(hide_empty_, &QCheckBox::toggled, this, [this](bool hide) {
    for (ChannelTable* table : {memory_, special_}) {
      table->rows().SetHideEmpty(hide);
      table->KeepCurrent();
    }
  });
  connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, this,
          &ChannelListWindow::ShowAll);
}

void ChannelListWindow::Narrow(const QString& text) {
  int found = 0;
  for (ChannelTable* table : {memory_, special_}) {
    table->rows().SetWanted(text);
    table->KeepCurrent();
    found += table->rows().rowCount();
  }
  Say(text.trimmed().isEmpty() ? QString() : tr("Found in %1 channels.").arg(found));
}

void ChannelListWindow::FindNext(bool backward) {
  if (find_->text().trimmed().isEmpty()) return find_->setFocus(Qt::ShortcutFocusReason);
  ChannelTable& table = Active();
  const QModelIndex cell = table.rows().Next(table.currentIndex(), table.ShownColumns(), backward);
  if (!cell.isValid()) return Say(tr("\"%1\" stands in no cell here.").arg(find_->text()));
  table.setFocus();
  table.GoTo(cell);
}

void ChannelListWindow::ShowAll() {
  ChannelTable& table = Active();
  const bool wanted = !find_->text().isEmpty();
  find_->clear();
  table.setFocus();
  if (wanted) table.GoTo(table.currentIndex());
}

// From the box to the memory channels to the special ones, and around.
void ChannelListWindow::NextPart(bool backward) {
  const std::array<QWidget*, 3> parts = {find_, memory_, special_};
  std::size_t at = 0;
  while (at < parts.size() && parts[at] != focusWidget()) ++at;
  parts[(at + (backward ? 2 : 1)) % parts.size()]->setFocus(Qt::ShortcutFocusReason);
}

// The memory channels, unless the others have the keyboard, or had it before a menu or the box.
ChannelTable& ChannelListWindow::Active() const {
  return parts_->focusWidget() != nullptr && (parts_->focusWidget() == special_ ||
                                              special_->isAncestorOf(parts_->focusWidget()))
             ? *special_
             : *memory_;
}

void ChannelListWindow::Say(const QString& text) {
  status_->setText(text);
  if (text.isEmpty()) return;
  QAccessibleEvent alert(status_, QAccessible::Alert);
  QAccessible::updateAccessibility(&alert);
}

// What the check-up says of the cell that the user is in.
void ChannelListWindow::ShowCell() {
  const QModelIndex cell = Active().currentIndex();
  Say(cell.isValid() ? cell.data(ChannelListModel::kMarkRole).toString() : QString());
}

// ---- what the rest of the program tells

void ChannelListWindow::Show(const DocumentChange& change) {
  marks_.Forget();
  for (ChannelTable* table : {memory_, special_}) {
    if (!change.edit) table->FinishEdit(false);
    table->channels().Show(change);
    table->Refilter();
    table->KeepCurrent();
  }
}

void ChannelListWindow::SetLocked(bool locked) {
  locked_ = locked;
  for (ChannelTable* table : {memory_, special_}) {
    if (locked) table->FinishEdit(false);
    table->channels().SetLocked(locked);
  }
}

void ChannelListWindow::Settle() {
  for (ChannelTable* table : {memory_, special_}) table->FinishEdit(true);
}

void ChannelListWindow::Share(const QList<QAction*>& actions) {
  QAction* before = edit_menu_->actions().front();
  for (QAction* action : actions) {
    edit_menu_->insertAction(before, action);
    addAction(action);
  }
  if (!actions.isEmpty()) edit_menu_->insertSeparator(before);
}

QByteArray ChannelListWindow::State() const {
  QByteArray state;
  QDataStream out(&state, QIODevice::WriteOnly);
  out << saveGeometry() << parts_->saveState() << memory_->horizontalHeader()->saveState()
      << special_->horizontalHeader()->saveState() << hide_empty_->isChecked()
      << memory_->model()->columnCount();
  return state;
}

void ChannelListWindow::Restore(const QByteArray& state) {
  QByteArray geometry;
  QByteArray parts;
  QByteArray memory;
  QByteArray special;
  bool hide = false;
  int columns = 0;
  QDataStream in(state);
  in >> geometry >> parts >> memory >> special >> hide >> columns;
  if (in.status() != QDataStream::Ok || columns != memory_->model()->columnCount()) return;
  restoreGeometry(geometry);
  parts_->restoreState(parts);
  memory_->horizontalHeader()->restoreState(memory);
  special_->horizontalHeader()->restoreState(special);
  for (ChannelTable* table : {memory_, special_}) {
    if (table->ShownColumns().empty()) table->showColumn(0);
  }
  hide_empty_->setChecked(hide);
}

void ChannelListWindow::hideEvent(QHideEvent* event) {
  QMainWindow::hideEvent(event);
  if (!event->spontaneous()) emit hidden();
}

}  // namespace q40
