// The service page: raw blocks of the radio's memory. No tab shows it.
#pragma once

#include <QWidget>

class QLineEdit;
class QPlainTextEdit;
class QPushButton;

namespace q40 {

class ServicePage : public QWidget {
  Q_OBJECT

 public:
  explicit ServicePage(QWidget* parent);

  // The text of Text2.
  void ShowReply(const QString& reply);
  void AppendReply(const QString& text);

  // The button that is running is disabled until it is done.
  void SetReading(bool reading);
  void SetDumping(bool dumping);

 signals:
  // Four address digits as typed; nothing checks them.
  void readRequested(const QString& digits);
  void dumpRequested();

 private:
  QPushButton* AddButton(const char* name, const char* caption);

  QLineEdit* address_;
  QPlainTextEdit* replies_;
  QPushButton* read_;
  QPushButton* dump_;
};

}  // namespace q40
