// Undo and Redo in the window: what makes a step, what it is called, where it leads.
#include <QAction>

#include "document/memory_edit.h"
#include "files/channel_csv.h"
#include "gui/window_test.h"
#include "sim/demo_radio.h"

namespace q40::test {
namespace {

class UndoTest : public Window {
 protected:
  QString Caption(const char* entry = "mnuUndo") {
    auto& action = Find<QAction>(QLatin1String(entry));
    EXPECT_EQ(action.isEnabled(), action.text().size() > 6);
    return action.text().mid(6).replace("&&", "&");
  }
  void Key(Qt::Key key, Qt::KeyboardModifiers modifiers) {
    Activate(*window_);
    QWidget* focus = window_->focusWidget();
    QTest::keyClick(focus != nullptr ? focus : window_.get(), key, modifiers);
  }
  void Confirm() {
    answers_.Add([](QWidget& box) {
      QTest::mouseClick(static_cast<QMessageBox&>(box).button(kOk), Qt::LeftButton);
    });
  }
  void Drag(const char* slider, int to) {
    auto& dragged = Find<QSlider>(QLatin1String(slider));
    dragged.setSliderDown(true);
    for (int at = 1; at <= to; ++at) dragged.setValue(at);
    dragged.setSliderDown(false);
  }
  QString State() {
    return Title() + '|' + QString::fromStdString(Flags()) + '|' +
           Find<QLabel>(QStringLiteral("lblStatusFile")).text();
  }
};

TEST_F(UndoTest, EveryActionIsOneStepThatShowsItsPlace) {
  Start({}, SavedDemo());
  const QString list = File("club & co.csv");
  CloneImage image = DemoDocument().image;
  InsertMemoryChannel(image, 0);
  Store(list.toStdString(), ExportChannels(image));
  SavedDemo("other.Q40");
  const struct {
    const char* name;
    std::function<void()> act;
    int tab;  // from 1, that an undo shows; 0: stays
    int row;
    const char* control = "";
  } steps[] = {
      {"Insert channel 2",
       [&] {
         ShowTab(3);
         SelectRow(kMemoryGrid, 3);
         Click("cmbInsert");
       },
       3, 3},
      {"Delete channel 4",
       [&] {
         SelectRow(kMemoryGrid, 5);
         Confirm();
         Click("cmbDelete");
       },
       3, 5},
      {"Clear channel 0",
       [&] {
         SelectRow(kMemoryGrid, 1);
         Confirm();
         Click("cmbClear");
       },
       3, 1},
      {"Edit channel D9", [&] { Edit(kMemoryGrid, 210, [] {}); }, 3, 210},
      {"Edit VHF PH", [&] { Edit(kSpecialGrid, 4, [&] { Click("optATT_2"); }); }, 1, 4},
      {"Clear VHF PH",
       [&] {
         Confirm();
         Click("cmdClear");
       },
       1, 4},
      {"Beep", [&] { Press("chkBeep", Qt::Key_Space); }, 1, 0, "chkBeep"},
      {"Volume", [&] { Drag("Slider1", 5); }, 1, 0, "Slider1"},
      {"Volume", [&] { Drag("Slider1", 3); }, 1, 0, "Slider1"},
      {"Auto dialer M3",
       [&] {
         ShowTab(2);
         Find("txtDial_2").setFocus();
         QTest::keyClicks(window_->focusWidget(), "123");
         Find("cmbDFirst").setFocus();
       },
       2, 0, "txtDial_2"},
      {"Import of club & co.csv",
       [&] {
         Save(kNo);
         answers_.File(list);
         Trigger("mnuImport");
       },
       3, 2},
      {"Read Memory", [&] { Trigger("mnuReMem"); }, 3, 1},
      {"Read Settings", [&] { Trigger("mnuReSet"); }, 1, 0},
      {"New",
       [&] {
         Save(kNo);
         Trigger("mnuFileNew");
       },
       0, 0},
      {"Model RX-Q40T1",
       [&] {
         ShowTab(1);
         Click("opbModel_2");
       },
       0, 0},
      {"Open other.Q40",
       [&] {
         answers_.File(File("other.Q40"));
         Trigger("mnuFileOpen");
       },
       0, 0},
      {"Clear All",
       [&] {
         ShowTab(3);
         Confirm();
         Click("cmbClAll");
       },
       3, 1},
  };
  EXPECT_EQ(Caption(), "");
  std::vector<std::pair<QString, CloneData>> states;
  for (const auto& step : steps) {
    SCOPED_TRACE(step.name);
    states.emplace_back(State(), document());
    step.act();
    EXPECT_EQ(Caption(), QLatin1String(step.name));
    EXPECT_EQ(Caption("mnuRedo"), "");
  }
  states.emplace_back(State(), document());
  for (std::size_t n = std::size(steps); n-- > 0;) {
    SCOPED_TRACE(steps[n].name);
    ShowTab(steps[n].tab == 1 ? 3 : 1);
    Key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(State(), states[n].first);
    EXPECT_TRUE(document() == states[n].second);
    EXPECT_EQ(Status(), QStringLiteral("Undone: %1.").arg(steps[n].name));
    EXPECT_EQ(Tab(), steps[n].tab > 0 ? steps[n].tab : 1);
    if (steps[n].row > 0) {
      EXPECT_EQ(CurrentRow(steps[n].tab == 3 ? kMemoryGrid : kSpecialGrid), steps[n].row);
    }
    const QString focus =
        window_->focusWidget() != nullptr ? window_->focusWidget()->objectName() : "";
    EXPECT_TRUE(*steps[n].control == 0 || focus == steps[n].control) << focus.toStdString();
    for (const auto& mirror : mirrors_) EXPECT_EQ(mirror->Stale(), QStringList());
  }
  EXPECT_EQ(Caption(), "");
  EXPECT_EQ(Level("Slider1"), document().settings.Slider1);
  for (std::size_t n = 0; n < std::size(steps); ++n) {
    SCOPED_TRACE(steps[n].name);
    EXPECT_EQ(Caption("mnuRedo"), QLatin1String(steps[n].name));
    Key(n % 2 == 0 ? Qt::Key_Y : Qt::Key_Z,
        n % 2 == 0 ? Qt::ControlModifier : Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(State(), states[n + 1].first);
    EXPECT_TRUE(document() == states[n + 1].second);
  }
}

TEST_F(UndoTest, TheSavedStateIsUnchangedAndABandIsNoStep) {
  Start({}, SavedDemo());
  Press("chkBeep", Qt::Key_Space);
  Click("optBand_1");
  EXPECT_EQ(Caption(), "Beep");
  Trigger("mnuFileSave");
  Press("chkAPO", Qt::Key_Space);
  Trigger("mnuUndo");
  EXPECT_EQ(Flags(), "--");
  EXPECT_EQ(document().image.ShownBand, Band::kUhf);
  Trigger("mnuUndo");
  EXPECT_EQ(Flags(), "SM");
  EXPECT_EQ(document().image.ShownBand, Band::kVhf);
  EXPECT_TRUE(Checked("optBand_0"));
  EXPECT_EQ(Cell(kSpecialGrid, 1, 1), "145.0000");
  Trigger("mnuRedo");
  EXPECT_EQ(Flags(), "--");
  EXPECT_TRUE(Checked("optBand_1"));
  // A write is no step, although it rebuilds the settings lines.
  Trigger("mnuWrSet");
  EXPECT_EQ(Caption("mnuRedo"), "Auto Power Off");
}

// What is typed is the box's until it is left; and the 1 that "St" gets then belongs to the visit.
TEST_F(UndoTest, ABoxTakesItsOwnTypingBack) {
  Start();
  ShowTab(2);
  auto& box = Find<QLineEdit>(QStringLiteral("txtDial_0"));
  box.setFocus();
  QTest::keyClicks(&box, "12");
  Find("txtDial_1").setFocus();
  EXPECT_EQ(Caption(), "Auto dialer M1");
  EXPECT_EQ(document().dial[9], "1");
  box.setFocus();
  QTest::keyClicks(&box, "34");
  Key(Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(box.text(), "12");
  EXPECT_FALSE(box.isUndoAvailable());
  QTest::keyClicks(&box, "5");
  Find("txtDial_1").setFocus();
  box.setFocus();
  Key(Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(box.text(), "12");
  Key(Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(document().dial, DialTexts());
  EXPECT_EQ(Caption("mnuRedo"), "Auto dialer M1");
}

// Of a radio that falls silent: what was there before comes back, and with it what the bar says of it.
TEST_F(UndoTest, ABrokenReadIsAStep) {
  Start({"silence@0260"}, SavedDemo());
  const QString before = State();
  const CloneData data = document();
  Error("Communication Error");
  Trigger("mnuReAll");
  EXPECT_EQ(Caption(), "Read All");
  EXPECT_TRUE(State().endsWith("part of a radio"));
  Trigger("mnuUndo");
  EXPECT_EQ(State(), before);
  EXPECT_TRUE(document() == data);
  Trigger("mnuRedo");
  EXPECT_TRUE(State().endsWith("part of a radio"));
}

}  // namespace
}  // namespace q40::test
