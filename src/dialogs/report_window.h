// Reports at length: what a write did to the radio, how two clones differ. Stays open beside the main
// window.
#pragma once

#include <QDialog>

class QLabel;
class QPlainTextEdit;
class QPushButton;

namespace q40 {

class ReportWindow final : public QDialog {
  Q_OBJECT

 public:
  // `name`: of the object.
  ReportWindow(const char* name, const QString& title, QWidget* parent);

  // `summary` in sentences, `lines` one thing each; without lines the list is hidden.
  void Tell(const QString& summary, const QStringList& lines);
  // Buttons that go on with a write that broke off, or let it go.
  void OfferRest(bool offered);

 signals:
  void restWanted();
  void forgetWanted();

 private:
  QLabel* summary_;
  QPlainTextEdit* list_;
  QPushButton* rest_ = nullptr;
  QPushButton* forget_ = nullptr;
  QPushButton* close_ = nullptr;
};

}  // namespace q40
