// Marks on the pages what differs from the file as it was last opened or saved.
#pragma once

#include <vector>

#include <QObject>

#include "document/document_cells.h"

class QAction;
class QTimer;
class QWidget;

namespace q40 {

class KnownStates;
class MainPages;
class Session;

class ChangeMarks final : public QObject {
  Q_OBJECT

 public:
  // All must outlive it. The entry of the menu View, which `window` has, switches the marks.
  ChangeMarks(Session& session, const MainPages& pages, const KnownStates& states, QWidget& window);

 private:
  void Ask();
  void Mark();
  void MarkRows(const std::vector<CellDifference>& differences);
  void MarkControls(const std::vector<CellDifference>& differences);

  Session& session_;
  const MainPages& pages_;
  const KnownStates& states_;
  QAction* entry_;
  QTimer* mark_;
  // One for each setting, then one for each dialer memory.
  std::vector<QWidget*> controls_;
  bool marked_ = false;
};

}  // namespace q40
