// A window with sentences about places of the document, one a row. Stays open beside the main window.
#pragma once

#include <optional>
#include <vector>

#include <QStringList>
#include <QWidget>

#include "checkup/finding.h"

class QHBoxLayout;
class QLabel;
class QPushButton;
class QTableWidget;

namespace q40 {

class PlaceList : public QWidget {
  Q_OBJECT

 public:
  struct Row {
    QStringList cells;           // one for each heading
    std::optional<Place> place;  // where the row leads to
  };

  // Shows rows in place of the previous ones. The current row stays current if it still exists.
  void ShowRows(const QString& summary, const std::vector<Row>& rows);

 signals:
  // Double click, or the Enter key, on a row that leads to a place.
  void placeChosen(const q40::Place& place);
  // Double click, or the Enter key, on one that does not.
  void rowChosen(int row);

 protected:
  // Names of the objects, for the style and for tests.
  struct Names {
    const char* window;
    const char* summary;
    const char* table;
    const char* close;
  };
  // The last column takes the room that the others leave.
  PlaceList(const Names& names, const QString& title, const QStringList& headings, QWidget* owner);

  [[nodiscard]] QTableWidget& table() const { return *table_; }
  // Adds a button before the existing ones.
  QPushButton* AddButton(const char* name, const QString& caption);
  // "Channel 3": with a capital, as a place stands at the start of a line here.
  static QString PlaceTitle(const Place& place);

 private:
  QTableWidget* MakeTable(const char* name, const QString& title, const QStringList& headings);
  void Choose();

  QLabel* summary_;
  QTableWidget* table_;
  QHBoxLayout* buttons_;
  std::vector<std::optional<Place>> places_;
};

}  // namespace q40
