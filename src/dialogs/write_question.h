// What a write would change in the radio, before it does.
#pragma once

#include <QDialog>

#include "dialogs/changes_view.h"

class QPushButton;

namespace q40 {

class WriteQuestion final : public QDialog {
  Q_OBJECT

 public:
  enum Answer : int { kCancel, kWrite, kReadFirst };

  explicit WriteQuestion(QWidget* owner);

  // `known`: what the radio holds. Otherwise there is no table, and the first answer is to read it.
  void Ask(bool known, std::vector<CellDifference> differences, const QString& about);

 private:
  ChangesView* view_;
  QPushButton* read_;
  QPushButton* write_;
};

}  // namespace q40
