#include "dialogs/help_desk.h"

#include <QApplication>
#include <QDialog>
#include <QKeyEvent>
#include <QWindow>

#include "dialogs/help_window.h"

namespace q40 {
namespace {

// Sections of the guide, by the object name of what they are about, or by a window's title.
struct Topic {
  const char* about;
  const char* section;
};
constexpr Topic kTopics[] = {
    {"Frame1_0", "the-page-settings-1"},
    {"Frame1_1", "the-page-settings-2"},
    {"Frame1_2", "the-page-memory"},
    {"Frame1_3", "the-service-page"},
    {"dlgModify", "editing-a-channel"},
    {"txtName", "names"},
    {"dlgCOM", "connecting-the-radio"},
    {"frmCheckUp", "check-up"},
    {"ChannelListWindow", "the-window-channel-list"},
    {"dlgSetValue", "the-window-channel-list"},
    {"dlgCard", "the-channel-card"},
    {"ImportOtherWindow", "lists-of-others"},
    {"frmReport", "backing-up-and-verifying"},
    {"frmHelp", "keyboard"},
    {"QFileDialog", "files"},
    {"Save Changes", "what-is-asked-and-what-is-not"},
    {"ERROR", "when-it-does-not-work"},
};

// Null: nothing is written about it.
const char* SectionAbout(const QWidget& widget) {
  for (const Topic& topic : kTopics) {
    const QLatin1String about(topic.about);
    if (widget.objectName() == about || (widget.isWindow() && widget.windowTitle() == about)) {
      return topic.section;
    }
  }
  return nullptr;
}

// Null: none about it or what it lies in.
const char* SectionOf(const QWidget* widget) {
  for (; widget != nullptr; widget = widget->parentWidget()) {
    if (const char* section = SectionAbout(*widget)) return section;
  }
  return nullptr;
}

}  // namespace

HelpDesk::HelpDesk(QWidget& owner, std::function<const QWidget*()> page)
    : QObject(&owner), owner_(owner), page_(std::move(page)) {
  qApp->installEventFilter(this);
}

void HelpDesk::Explain(const QWidget* place) {
  if (window_ == nullptr) window_ = new HelpWindow(&owner_);
  const char* section = SectionOf(place);
  if (section == nullptr) section = SectionOf(page_());
  KeepUsable();
  emit opened(*window_);
  window_->ShowSection(QLatin1String(section));
}

// A modal dialog blocks all windows but its own. So the help belongs to the dialog that is open,
// and to the main window again when that is closed.
void HelpDesk::KeepUsable() {
  QWidget* modal = QApplication::activeModalWidget();
  QWidget& above = modal != nullptr ? *modal : owner_;
  window_->winId();  // which makes its handle
  window_->windowHandle()->setTransientParent(above.windowHandle());
  if (const auto* dialog = qobject_cast<QDialog*>(modal)) {
    connect(dialog, &QDialog::finished, this, &HelpDesk::KeepUsable, Qt::SingleShotConnection);
  }
}

// In the main window the key is the menu's.
bool HelpDesk::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress) return false;
  const auto* widget = qobject_cast<QWidget*>(watched);
  const bool asked = widget != nullptr && widget->window() != &owner_ &&
                     static_cast<QKeyEvent*>(event)->matches(QKeySequence::HelpContents);
  if (asked) Explain(widget);
  return asked;
}

}  // namespace q40
