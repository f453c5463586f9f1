// The channel card of the window.
#include <QCheckBox>
#include <QPrintDialog>
#include <QScreen>

#include "gui/window_test.h"

namespace q40::test {
namespace {

class Card : public Window {
 protected:
  // The next time that the dialog shows, it looks so; ticks boxes, presses a button.
  void Dialog(const QString& account, const std::vector<const char*>& ticked, const char* button) {
    answers_.Add([=](QWidget& dialog) {
      ASSERT_EQ(dialog.objectName(), "dlgCard");
      const auto* label = dialog.findChild<QLabel*>("lblCard");
      EXPECT_TRUE(label->text().startsWith(account)) << label->text().toStdString();
      EXPECT_FALSE(dialog.findChild<QLabel*>("imgCard")->pixmap().isNull());
      EXPECT_LT(dialog.sizeHint().height(), dialog.screen()->availableGeometry().height());
      for (const char* name : {"cmdSaveCard", "cmdPrintCard"}) {
        EXPECT_EQ(dialog.findChild<QAbstractButton*>(name)->isEnabled(),
                  label->text().contains("letters"));
      }
      for (const char* name : ticked) dialog.findChild<QCheckBox*>(name)->click();
      QTest::keyClick(dialog.findChild<QAbstractButton*>(button), Qt::Key_Space);
    });
  }
};

TEST_F(Card, IsSavedAsItWasAskedFor) {
  Start({}, SavedDemo());
  Dialog("1 sheet, 2 columns, ", {"chkPocket"}, "cmdSaveCard");
  answers_.File("");
  Dialog("1 sheet, 1 page of a booklet, ", {}, "cmdSaveCard");
  answers_.File(File("demo.Q40"));
  answers_.Box("Channel Card", "demo.Q40 already exists.\nDo you want to replace it?", kYes);
  Error((folder_ / "demo.Q40 is a clone file.\nName another file for the channel card.").c_str());
  answers_.File(File("card"));
  Trigger("mnuCard");
  const std::string pdf = Content(folder_ / "card.pdf");
  EXPECT_TRUE(pdf.starts_with("%PDF-"));
  EXPECT_NE(pdf.find("/MediaBox [0 0 842.000000 595.000000]"), std::string::npos);
  EXPECT_EQ(Status(), "The channel card is in " + File("card.pdf") + '.');
  EXPECT_EQ(Flags(), "--");
  EXPECT_EQ(Title(), kPlainTitle + " - demo.Q40");

  // The choice is remembered; a printer's dialog that was left leads back.
  Dialog("1 sheet, 1 page of a booklet, ", {"chkPocket"}, "cmdPrintCard");
  answers_.Add([](QWidget& dialog) {
    ASSERT_NE(qobject_cast<QPrintDialog*>(&dialog), nullptr);
    static_cast<QDialog&>(dialog).reject();
  });
  Dialog("1 sheet, 2 columns, ", {}, "CancelButton");
  Trigger("mnuCard");
}

TEST_F(Card, NothingIsMadeOfNoChannel) {
  Start();
  Dialog("No channel is in use.", {"chkSpecial"}, "cmdSaveCard");
  answers_.File(File("special.pdf"));
  const QFont usual = QApplication::font();
  QApplication::setFont(QFont(usual.family(), 44));
  Trigger("mnuCard");
  QApplication::setFont(usual);
  EXPECT_TRUE(Content(folder_ / "special.pdf").starts_with("%PDF-"));
}

}  // namespace
}  // namespace q40::test
