// Reports at length what a write did to the radio. Stays open beside the main window.
#pragma once

#include <QDialog>

class QLabel;
class QPlainTextEdit;
class QPushButton;

namespace q40 {

class ReportWindow final : public QDialog {
  Q_OBJECT

 public:
  explicit ReportWindow(QWidget* parent);

  // `summary` in sentences, `lines` one thing each; without lines the list is hidden.
  void Tell(const QString& summary, const QStringList& lines);

 private:
  QLabel* summary_;
  QPlainTextEdit* list_;
  QPushButton* close_ = nullptr;
};

}  // namespace q40
