// What the window shows while it talks to a radio: the data as it arrives and the progress. The
// controls are locked meanwhile.
#pragma once

#include <QObject>

#include "link/sequences.h"
#include "widgets/kept_focus.h"

namespace q40 {

class InputGuard;
class MainPages;
class Navigation;
class RadioCommands;
class ReportWindow;
class ServiceCommands;
class Session;
class StatusLine;

class RadioDisplay final : public QObject {
  Q_OBJECT

 public:
  struct Parts {
    Session& session;
    MainPages& pages;
    Navigation& navigation;
    StatusLine& status;
  };
  // All must outlive it.
  RadioDisplay(const Parts& parts, QWidget& window);

  void Follow(RadioCommands& radio);
  void Follow(ServiceCommands& service) const;
  void ShowReport(const QString& text, const QStringList& differences);

 signals:
  void opened(QWidget& window);  // to be shown
  void restWanted();             // of a write that broke off
  void forgetWanted();

 private:
  void ShowPageOf(Sequence sequence);
  void ShowBusy();
  void Begin(Sequence sequence);
  void ShowProgress(const SequenceProgress& progress);
  void End();
  void Over();
  void ShowService(bool talking);
  void OfferRest();
  void SetCloneButtonsEnabled(bool enabled);

  Parts at_;
  QWidget& window_;
  InputGuard* guard_;
  KeptFocus focus_;
  ReportWindow* report_ = nullptr;
};

}  // namespace q40
