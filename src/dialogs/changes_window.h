// What differs between what is loaded and another state of it. Stays open beside the main window.
#pragma once

#include <QStringList>
#include <QWidget>

#include "checkup/finding.h"
#include "dialogs/changes_view.h"
#include "dialogs/place_list.h"

class QComboBox;
class QLabel;
class QPushButton;
class QTableWidget;

namespace q40 {

class ChangesWindow final : public QWidget {
  Q_OBJECT

 public:
  explicit ChangesWindow(QWidget* owner);

  [[nodiscard]] ChangesView& view() { return *view_; }
  // What can be compared with, and which of it is. Reports nothing.
  void SetAgainst(const QStringList& names, int chosen);
  // What an import did not take as it was written; nothing takes the list away.
  void ShowNotes(const QString& account, const std::vector<PlaceList::Row>& rows);
  void SetLocked(bool locked);

 signals:
  void againstChosen(int index);
  void takeBackRequested();
  void placeChosen(const q40::Place& place);

 private:
  QWidget* MakeNotes();
  void ChooseNote();
  void ShowTakeBack();

  QComboBox* against_;
  ChangesView* view_;
  QLabel* account_;
  QTableWidget* note_table_;
  QWidget* notes_;  // with these two
  std::vector<std::optional<Place>> note_places_;
  QPushButton* take_back_;
  bool locked_ = false;
};

}  // namespace q40
