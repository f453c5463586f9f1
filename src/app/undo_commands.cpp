#include "app/undo_commands.h"

#include <QAction>
#include <QApplication>
#include <QMenuBar>
#include <QSlider>

#include "app/frm_main.h"
#include "app/list_commands.h"
#include "app/navigation.h"
#include "app/prompts.h"
#include "app/radio_commands.h"
#include "app/routing.h"
#include "app/session.h"
#include "checkup/finding.h"
#include "document/document_cells.h"
#include "widgets/paths.h"

namespace q40 {
namespace {

using Act = DocumentAct;
using Label = History::Label;

Label LabelOf(const DocumentChange& change, const CloneData& data) {
  const auto at = static_cast<std::size_t>(change.index);
  const auto channel = [&](const char* doing) {
    return Label{doing + (" channel " + ChannelTitle(change.index)),
                 kFirstMemoryPart + change.index};
  };
  const auto special = [&](const char* doing) {
    const Band band = data.image.ShownBand;
    const std::string name = band == Band::kUhf ? " UHF " : " VHF ";
    return Label{doing + name + std::string(kSpecialRowTitles.at(at)),
                 SpecialPart(band, change.index)};
  };
  switch (change.act) {
    case Act::kInsertChannel: return channel("Insert");
    case Act::kDeleteChannel: return channel("Delete");
    case Act::kClearChannel: return channel("Clear");
    case Act::kClearAllChannels: return {"Clear All"};
    case Act::kStoreMemoryChannel: return channel("Edit");
    case Act::kStoreSpecialChannel: return special("Edit");
    case Act::kClearLimit: return special("Clear");
    case Act::kChangeSetting: return {CaptionOf(Settings()[at]), kFirstSettingPart + change.index};
    case Act::kChangeLooseSetting: return {"Setting that is not stored", Label::kEverywhere};
    case Act::kChangeDialText:
      return {"Auto dialer " + std::string(kDialTitles.at(at)), kFirstDialPart + change.index};
    case Act::kNew: return {"New", Label::kEverywhere, true};
    case Act::kChangeModel:
      return {"Model " + std::string(ModelName(data.model)), Label::kEverywhere, true};
    case Act::kOpen: return {"Open", Label::kEverywhere, true};
    case Act::kImport: return {"Import", Label::kByDifference, true};
    case Act::kTakeBack: return {"Take Back"};
    case Act::kStoreChannels: return {"Channel List"};
    case Act::kRestore: return {"Restore", Label::kEverywhere, true};
    default: return {"Change"};
  }
}

// Of which a visit makes one step: typed, or dragged.
bool GoesOn(const DocumentChange& change) {
  if (change.act == Act::kChangeDialText) return true;
  if (change.act != Act::kChangeSetting) return false;
  const Setting& setting = Settings()[static_cast<std::size_t>(change.index)];
  return setting.items.empty() && setting.top > 1;
}

Place PlaceOf(int part) {
  using Where = Place::Where;
  if (part >= kFirstMemoryPart) return {Where::kMemory, Band::kVhf, part - kFirstMemoryPart};
  if (part >= SpecialPart(Band::kUhf, 0)) {
    return {Where::kSpecial, Band::kUhf, part - SpecialPart(Band::kUhf, 0)};
  }
  if (part >= kFirstSpecialPart) return {Where::kSpecial, Band::kVhf, part - kFirstSpecialPart};
  if (part >= kFirstDialPart) return {Where::kDialer, Band::kVhf, part - kFirstDialPart};
  return {Where::kSetting, Band::kVhf, part - kFirstSettingPart};
}

void ShowIn(QAction& action, bool possible, const QString& caption, const Label* label) {
  action.setEnabled(possible);
  if (label == nullptr) return action.setText(caption);
  constexpr int kLongest = 60;
  QString name = Shown(label->name);
  if (name.size() > kLongest) name = name.left(kLongest - 1) + QChar(0x2026);
  action.setText(caption + ' ' + name.replace(QLatin1Char('&'), QLatin1String("&&")));
}

}  // namespace

UndoCommands::UndoCommands(Session& session, Prompts& prompts, QObject* parent)
    : QObject(parent), session_(session), prompts_(prompts) {
  connect(&session, &Session::changed, this, &UndoCommands::Note);
  connect(&session, &Session::pathChanged, this, &UndoCommands::NotePath);
  connect(&session, &Session::saved, this, &UndoCommands::NoteSaved);
  connect(&session, &Session::busyChanged, this, &UndoCommands::NoteBusy);
  connect(qApp, &QApplication::focusChanged, this,
          [this](const QWidget*, const QWidget* now) { NoteFocus(now); });
}

void UndoCommands::Attach(frmMain& window, Navigation& navigation, const RadioCommands& radio,
                          const ListCommands& lists) {
  window_ = &window;
  navigation_ = &navigation;
  connect(&window, &frmMain::ready, this, &UndoCommands::Start);
  connect(&radio, &RadioCommands::begun, this, &UndoCommands::NoteSequence);
  connect(&lists, &ListCommands::named, this,
          [this](const QString& name) { NameStep(QStringLiteral("Import of ") + name); });
  undo_ = window.findChild<QAction*>(QLatin1String(kUndoEntry));
  redo_ = window.findChild<QAction*>(QLatin1String(kRedoEntry));
  for (const QSlider* slider : window.findChildren<QSlider*>()) {
    connect(slider, &QSlider::sliderPressed, this, [this] { history_.Close(); });
    connect(slider, &QSlider::sliderReleased, this, [this] { history_.Close(); });
  }
  Offer();
}

void UndoCommands::Start() {
  history_.Reset(session_.document().data(), Facts());
  started_ = true;
  Offer();
}

History::Facts UndoCommands::Facts() {
  const PartialRead& part = session_.part();
  if (parts_.empty() || parts_.back().Text() != part.Text()) parts_.push_back(part);
  const CloneDocument& document = session_.document();
  return {session_.path(), document.SettingsChanged(), document.MemoryChanged(),
          static_cast<int>(parts_.size()) - 1};
}

// ---- what happens

void UndoCommands::Note(const DocumentChange& change) {
  if (!started_ || (moving_ && change.act == Act::kRestore)) return;
  if (session_.busy() == Session::Busy::kTalking) {
    replaces_ = replaces_ || change.anew;
    return;  // one step at the end
  }
  const bool no_step = (change.act == Act::kPart && !change.edit) || change.act == Act::kChooseBand;
  if (no_step || moving_ || IsFilledIn(change)) {
    Amend();
  } else {
    Take(change);
  }
  Offer();
}

// "St" gets its 1 when the dialer is left. That belongs to the visit, and must not cost the steps that
// can be done again.
bool UndoCommands::IsFilledIn(const DocumentChange& change) const {
  if (change.act != Act::kChangeDialText || !(history_.IsOpen() || history_.CanRedo()))
    return false;
  const QWidget* focus = window_->focusWidget();
  return focus == nullptr || focus->objectName() != QStringLiteral("txtDial_%1").arg(change.index);
}

void UndoCommands::Take(const DocumentChange& change) {
  const CloneData& data = session_.document().data();
  history_.Take(data, Facts(), LabelOf(change, data), GoesOn(change));
  visited_ = window_->focusWidget();
  opening_ = change.act == Act::kOpen;
}

void UndoCommands::Amend() { history_.Amend(session_.document().data(), Facts()); }

void UndoCommands::NameStep(const QString& name) {
  history_.Rename(name.toStdString());
  Offer();
}

void UndoCommands::NotePath() {
  if (!started_ || moving_ || session_.busy() == Session::Busy::kTalking) return;
  Amend();
  if (opening_) NameStep(QStringLiteral("Open ") + Shown(FileName(session_.path())));
  opening_ = false;
}

// What a reading has brought until then is a step of its own.
void UndoCommands::NoteSaved() {
  if (!started_) return;
  TakeTransfer();
  history_.Save(session_.document().data(), Facts());
  Offer();
}

// Away from the control, and not only to the menu or another window.
void UndoCommands::NoteFocus(const QWidget* now) {
  if (now == nullptr || now == visited_ || now->window() != window_) return;
  if (qobject_cast<const QMenuBar*>(now) == nullptr) history_.Close();
}

// ---- the radio

void UndoCommands::NoteSequence(Sequence sequence) {
  switch (sequence) {
    case Sequence::kReadSettings: transfer_ = QStringLiteral("Read Settings"); break;
    case Sequence::kReadMemory:
      transfer_ = transfer_.isEmpty() ? QStringLiteral("Read Memory") : QStringLiteral("Read All");
      break;
    case Sequence::kAutoSelect: transfer_ = QStringLiteral("Auto Select"); break;
    default: break;
  }
}

void UndoCommands::NoteBusy() {
  if (!started_ || session_.busy() != Session::Busy::kNo) return;
  TakeTransfer();
  Amend();  // a write puts the settings into their lines; that is no step
  transfer_.clear();
  Offer();
}

void UndoCommands::TakeTransfer() {
  if (transfer_.isEmpty()) return;
  history_.Take(session_.document().data(), Facts(),
                {transfer_.toStdString(), Label::kByDifference, std::exchange(replaces_, false)});
}

// ---- there and back

void UndoCommands::Move(bool (History::*can)() const, const Label& (History::*label)() const,
                        const History::Facts& (History::*go)(CloneData&, int&),
                        const QString& account) {
  if (!started_ || session_.IsBusy()) return;
  Amend();  // what nobody was told of
  if (!(history_.*can)()) return;
  moving_ = true;
  const QString name = Shown((history_.*label)().name);
  CloneData data = session_.document().data();
  int part = Label::kEverywhere;
  const History::Facts facts = (history_.*go)(data, part);
  session_.document().Restore(std::move(data), facts.settings_changed, facts.memory_changed);
  Show(facts);
  if (part != Label::kEverywhere) navigation_->GoTo(PlaceOf(part));
  moving_ = false;
  prompts_.Note(account.arg(name));
  Offer();
}

void UndoCommands::Show(const History::Facts& facts) {
  session_.part() = parts_[static_cast<std::size_t>(facts.tag)];
  if (facts.path != session_.path()) session_.SetPath(facts.path);
  session_.TellFacts();
  session_.TellNewData();
}

void UndoCommands::Offer() {
  if (undo_ == nullptr) return;
  const bool back = history_.CanUndo();
  const bool again = history_.CanRedo();
  ShowIn(*undo_, back, tr("&Undo"), back ? &history_.UndoLabel() : nullptr);
  ShowIn(*redo_, again, tr("&Redo"), again ? &history_.RedoLabel() : nullptr);
}

}  // namespace q40
