// The windows that tell about places of the document: the check-up and the notes of the last import.
#pragma once

#include <QObject>

class QWidget;

namespace q40 {

class CheckUpWindow;
class ImportNotes;
class Session;
struct ImportReport;
struct Place;

class CheckUpCommand final : public QObject {
  Q_OBJECT

 public:
  // The windows belong to `owner`. Nothing is made before it is needed.
  CheckUpCommand(Session& session, QWidget& owner);

  void Show();
  void CheckAgain();

  // Keeps the notes of an import, if there are any, until other data comes.
  void KeepNotes(const QString& account, const ImportReport& report);
  void ForgetNotes();
  void ShowNotes();

 signals:
  void opened(QWidget& window);  // to be shown
  void checkRequested();
  void placeChosen(const q40::Place& place);
  void notesKept(bool kept);

 private:
  void CheckNewData();

  Session& session_;
  QWidget& owner_;
  CheckUpWindow* checkup_ = nullptr;
  ImportNotes* notes_ = nullptr;
};

}  // namespace q40
