// The channel list and the way of the cells in the main window: what shows the same channels otherwise.
#pragma once

#include <QObject>

class QWidget;

namespace q40 {

class ChannelListWindow;
class MainPages;
class Session;
struct CloneImage;
struct ImportReport;

class ChannelListCommand final : public QObject {
  Q_OBJECT

 public:
  // The window belongs to `owner`, whose menus are made already, and is not made before it is
  // needed. The others must outlive the command.
  ChannelListCommand(Session& session, const MainPages& pages, QWidget& owner);

  ~ChannelListCommand() override;

  void Show();

 signals:
  void opened(QWidget& window);  // to be shown
  // A paste into the list that has not understood everything.
  void noted(const QString& account, const q40::ImportReport& report,
             const q40::CloneImage& before);

 private:
  void MakeWindow();

  Session& session_;
  QWidget& owner_;
  ChannelListWindow* window_ = nullptr;
};

}  // namespace q40
