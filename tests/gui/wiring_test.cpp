// Which control does what: commands on the wire, enabling, and captions that follow the data.
#include "gui/window_test.h"

namespace q40::test {
namespace {

using Wiring = Window;

constexpr const char* kReadSettings = "who, 17 reads 0020 to 1D80, end";
constexpr const char* kReadMemory = "who, 210 reads 0200 to 1C20, end";
constexpr const char* kWriteSettings = "RXQ40, who, 17 writes 0020 to 1D80, end";
constexpr const char* kWriteMemory = "RXQ40, who, 210 writes 0200 to 1C20, end";
const std::string kReadAll = std::string(kReadSettings) + ", " + kReadMemory;
const std::string kWriteAll = std::string(kWriteSettings) + ", " + kWriteMemory;

TEST_F(Wiring, EveryButtonEntryAndKeySendsItsCommands) {
  const struct {
    std::vector<const char*> ways;  // buttons, and the keys of menu entries
    std::string commands;
    int tab;  // that a menu entry brings to the front
  } cases[] = {{{"cmdAuto"}, "who", 0},
               {{"cmbRxData1", "cmbRxData2", "F5"}, kReadSettings, 1},
               {{"cmbRxData", "F6"}, kReadMemory, 3},
               {{"F7"}, kReadAll, 3},
               {{"cmbTxData1", "cmbTxData2", "Shift+F5"}, kWriteSettings, 1},
               {{"cmbTxData", "Shift+F6"}, kWriteMemory, 3},
               {{"Shift+F7"}, kWriteAll, 3}};
  Start({}, SavedDemo());
  for (const auto& c : cases) {
    for (const char* const name : c.ways) {
      const QString way = QString::fromUtf8(name);
      if (auto* button = window_->findChild<QAbstractButton*>(way)) {
        for (int tab = 1; tab <= 3 && !button->isVisible(); ++tab) ShowTab(tab);
        Click(way);
      } else {
        ShowTab(c.tab == 3 ? 1 : 3);
        const QKeyCombination key = QKeySequence(way)[0];  // of a menu entry
        QTest::keyClick(window_.get(), key.key(), key.keyboardModifiers());
        EXPECT_EQ(Tab(), c.tab) << name;
      }
      EXPECT_EQ(TakeHeard(), c.commands) << name;
      SetFlags(false, false);
    }
  }
  // All of it was written just now; then one channel is another one. The page in front stays.
  QTest::keyClick(window_.get(), Qt::Key_F7, Qt::ControlModifier);
  EXPECT_EQ(TakeHeard(), "");
  Edit(kMemoryGrid, 1, [&] { Find<QLineEdit>("txtName").setText("NEW"); });
  SetFlags(false, false);
  Activate(*window_);
  QTest::keyClick(window_.get(), Qt::Key_F7, Qt::ControlModifier);
  EXPECT_EQ(TakeHeard(),
            "who, 1 reads 0200 to 0200, end, RXQ40, who, 1 writes 0200 to 0200, end, "
            "who, 1 reads 0200 to 0200, end");
}

// The mirrors of both grids are compared with the data when the test ends; here they see each kind of
// change once while the row in question is shown.
TEST_F(Wiring, EachChangeOfAChannelIsPaintedAtOnce) {
  Start({}, SavedDemo());
  ShowTab(3);
  SelectRow(kMemoryGrid, 1);
  const QString first = Cell(kMemoryGrid, 1, 1);
  Click("cmbInsert");
  EXPECT_EQ(Cell(kMemoryGrid, 2, 1), first);
  answers_.Add([](QWidget& box) { QTest::keyClick(&box, Qt::Key_Escape); });
  Click("cmbDelete");
  EXPECT_EQ(Cell(kMemoryGrid, 1, 1), "");
  const struct {
    const char* button;
    const char* title;
  } questions[] = {{"cmbDelete", "DELETE OK"}, {"cmbClear", "CLEAR OK"}, {"cmbClAll", "CLEAR OK"}};
  for (const auto& question : questions) {
    EXPECT_TRUE(mirrors_[0]->Stale().isEmpty());
    answers_.Add([&](QWidget& dialog) {
      auto& box = static_cast<QMessageBox&>(dialog);
      EXPECT_EQ(box.windowTitle(), question.title);
      QTest::mouseClick(box.button(kOk), Qt::LeftButton);
    });
    Click(question.button);
    EXPECT_EQ(TakeHeard(), "");
  }
  for (int row = 1; row <= 210; ++row) EXPECT_EQ(Cell(kMemoryGrid, row, 1), "") << row;
}

// The button of the special channels says which limit it empties, and empties that one.
TEST_F(Wiring, TheClearButtonFollowsTheRow) {
  const struct {
    int row;
    const char* caption;  // empty: no button
  } rows[] = {{1, ""}, {2, ""}, {3, ""}, {4, "Clear PH"}, {5, "Clear PL"}};
  Start();
  for (const int row : {4, 5}) Edit(kSpecialGrid, row, [] {});
  for (const auto& r : rows) {
    SelectRow(kSpecialGrid, r.row);
    const auto& button = Find<QAbstractButton>("cmdClear");
    EXPECT_EQ(button.isVisible() ? button.text() : QString(), r.caption) << r.row;
    if (!button.isVisible()) continue;
    EXPECT_NE(Cell(kSpecialGrid, r.row, 1), "") << r.row;
    answers_.Box("CLEAR OK", "Are you sure that you want to do the clear?\nClear cannot be undone.",
                 kOk);
    Click("cmdClear");
    EXPECT_EQ(Cell(kSpecialGrid, r.row, 1), "") << r.row;
  }
}

TEST_F(Wiring, EachClickOnABandShowsItsChannels) {
  Start();
  for (const auto& [option, frequency] :
       {std::pair{"optBand_1", "445.0000"}, std::pair{"optBand_0", "145.0000"}}) {
    Click(option);
    EXPECT_EQ(Cell(kSpecialGrid, 1, 1), frequency);
    EXPECT_TRUE(mirrors_[1]->Stale().isEmpty());
    EXPECT_EQ(Flags(), "--");
  }
}

}  // namespace
}  // namespace q40::test
