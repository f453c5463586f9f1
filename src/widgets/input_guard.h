// Locks the controls of some pages for a while without greying them.
// Scrolling, selecting rows and switching tabs stay possible.
#pragma once

#include <vector>

#include <QObject>

class QWidget;

namespace q40 {

class InputGuard : public QObject {
 public:
  InputGuard(std::vector<QWidget*> pages, QObject* parent);
  void SetActive(bool active);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void ReleaseSliders();

  std::vector<QWidget*> pages_;
  bool active_ = false;
};

}  // namespace q40
