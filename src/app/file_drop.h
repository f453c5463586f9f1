// Files that are dropped on the window.
#pragma once

#include <functional>
#include <string>

#include <QObject>

class QDropEvent;
class QWidget;

namespace q40 {

class FileDrop final : public QObject {
  Q_OBJECT

 public:
  // `may_open`: asked when a file comes over the window, and before it is opened.
  FileDrop(QWidget& window, std::function<bool()> may_open);

 signals:
  void dropped(const std::string& path);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Enter(QDropEvent& event);
  void Drop(QDropEvent& event);

  std::function<bool()> may_open_;
};

}  // namespace q40
