#include "app/file_drop.h"

#include <QDropEvent>
#include <QMimeData>
#include <QTimer>
#include <QUrl>
#include <QWidget>

#include "widgets/paths.h"

namespace q40 {

FileDrop::FileDrop(QWidget& window, std::function<bool()> may_open)
    : QObject(&window), may_open_(std::move(may_open)) {
  window.setAcceptDrops(true);
  window.installEventFilter(this);
}

bool FileDrop::eventFilter(QObject* /*watched*/, QEvent* event) {
  const QEvent::Type type = event->type();
  if (type != QEvent::DragEnter && type != QEvent::Drop) return false;
  auto& drop = static_cast<QDropEvent&>(*event);
  drop.ignore();
  if (type == QEvent::DragEnter) Enter(drop);
  if (type == QEvent::Drop) Drop(drop);
  return true;
}

void FileDrop::Enter(QDropEvent& event) {
  const QList<QUrl> urls = event.mimeData()->urls();
  if (may_open_() && urls.size() == 1 && urls.front().isLocalFile()) event.acceptProposedAction();
}

void FileDrop::Drop(QDropEvent& event) {
  if (!may_open_()) return;
  event.acceptProposedAction();
  const std::string path = PathBytes(event.mimeData()->urls().front());
  // After the drop is over: a question must not keep the other program waiting.
  QTimer::singleShot(0, this, [this, path] {
    if (may_open_()) emit dropped(path);
  });
}

}  // namespace q40
