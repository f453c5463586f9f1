// The built-in help.
#pragma once

#include <QWidget>

namespace q40 {

class HelpWindow : public QWidget {
  Q_OBJECT

 public:
  explicit HelpWindow(QWidget* owner);
};

}  // namespace q40
