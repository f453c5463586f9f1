// The built-in help: the documents of the project in the window, with their links and pictures.
#include <QImage>
#include <QListWidget>
#include <QScrollBar>
#include <QSet>
#include <QTextBlock>
#include <QWindow>

#include "dialogs/help_window.h"
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
       {"guide.md", "clone-file.md", "csv.md", "protocol.md", "faults.md", "json.md", "lists.md"}) {
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

TEST_F(Help, F1ExplainsWhatIsInFront) {
  const auto section = [&] { return browser_->source().fragment(); };
  browser_->window()->close();
  const char* const pages[] = {"the-page-settings-1", "the-page-settings-2", "the-page-memory"};
  for (int tab = 1; tab <= 3; ++tab) {
    ShowTab(tab);
    Trigger("mnuHelpContents");
    EXPECT_EQ(section(), pages[tab - 1]);
  }
  Trigger("mnuCheckUp");
  Press("tblFindings", Qt::Key_F1);
  EXPECT_EQ(section(), "check-up");
  // A dialog keeps the user from all windows but the help, and may be closed before it.
  SetFlags(true, false);
  const struct {
    const char* command;
    const char* section;
  } dialogs[] = {{"mnuEditUndo", "editing-a-channel"},
                 {"mnuToolsOptions", "connecting-the-radio"},
                 {"mnuFileNew", "what-is-asked-and-what-is-not"},
                 {"mnuFileSaveAs", "files"},
                 {"cmbDelete", "the-page-memory"}};
  for (const auto& d : dialogs) {
    answers_.Add([&](QWidget& dialog) {
      QTest::keyClick(&dialog, Qt::Key_F1);
      EXPECT_EQ(section(), d.section);
      QTest::keyClick(browser_->window()->windowHandle(), Qt::Key_F1);
      EXPECT_EQ(section(), "keyboard");
      dialog.close();
    });
    Trigger(d.command);
  }
  for (const char* heading : {"editing-a-channel", "names", "connecting-the-radio", "check-up",
                              "backing-up-and-verifying", "files", "keyboard", "the-service-page",
                              "what-is-asked-and-what-is-not", "when-it-does-not-work"}) {
    const auto& headings = browser_->headings();
    EXPECT_TRUE(std::any_of(headings.begin(), headings.end(), [&](const auto& h) {
      return h.anchor == heading;
    })) << heading;
  }
}

TEST_F(Help, CanBeSearched) {
  auto& box = Find<QLineEdit>("txtFind");
  const auto found = [&] {
    return browser_->source().fileName() + ": " + browser_->textCursor().selectedText();
  };
  const struct {
    const char* text;
    Qt::Key key;
    const char* found;
    const char* outcome;
  } cases[] = {{"D9 FALLS off", Qt::Key_Return, "guide.md: D9 falls off", ""},
               {nullptr, Qt::Key_F3, "guide.md: D9 falls off", "Gone round"},
               {"no such words", Qt::Key_F3, "guide.md: D9 falls off", "Not found"},
               {"KX~WHO", Qt::Key_F3, "protocol.md: KX~WHO", ""}};
  for (const auto& c : cases) {
    if (c.text != nullptr) {
      box.clear();
      QTest::keyClicks(&box, c.text);
    }
    QTest::keyClick(&box, c.key);
    EXPECT_EQ(found(), c.found);
    EXPECT_EQ(Find<QLabel>("lblFound").text(), c.outcome);
  }
  const int first = browser_->textCursor().position();
  QTest::keyClick(&box, Qt::Key_F3);
  EXPECT_NE(browser_->textCursor().position(), first);
  QTest::keyClick(&box, Qt::Key_F3, Qt::ShiftModifier);
  EXPECT_EQ(browser_->textCursor().position(), first);
}

}  // namespace
}  // namespace q40::test
