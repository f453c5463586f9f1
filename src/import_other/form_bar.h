// How a foreign list is read: what was guessed, in boxes that overrule it.
#pragma once

#include <QWidget>

#include "lists/foreign_list.h"

class QComboBox;
class QHBoxLayout;

namespace q40 {

class FormBar final : public QWidget {
  Q_OBJECT

 public:
  explicit FormBar(QWidget* parent);

  // `read` is what the list was read with; null when it could not be.
  void Show(const ListForm& form, const ListForm* read);

 signals:
  void chosen(const q40::ListForm& form);

 private:
  QComboBox* AddBox(QHBoxLayout& layout, const char* name, const QString& caption);
  void Choose();

  QComboBox* separator_;
  QComboBox* encoding_;
  QComboBox* heading_;
};

}  // namespace q40
