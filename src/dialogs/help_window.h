// The built-in help: the documents of the project, compiled into the program.
#pragma once

#include <functional>

#include <QTextBrowser>
#include <QWidget>

class QListWidget;

namespace q40 {

// Shows a document of the resources. Links lead to headings ("#files") and to other documents
// ("csv.md#rules"); pictures are made to fit the text. A click on a link to the outside opens the
// user's browser.
class GuideBrowser : public QTextBrowser {
  Q_OBJECT

 public:
  explicit GuideBrowser(QWidget* parent);

  struct Heading {
    int level = 1;
    QString text;
    QString anchor;  // as in links: "what-the-radio-keeps"
  };
  [[nodiscard]] const QList<Heading>& headings() const { return headings_; }

 signals:
  void documentChanged();  // another document is shown: headings() are new

 protected:
  void doSetSource(const QUrl& target, QTextDocument::ResourceType type) override;
  QVariant loadResource(int type, const QUrl& name) override;

 private:
  void Load(const std::function<void()>& load);
  void Changed(const QUrl& url);
  void CollectHeadings();

  QString shown_;  // path of the document whose headings are known
  QList<Heading> headings_;
};

// Nothing is loaded before the window is made, which is when the user first asks for help.
class HelpWindow : public QWidget {
  Q_OBJECT

 public:
  explicit HelpWindow(QWidget* owner);

  // Shows a section of the guide by the anchor of its heading. An empty anchor means the start.
  void ShowSection(const QString& anchor);

 private:
  void FillContents();

  GuideBrowser* browser_;
  QListWidget* contents_;
};

}  // namespace q40
