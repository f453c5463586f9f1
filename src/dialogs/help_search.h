// The find box of the help.
#pragma once

#include <QTextDocument>
#include <QWidget>

class QLabel;
class QLineEdit;

namespace q40 {

class GuideBrowser;

// Finds a text in the document that is shown and, after its last place there, in the others, round
// and round. Ctrl+F goes to the box, F3 and Shift+F3 to the next and the previous place.
class HelpSearch final : public QWidget {
  Q_OBJECT

 public:
  // The keys work in the whole window of `parent`.
  HelpSearch(GuideBrowser& browser, QWidget* parent);

 private:
  void Find(QTextDocument::FindFlags direction);
  bool FindFromEdge(const QString& document, QTextDocument::FindFlags direction);

  GuideBrowser& browser_;
  QLineEdit* text_;
  QLabel* outcome_;
};

}  // namespace q40
