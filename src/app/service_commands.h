// Reads of raw blocks for the service page.
#pragma once

#include <QObject>

namespace q40 {

class Session;

class ServiceCommands final : public QObject {
  Q_OBJECT

 public:
  // The session must outlive it.
  explicit ServiceCommands(Session& session, QObject* parent = nullptr)
      : QObject(parent), session_(session) {}

  // The digits of an address, as they were typed. Nothing while another command runs.
  void ReadBlock(const QString& digits);
  void Dump();

 signals:
  void readingChanged(bool reading);
  void dumpingChanged(bool dumping);
  // The whole text of the page; a text more at its end.
  void replied(const QString& text);
  void dumped(const QString& text);

 private:
  Session& session_;
};

}  // namespace q40
