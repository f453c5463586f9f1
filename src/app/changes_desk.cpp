#include "app/changes_desk.h"

#include <algorithm>
#include <filesystem>

#include <QAction>
#include <QMainWindow>
#include <QTimer>

#include "app/change_marks.h"
#include "app/list_commands.h"
#include "app/prompts.h"
#include "app/radio_commands.h"
#include "app/routing.h"
#include "app/session.h"
#include "dialogs/changes_window.h"
#include "dialogs/import_notes.h"
#include "dialogs/write_question.h"
#include "document/defaults.h"
#include "files/clone_file.h"
#include "link/write_plan.h"
#include "widgets/paths.h"

namespace q40 {
namespace {

constexpr std::size_t kMostBackups = 10;

// The clone files of a folder, the latest first. A folder that is not there has none.
std::vector<std::string> Backups(const std::string& folder) {
  namespace fs = std::filesystem;
  std::error_code error;
  std::vector<std::pair<fs::file_time_type, std::string>> found;
  for (fs::directory_iterator at(folder, error), end; !error && at != end; at.increment(error)) {
    std::error_code unknown;
    if (at->path().extension() != ".Q40" || !at->is_regular_file(unknown)) continue;
    found.emplace_back(at->last_write_time(unknown), at->path().string());
  }
  std::sort(found.rbegin(), found.rend());
  std::vector<std::string> paths;
  for (const auto& [time, path] : found) {
    if (paths.size() < kMostBackups) paths.push_back(path);
  }
  return paths;
}

}  // namespace

ChangesDesk::ChangesDesk(const Parts& parts, QMainWindow& window)
    : QObject(&window),
      at_(parts),
      window_(window),
      states_(parts.session, parts.files, parts.lists, parts.radio, this),
      marks_(new ChangeMarks(parts.session, parts.pages, states_, window)),
      refresh_(new QTimer(this)) {
  refresh_->setSingleShot(true);
  refresh_->setInterval(0);
  connect(refresh_, &QTimer::timeout, this, &ChangesDesk::Refresh);
  const auto refresh = [this] {
    if (changes_ != nullptr && changes_->isVisible()) refresh_->start();
  };
  connect(&parts.session, &Session::changed, this, refresh);
  connect(&parts.session, &Session::busyChanged, this, refresh);
  connect(&states_, &KnownStates::changed, this, &ChangesDesk::FollowStates);
  connect(&parts.lists, &ListCommands::accounted, this, &ChangesDesk::NoteImport);
}

// ---- the window

void ChangesDesk::MakeWindow() {
  changes_ = new ChangesWindow(&window_);
  connect(changes_, &ChangesWindow::againstChosen, this, &ChangesDesk::Choose);
  connect(changes_, &ChangesWindow::takeBackRequested, this, &ChangesDesk::TakeBack);
  connect(changes_, &ChangesWindow::placeChosen, this, &ChangesDesk::placeChosen);
  // What was taken back here can be undone here.
  for (const char* name : {kUndoEntry, kRedoEntry}) {
    changes_->addAction(window_.findChild<QAction*>(QLatin1String(name)));
  }
}

void ChangesDesk::Show() {
  if (changes_ == nullptr) MakeWindow();
  at_.session.Settle();
  Fill();
  emit opened(*changes_);
  Refresh();
}

// What there is to compare with. A choice that is gone gives way to the file.
void ChangesDesk::Fill() {
  using Kind = Against::Kind;
  const auto& radio = states_.radio();
  list_ = {{Kind::kFile, {}, states_.file().name},
           {Kind::kRadio, {}, radio ? radio->name : tr("The radio (not known yet)")}};
  if (states_.before_import()) {
    list_.push_back({Kind::kImport, {}, states_.before_import()->name});
  }
  if (states_.before_paste()) list_.push_back({Kind::kPaste, {}, states_.before_paste()->name});
  std::vector<std::string> backups = Backups(at_.backup_folder);
  for (const std::string& path : backups) {
    list_.push_back({Kind::kClone, path, tr("Backup %1").arg(Shown(FileName(path)))});
  }
  if (!own_clone_.empty() &&
      std::find(backups.begin(), backups.end(), own_clone_) == backups.end()) {
    list_.push_back({Kind::kClone, own_clone_, Shown(FileName(own_clone_))});
  }
  list_.push_back({Kind::kAsk, {}, tr("Another clone file...")});
  QStringList names;
  for (const Against& one : list_) names << one.name;
  const auto found = std::find(list_.begin(), list_.end(), chosen_);
  if (found == list_.end()) chosen_ = list_.front();
  changes_->SetAgainst(names, found == list_.end() ? 0 : static_cast<int>(found - list_.begin()));
}

void ChangesDesk::Choose(int index) {
  Against wanted = list_[static_cast<std::size_t>(index)];
  const bool asks = wanted.kind == Against::Kind::kAsk;
  if (asks) {
    wanted.kind = Against::Kind::kClone;
    wanted.path = at_.prompts.AskPath(Prompts::FileDialog::kCompare, at_.session.path(),
                                      at_.session.document().model());
  }
  const bool is_clone = wanted.kind == Against::Kind::kClone;
  if (!is_clone || (!wanted.path.empty() && Load(wanted.path))) {
    chosen_ = wanted;
    if (asks) own_clone_ = wanted.path;
  }
  Fill();
  Refresh();
}

bool ChangesDesk::Load(const std::string& path) {
  KnownStates::State state{Shown(FileName(path)), FreshData()};
  if (const auto problem = OpenCloneFile(path, state.data).problem) {
    at_.prompts.DataError(*problem);
    return false;
  }
  clone_ = std::move(state);
  return true;
}

const KnownStates::State* ChangesDesk::Chosen() const {
  switch (chosen_.kind) {
    case Against::Kind::kRadio: return states_.radio() ? &*states_.radio() : nullptr;
    case Against::Kind::kImport:
      return states_.before_import() ? &*states_.before_import() : &states_.file();
    case Against::Kind::kPaste:
      return states_.before_paste() ? &*states_.before_paste() : &states_.file();
    case Against::Kind::kClone: return &clone_;
    default: return &states_.file();
  }
}

void ChangesDesk::FollowStates() {
  if (changes_ == nullptr || !changes_->isVisible()) return;
  Fill();
  refresh_->start();
}

// While the radio talks the window waits for the end.
void ChangesDesk::Refresh() {
  changes_->SetLocked(at_.session.IsBusy());
  if (at_.session.IsBusy()) return;
  const KnownStates::State* before = Chosen();
  if (before == nullptr) {
    changes_->view().Show(
        {}, tr("What the radio holds is not known: it has not been read or written."), {});
  } else {
    QString about;
    if (before->half == Half::kSettings) about = tr("Of the radio only the settings are known.");
    if (before->half == Half::kMemory) about = tr("Of the radio only the channels are known.");
    changes_->view().Show(DifferencesOf(before->data, at_.session.document().data(), before->half),
                          tr("No changes."), about);
  }
  ShowNotes();
}

void ChangesDesk::TakeBack() {
  const KnownStates::State* before = Chosen();
  if (at_.session.IsBusy() || before == nullptr) return;
  at_.session.Settle();
  const int count = at_.session.document().TakeBack(before->data, changes_->view().Selected());
  if (count == 0) return;
  at_.prompts.Note(count == 1 ? tr("Took 1 change back.") : tr("Took %1 changes back.").arg(count));
}

// ---- what came in

void ChangesDesk::NoteImport(const QString& account, const ImportReport& report) {
  import_ = {account, report};
  if (!states_.before_import()) return;
  chosen_ = {Against::Kind::kImport, {}, {}};
  FollowStates();
}

void ChangesDesk::ShowPaste(const QString& account, const ImportReport& report,
                            const CloneImage& before) {
  paste_ = {account, report};
  states_.KeepBeforePaste(before);
  chosen_ = {Against::Kind::kPaste, {}, {}};
  Show();
}

void ChangesDesk::ShowNotes() {
  const bool paste = chosen_.kind == Against::Kind::kPaste;
  if (!paste && chosen_.kind != Against::Kind::kImport) return changes_->ShowNotes({}, {});
  const Incoming& incoming = paste ? paste_ : import_;
  const auto rows = ImportNotes::RowsOf(incoming.report);
  QString account = incoming.account;
  const int more = incoming.report.note_count - static_cast<int>(rows.size());
  if (more > 0) account += tr(" %1 more notes are not listed.").arg(more);
  changes_->ShowNotes(account, rows);
}

// ---- before a write

bool ChangesDesk::MayWrite(Half half) {
  if (!window_.findChild<QAction*>(QLatin1String(kShowChangesEntry))->isChecked()) return true;
  // What is no data is refused by the write itself, which says why.
  if (FirstBadUnit(MakeWritePlan(at_.session.document().data(), half))) return true;
  WriteQuestion question(&window_);
  for (;;) {
    const bool known = states_.KnowsRadio(half);
    if (known) {
      question.Ask(true, states_.ChangesOfWrite(half),
                   tr("Before: %1.").arg(states_.radio()->name));
    } else {
      question.Ask(false, {}, tr("It has not been read or written as a whole."));
    }
    const int answer = question.exec();
    if (answer != WriteQuestion::kReadFirst) return answer == WriteQuestion::kWrite;
    CloneData radio = FreshData();
    ChangeModel(radio, at_.session.document().model());
    if (!at_.radio.LookUp(radio, half)) return false;
    states_.KeepRadio(radio, half, tr("read"));
  }
}

}  // namespace q40
