// Ends what the radio is doing, at the next unit: Esc, the Stop button, closing the window, and the end
// of the user's session. A read ends at once. A write is asked about, and goes on while the question
// stands.
#pragma once

#include <functional>

#include <QObject>
#include <QPointer>

class QMessageBox;
class QWidget;

namespace q40 {

class RadioCommands;
class Session;
class StatusLine;

class StopControl final : public QObject {
  Q_OBJECT

 public:
  // All must outlive it.
  StopControl(Session& session, RadioCommands& radio, StatusLine& status, QWidget& window);

  // Nothing while the radio is quiet.
  void Ask();
  // The same, and closes the window when the radio has stopped.
  void AskToClose();
  // Without a question; `then` runs when the radio is quiet, at once if it is.
  void StopThen(std::function<void()> then);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void ShowBusy();
  void Stop();
  void AskAboutWrite();

  Session& session_;
  StatusLine& status_;
  QWidget& window_;
  bool writing_ = false;  // the sequence that runs changes the radio
  bool talks_ = false;
  bool closes_ = false;  // when the answer is to stop
  std::function<void()> then_;
  QPointer<QMessageBox> question_;
};

}  // namespace q40
