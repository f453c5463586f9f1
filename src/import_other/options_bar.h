// Where the rows of a foreign list go, and which are left out.
#pragma once

#include <QWidget>

#include "lists/import_plan.h"

class QCheckBox;
class QComboBox;

namespace q40 {

class OptionsBar final : public QWidget {
  Q_OBJECT

 public:
  // Named are the channels that are in use, and the model whose bands count.
  OptionsBar(const CloneData& document, const PlanOptions& options, QWidget* parent);

 signals:
  void chosen(const q40::PlanOptions& options);

 private:
  QCheckBox* AddCheck(const char* name, const QString& caption, bool checked);
  void Choose();

  QComboBox* first_;
  QCheckBox* replace_;
  QCheckBox* only_fm_;
  QCheckBox* only_own_;
};

}  // namespace q40
