// The built-in help: the documents of the project in the window, with their links and pictures.
#include <QImage>
#include <QListWidget>
#include <QScrollBar>
#include <QSet>
#include <QTextBlock>

#include "app/help_window.h"
#include "gui/window_test.h"

namespace q40::test {
namespace {

class Help : public Window {
 protected:
  void SetUp() override {
    Start();
    Trigger("mnuHelpContents");
    browser_ = &Find<GuideBrowser>("txtHelp");
    ASSERT_TRUE(QTest::qWaitForWindowExposed(browser_->window()));
  }

  GuideBrowser* browser_ = nullptr;
};

TEST_F(Help, EveryLinkAndEveryPictureIsThere) {
  EXPECT_EQ(browser_->horizontalScrollBar()->maximum(), 0);
  QSet<QString> places;
  QSet<QString> links;
  QSet<QString> pictures;
  for (const QString document :
       {"guide.md", "clone-file.md", "csv.md", "protocol.md", "faults.md"}) {
    browser_->setSource(QUrl(document));
    places << document;
    for (const auto& heading : browser_->headings()) places << document + '#' + heading.anchor;
    for (QTextBlock block = browser_->document()->begin(); block.isValid(); block = block.next()) {
      for (auto at = block.begin(); !at.atEnd(); ++at) {
        const QTextCharFormat format = at.fragment().charFormat();
        const QString link = format.anchorHref();
        if (!link.isEmpty()) links << (link.startsWith('#') ? document + link : link);
        if (format.isImageFormat()) pictures << format.toImageFormat().name();
      }
    }
  }
  EXPECT_GT(links.size(), 40);
  EXPECT_GT(pictures.size(), 10);
  for (const QString& link : links - places) ADD_FAILURE() << link.toStdString();
  for (const QString& picture : pictures) {
    EXPECT_FALSE(QImage(":/docs/" + picture).isNull()) << picture.toStdString();
  }
}

TEST_F(Help, LinksAndContentsScroll) {
  const auto* bar = browser_->verticalScrollBar();
  browser_->setSource(QUrl("#names"));
  const int names = bar->value();
  auto& contents = Find<QListWidget>("lstContents");
  contents.setCurrentRow(0);
  EXPECT_LT(bar->value(), names);
  contents.setCurrentItem(contents.findItems("Names", Qt::MatchEndsWith).value(0));
  EXPECT_EQ(bar->value(), names);
}

}  // namespace
}  // namespace q40::test
