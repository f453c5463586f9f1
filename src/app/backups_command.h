// The window with the backups, and its commands.
#pragma once

#include <functional>

#include <QObject>

class QWidget;

namespace q40 {

class BackupsWindow;
class FileCommands;
class Prompts;
class RadioCommands;
class ReportWindow;
class Session;
class UnitCommands;

class BackupsCommand final : public QObject {
  Q_OBJECT

 public:
  struct Parts {
    Session& session;
    Prompts& prompts;
    FileCommands& files;
    RadioCommands& radio;
    UnitCommands& units;
    std::function<bool()> may_run;  // says so when not
  };
  // All must outlive it. The windows belong to `owner`. Nothing is made before it is needed.
  BackupsCommand(Parts parts, QWidget& owner);

  void Show();

 signals:
  void opened(QWidget& window);  // to be shown

 private:
  void Make();
  void Fill();
  void FillWhenShown();
  void Open();
  void Compare();
  void Delete();
  void ShowFolder();
  [[nodiscard]] const std::string& folder() const;

  Parts at_;
  QWidget& owner_;
  BackupsWindow* list_ = nullptr;
  ReportWindow* differences_ = nullptr;
};

}  // namespace q40
