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
    Trigger(QStringLiteral("mnuHelpContents"));
    browser_ = &Find<GuideBrowser>(QStringLiteral("txtHelp"));
    ASSERT_TRUE(QTest::qWaitForWindowExposed(browser_->window()));
  }
  void Open(const QString& link) { browser_->setSource(QUrl(link)); }
  bool HasHeading(const char* anchor) {
    const auto& headings = browser_->headings();
    return std::any_of(headings.begin(), headings.end(),
                       [&](const auto& heading) { return heading.anchor == anchor; });
  }
  // Targets of the links, or sources of the pictures, of the document that is shown.
  QStringList Targets(bool pictures) {
    QStringList targets;
    for (QTextBlock block = browser_->document()->begin(); block.isValid(); block = block.next()) {
      for (auto at = block.begin(); !at.atEnd(); ++at) {
        const QTextCharFormat format = at.fragment().charFormat();
        const QString target = pictures ? format.toImageFormat().name() : format.anchorHref();
        if (!target.isEmpty()) targets << target;
      }
    }
    return targets;
  }

  GuideBrowser* browser_ = nullptr;
};

TEST_F(Help, ShowsTheGuideWithItsPictures) {
  EXPECT_TRUE(browser_->toPlainText().contains("usermod -aG dialout"));
  const QStringList pictures = Targets(true);
  EXPECT_GT(pictures.size(), 10);
  for (const QString& picture : pictures) {
    EXPECT_FALSE(QImage(":/docs/" + picture).isNull()) << picture.toStdString();
  }
  EXPECT_EQ(browser_->horizontalScrollBar()->maximum(), 0);
}

TEST_F(Help, EveryLinkLeadsSomewhere) {
  QSet<QString> places;
  QSet<QString> links;
  for (const char* document : {"guide.md", "clone-file.md", "csv.md", "protocol.md", "faults.md"}) {
    Open(document);
    places << document;
    for (const auto& heading : browser_->headings()) places << document + ('#' + heading.anchor);
    for (const QString& link : Targets(false)) {
      links << (link.startsWith('#') ? document + link : link);
    }
  }
  EXPECT_GT(links.size(), 40);
  for (const QString& link : links - places) ADD_FAILURE() << link.toStdString();
}

TEST_F(Help, LinksAndContentsScroll) {
  auto* bar = browser_->verticalScrollBar();
  EXPECT_EQ(bar->value(), 0);
  Open("#names");
  const int names = bar->value();
  EXPECT_GT(names, 0);
  Open("clone-file.md#settings");
  EXPECT_GT(bar->value(), 0);
  EXPECT_TRUE(HasHeading("auto-dialer"));
  browser_->backward();
  EXPECT_TRUE(HasHeading("the-service-page"));

  auto& contents = Find<QListWidget>(QStringLiteral("lstContents"));
  const auto found = contents.findItems("Names", Qt::MatchEndsWith);
  ASSERT_EQ(found.size(), 1);
  contents.setCurrentItem(contents.item(0));
  EXPECT_LT(bar->value(), 10);
  contents.setCurrentItem(found.front());
  EXPECT_EQ(bar->value(), names);
}

}  // namespace
}  // namespace q40::test
