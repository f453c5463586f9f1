// The help on what is in front of the user: F1 in every window, even in a modal dialog.
#pragma once

#include <functional>

#include <QObject>

class QWidget;

namespace q40 {

class HelpWindow;

class HelpDesk final : public QObject {
  Q_OBJECT

 public:
  // `page` tells which page is in front in the window `owner`. Nothing is loaded before the first
  // question.
  HelpDesk(QWidget& owner, std::function<const QWidget*()> page);

  // Opens the help at the section about `place`, or about what it lies in. A place about which
  // nothing is written, or none at all, leads to the page in front.
  void Explain(const QWidget* place);

 signals:
  void opened(QWidget& window);  // to be shown

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void KeepUsable();

  QWidget& owner_;
  std::function<const QWidget*()> page_;
  HelpWindow* window_ = nullptr;
};

}  // namespace q40
