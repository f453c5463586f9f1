#include "app/channel_list_command.h"

#include <QAction>

#include "app/main_pages.h"
#include "app/routing.h"
#include "app/session.h"
#include "app/user_options.h"
#include "channel_list/channel_list_window.h"

namespace q40 {
namespace {

constexpr const char* kStateKey = "ChannelList";

}  // namespace

ChannelListCommand::ChannelListCommand(Session& session, const MainPages& pages, QWidget& owner)
    : QObject(&owner), session_(session), owner_(owner) {
  const auto* by_heading = owner.findChild<QAction*>(QLatin1String(kCellsByHeadingEntry));
  connect(by_heading, &QAction::toggled, this, [&pages](bool on) { pages.ShowByHeading(on); });
  pages.ShowByHeading(by_heading->isChecked());
}

ChannelListCommand::~ChannelListCommand() { delete window_; }

void ChannelListCommand::MakeWindow() {
  window_ = new ChannelListWindow(session_.document(), &owner_);
  connect(&session_, &Session::changed, window_, &ChannelListWindow::Show);
  connect(&session_, &Session::settling, window_, &ChannelListWindow::Settle);
  connect(&session_, &Session::busyChanged, window_,
          [this] { window_->SetLocked(session_.IsBusy()); });
  connect(window_, &ChannelListWindow::noted, this, &ChannelListCommand::noted);
  connect(window_, &ChannelListWindow::hidden, this,
          [this] { UserOptions::SetBytes(kStateKey, window_->State()); });
  QList<QAction*> shared;
  for (const char* name : {"mnuUndo", "mnuRedo"}) {
    if (auto* action = owner_.findChild<QAction*>(QLatin1String(name))) shared << action;
  }
  window_->Share(shared);
  window_->Restore(UserOptions::Bytes(kStateKey));
}

void ChannelListCommand::Show() {
  if (window_ == nullptr) MakeWindow();
  emit opened(*window_);
}

}  // namespace q40
