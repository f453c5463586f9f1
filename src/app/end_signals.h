// The first signal that asks the program to end runs the window's own end; the second one ends it at once.
#pragma once

#include <QObject>

class QSocketNotifier;

namespace q40 {

// One, in the program's main function.
class EndSignals final : public QObject {
  Q_OBJECT

 public:
  EndSignals();
  ~EndSignals() override;

 signals:
  void endRequested();

 private:
  QSocketNotifier* wake_ = nullptr;
};

}  // namespace q40
