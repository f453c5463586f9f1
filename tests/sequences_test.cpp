#include "link/sequences.h"

#include "document/defaults.h"
#include "radio/channel_codec.h"
#include "radio/settings_codec.h"
#include "support/random_document.h"
#include "support/scripted_radio.h"

namespace q40 {
namespace {

using test::milliseconds;
using test::Radio;
using test::SetChanged;

// Addresses in the order in which they go over the wire, written out by hand.
const std::vector<std::string> kSettingsOrder = {"0020", "0040", "00C0", "0180", "01A0", "0120",
                                                 "0100", "00E0", "01C0", "01E0", "0160", "0140",
                                                 "1D00", "1D20", "1D40", "1D60", "1D80"};

std::vector<std::string> MemoryOrder() {
  std::vector<std::string> order;
  for (int n = 0; n < 210; ++n) {
    char text[5];
    std::snprintf(text, sizeof text, "%04X", 0x200 + 0x20 * n);
    order.emplace_back(text);
  }
  return order;
}

std::vector<std::string> ReadCommands(const std::vector<std::string>& addresses) {
  std::vector<std::string> all = {"KX~WHO\r\n"};
  for (const std::string& address : addresses) all.push_back("KX~F" + address + "R\r\n");
  all.emplace_back("KX~E\r\n\n");
  return all;
}

TEST(ReadSettings, SendsExactlyItsCommandsWithTheirPauses) {
  Radio radio;
  EXPECT_EQ(radio.sequences.ReadSettings().outcome, Outcome::kDone);
  EXPECT_EQ(radio.Sent(), ReadCommands(kSettingsOrder));
  std::vector<long> pauses(18, 10);
  pauses[0] = 0;  // none between the identification and the first unit
  EXPECT_EQ(radio.Pauses(), pauses);
}

TEST(ReadMemory, SendsExactlyItsCommandsWithoutPauses) {
  Radio radio;
  EXPECT_EQ(radio.sequences.ReadMemory().outcome, Outcome::kDone);
  EXPECT_EQ(radio.Sent(), ReadCommands(MemoryOrder()));
  std::vector<long> pauses(211, 0);
  pauses[210] = 10;  // before the End command
  EXPECT_EQ(radio.Pauses(), pauses);
  ASSERT_EQ(radio.host.progress.size(), 210U);
  for (int n = 0; n < 210; ++n) EXPECT_EQ(radio.host.progress[static_cast<std::size_t>(n)], n);
  EXPECT_EQ(radio.host.shown.front(), 0);
  EXPECT_EQ(radio.host.shown.back(), 209);
}

TEST(ReadSettings, PutsEverythingInItsPlace) {
  Radio radio;
  radio.identity = "RXQ40x1Az";
  radio.data = {{"0020", "A500010000140700030405020600010101010100030000004002000009000001"},
                {"0040", "AA" + std::string(30, '0') + "77" + std::string(30, '0')},
                {"0180", "80000002014600000000600008080000" + std::string(32, '0')},
                {"0100", "00000002014400000000600008080000" + std::string(32, '0')},
                {"01C0", "80000002043300000000600008080000" + std::string(32, '0')},
                {"1D60", "313233" + std::string(26, '0') + "4142433F" + std::string(24, '0')}};
  EXPECT_EQ(radio.sequences.ReadSettings().outcome, Outcome::kDone);
  const CloneImage& image = radio.held.image;
  EXPECT_EQ(radio.held.model, 1);
  EXPECT_TRUE(image.VersionA);
  EXPECT_EQ(radio.held.settings.Slider1, 20);
  EXPECT_EQ(image.SettingsLine[1], "01010100030000004002000009000001");
  EXPECT_EQ(image.SettingsLine[3].substr(0, 4), "7700");
  EXPECT_EQ(image.VhfSpecialSet[1].cellText[0], "146.0000");
  EXPECT_EQ(image.UhfSpecialSet[1].cellText[0], "433.0000");
  EXPECT_EQ(StoredPresent(image, Band::kVhf), (PresentPair{false, true}));
  EXPECT_EQ(image.ShownSpecialSet, image.VhfSpecialSet);
  EXPECT_EQ(image.ShownPresent, (PresentPair{false, true}));
  EXPECT_EQ(radio.held.dial[6], "123");
  EXPECT_EQ(radio.held.dial[7], "#");
  EXPECT_TRUE(radio.document.SettingsChanged());
  EXPECT_FALSE(radio.document.MemoryChanged());
}

// Answers to KX~WHO and what becomes of them.
TEST(Identify, Replies) {
  // model: afterwards; 0 before
  // version_a: afterwards; set before
  const std::tuple<const char*, Outcome, int, bool> cases[] = {
      {"RXQ40x0Ax", Outcome::kDone, 0, true},
      {"RXQ40x1Ax", Outcome::kDone, 1, true},
      {"RXQ4020Ax", Outcome::kDone, 0, true},
      {"RXQ40x20x", Outcome::kDone, 2, false},
      {"RXQ40x0ax", Outcome::kDone, 0, false},
      {"RXQ40x3Ax", Outcome::kCommunicationError, 0, false},
      {"RXQ40xAAx", Outcome::kCommunicationError, 0, false},
      {"RXQ40x/Ax", Outcome::kCommunicationError, 0, false},
      {"RXQ41x0Ax", Outcome::kCommunicationError, 0, true},
      {"RXQ40x0A", Outcome::kCommunicationError, 0, true},
      {"RXQ40x0Axx", Outcome::kCommunicationError, 0, true}};
  for (const auto& [identity, outcome, model, version_a] : cases) {
    Radio radio;
    radio.identity = identity;
    radio.held.image.VersionA = true;
    EXPECT_EQ(radio.sequences.Identify().outcome, outcome) << identity;
    EXPECT_EQ(radio.held.model, model) << identity;
    EXPECT_EQ(radio.held.image.VersionA, version_a) << identity;
    EXPECT_EQ(radio.port.sent.size(), 1U);
    EXPECT_EQ(radio.host.ends.size(), 1U);
  }
}

TEST(AutoSelect, ResetsFirstAndLoadsTheSpecialChannelsOfTheModel) {
  Radio radio;
  radio.identity = "RXQ40x2Ax";
  SetChanged(radio.document, false, true);
  radio.held.image.ChannelInUse[0] = true;
  EXPECT_EQ(radio.sequences.AutoSelect().outcome, Outcome::kDone);
  EXPECT_EQ(radio.host.save_questions, 1);
  EXPECT_EQ(radio.held.model, 2);
  EXPECT_EQ(radio.held.image.UhfSpecialSet[0].cellText[0], "415.0000");
  EXPECT_FALSE(radio.held.image.ChannelInUse[0]);
  EXPECT_EQ(radio.Sent(), std::vector<std::string>{"KX~WHO\r\n"});  // no End command

  radio.identity = "RXQ40x3Ax";
  radio.held.image.ChannelInUse[0] = true;
  EXPECT_EQ(radio.sequences.AutoSelect().outcome, Outcome::kCommunicationError);
  EXPECT_EQ(radio.held.model, 2);
  EXPECT_FALSE(radio.held.image.ChannelInUse[0]);
}

TEST(Questions, WhoAsksForWhichFlagAndCancelSendsNothing) {
  using Command = SequenceReport (Sequences::*)();
  const std::tuple<Command, bool, bool, bool> cases[] = {
      {&Sequences::AutoSelect, true, false, true},   {&Sequences::AutoSelect, false, true, true},
      {&Sequences::ReadSettings, true, false, true}, {&Sequences::ReadSettings, false, true, false},
      {&Sequences::ReadMemory, false, true, true},   {&Sequences::ReadMemory, true, false, false},
      {&Sequences::ReadAll, true, false, true},      {&Sequences::ReadAll, false, true, true},
      {&Sequences::WriteAll, true, true, false}};
  for (const auto& [run, settings, memory, asks] : cases) {
    Radio radio;
    SetChanged(radio.document, settings, memory);
    radio.host.answer_save = false;
    const SequenceReport report = (radio.sequences.*run)();
    EXPECT_EQ(radio.host.save_questions, asks ? 1 : 0);
    EXPECT_EQ(report.outcome, asks ? Outcome::kCancelled : Outcome::kDone);
    EXPECT_EQ(radio.port.sent.empty(), asks);
    EXPECT_EQ(radio.host.begins, static_cast<int>(radio.host.ends.size()));
    if (asks) {
      EXPECT_EQ(radio.document.SettingsChanged(), settings);
      EXPECT_EQ(radio.document.MemoryChanged(), memory);
    }
  }
}

TEST(Questions, SavedChangesAreNoReasonToStop) {
  for (const auto run : {&Sequences::ReadSettings, &Sequences::ReadMemory}) {
    Radio radio;
    SetChanged(radio.document, true, true);
    radio.answers["0020"] = radio.answers["0200"] = "";
    EXPECT_EQ((radio.sequences.*run)().outcome, Outcome::kCommunicationError);
    EXPECT_EQ(radio.host.save_questions, 1);
    // What was saved, or given up, counts as unchanged also when the read fails.
    const bool settings = run == &Sequences::ReadSettings;
    EXPECT_EQ(radio.document.SettingsChanged(), !settings);
    EXPECT_EQ(radio.document.MemoryChanged(), settings);
  }
}

TEST(Questions, TheModelChangeFindsTheOldDataAndCancelLeavesIt) {
  Radio radio;
  radio.identity = "RXQ40x10x";
  radio.host.answer_select = false;
  SetChanged(radio.document, false, true);
  radio.held.image.VersionA = true;
  const CloneImage before = radio.held.image;
  EXPECT_EQ(radio.sequences.ReadSettings().outcome, Outcome::kCancelled);
  EXPECT_TRUE(radio.host.version_a_at_question);
  EXPECT_EQ(radio.held.image, before);
  EXPECT_EQ(radio.held.model, 0);
  EXPECT_EQ(radio.port.sent.size(), 1U);
}

TEST(ReadAll, AsksOnceAndAFailedFirstHalfLeavesTheChannelsUnsavedUnlessTheModelChanged) {
  for (const bool other_model : {false, true}) {
    Radio radio;
    SetChanged(radio.document, false, true);  // the answer was to save nothing
    radio.identity = other_model ? "RXQ40x1Ax" : "RXQ40x0Ax";
    radio.answers["0020"] = "";
    EXPECT_EQ(radio.sequences.ReadAll().outcome, Outcome::kCommunicationError);
    EXPECT_EQ(radio.host.save_questions, 1);
    EXPECT_EQ(radio.port.sent.size(), 2U);  // the second half was not begun
    EXPECT_EQ(radio.document.MemoryChanged(), !other_model);
  }
}

TEST(ReadMemory, AnIndexOutsideItsListIsACommunicationError) {
  Radio special;
  special.data["0180"] = "800000000145500000006000FF080000" + std::string(32, '0');
  const SequenceReport settings = special.sequences.ReadSettings();
  EXPECT_EQ(settings.outcome, Outcome::kCommunicationError);
  EXPECT_EQ(settings.where, "VHF special channel CALL");
  EXPECT_EQ(special.held.image.VhfSpecialSet, FreshData().image.VhfSpecialSet);

  Radio radio;
  radio.data["0220"] = "800000000145500000006000FF080000" + std::string(32, '0');
  SequenceReport report = radio.sequences.ReadMemory();
  EXPECT_EQ(report.outcome, Outcome::kCommunicationError);
  EXPECT_NE(report.why.find("byte 12 (TxTone) holds 0xFF"), std::string::npos);
  EXPECT_EQ(report.remedy.find("cable"), std::string::npos);
  radio.data["0220"].back() = 'Z';  // but this may well be the cable
  report = radio.sequences.ReadMemory();
  EXPECT_NE(report.remedy.find("cable"), std::string::npos);
}

TEST(Write, SendsNothingButDigits) {
  for (const auto run : {&Sequences::WriteSettings, &Sequences::WriteAll}) {
    Radio radio;
    radio.held.image.SettingsLine[3] = std::string(31, '0') + 'Z';
    const SequenceReport report = (radio.sequences.*run)();
    EXPECT_EQ(report.outcome, Outcome::kDataError);
    EXPECT_EQ(report.where, "settings area 2");
    EXPECT_EQ(report.why, "byte 0x005F holds \"0Z\", which is no hexadecimal number");
    EXPECT_TRUE(radio.port.sent.empty());
    EXPECT_EQ(radio.host.begins, static_cast<int>(radio.host.ends.size()));
    EXPECT_EQ(radio.sequences.WriteMemory().outcome, Outcome::kDone);  // has nothing of it
  }
}

TEST(Write, SendsExactlyItsCommandsDataAndPauses) {
  Radio radio;
  radio.held = test::RandomDocument(11);
  radio.held.model = 0;
  SetChanged(radio.document, true, false);
  radio.held.image.VersionA = true;
  const CloneData before = radio.held;
  EXPECT_EQ(radio.sequences.WriteSettings().outcome, Outcome::kDone);
  EXPECT_EQ(radio.sequences.WriteMemory().outcome, Outcome::kDone);

  const CloneImage& image = radio.held.image;
  std::vector<std::string> data = {image.SettingsLine[0] + image.SettingsLine[1],
                                   image.SettingsLine[2] + image.SettingsLine[3]};
  for (const Band band : kBands) {
    SpecialSet set = SpecialStore(image, band);
    set[kRptRow].value[0] = band == Band::kVhf ? 1'450'000 : 4'450'000;
    for (int k = 0; k < 5; ++k)
      data.emplace_back(EncodeSpecialChannel(set, StoredPresent(image, band), k)->Joined());
  }
  for (int unit = 0; unit < 5; ++unit) {
    data.push_back(MakeDialData(radio.held.dial, 2 * unit) +
                   MakeDialData(radio.held.dial, 2 * unit + 1));
  }
  std::vector<std::string> expected = {"RXQ40\r\n", "KX~WHO\r\n"};
  for (std::size_t i = 0; i < kSettingsOrder.size(); ++i)
    expected.push_back("KX~F" + kSettingsOrder[i] + "W" + data[i] + "\r\n");
  for (const char* command : {"KX~E\r\n\n", "RXQ40\r\n", "KX~WHO\r\n"})
    expected.emplace_back(command);
  int n = 0;
  for (const std::string& address : MemoryOrder()) {
    expected.push_back("KX~F" + address + "W" +
                       std::string(EncodeMemoryChannel(image, n++)->Joined()) + "\r\n");
  }
  expected.emplace_back("KX~E\r\n\n");
  EXPECT_EQ(radio.Sent(), expected);
  EXPECT_EQ(radio.Sent()[6].substr(17, 8),
            "01450000");  // the RPT row, behind "KX~F01A0W" and 4 bytes

  std::vector<long> pauses(expected.size() - 1, 10);
  pauses[1] = 0;  // none between the identification and the first settings unit
  EXPECT_EQ(radio.Pauses(), pauses);

  CloneData after = radio.held;
  EXPECT_FALSE(after.image.VersionA);
  after.image.VersionA = true;
  EXPECT_EQ(after.image, before.image);  // the stores keep their own RPT frequency
  EXPECT_TRUE(radio.document.SettingsChanged());
  EXPECT_FALSE(radio.document.MemoryChanged());
}

TEST(Write, RefusesARadioOfAnotherModel) {
  for (const int model : {1, 3}) {
    Radio radio;
    radio.document.ChangeModel(model);
    radio.held.image.VersionA = true;
    const SequenceReport report = radio.sequences.WriteAll();
    EXPECT_EQ(report.outcome, Outcome::kWrongModel);
    EXPECT_EQ(report.radio_model, 0);
    EXPECT_EQ(radio.held.model, model);
    EXPECT_FALSE(radio.held.image.VersionA);
    EXPECT_EQ(radio.Sent(), (std::vector<std::string>{"RXQ40\r\n", "KX~WHO\r\n"}));
    EXPECT_EQ(radio.host.ends.size(), 1U);
  }
}

TEST(Sequences, ALineThatDropsInAPauseIsNotTakenUpAgain) {
  Radio radio;
  radio.host.on_progress = [&] {
    if (radio.host.progress.size() == 5) radio.port.Close();  // and another radio may be there now
  };
  const SequenceReport report = radio.sequences.WriteAll();
  EXPECT_EQ(report.outcome, Outcome::kPortError);
  EXPECT_FALSE(report.in_flight);  // never sent
  EXPECT_EQ(report.acknowledged.size(), 4U);
  EXPECT_FALSE(radio.port.IsOpen());
  EXPECT_EQ(radio.sequences.WriteSettings().outcome,
            Outcome::kDone);  // opened, announced, identified
}

TEST(Sequences, AStopRequestEndsThemWithTheEndCommand) {
  Radio radio;
  radio.host.on_progress = [&] { radio.pump.stop = radio.host.progress.size() == 5; };
  const SequenceReport report = radio.sequences.WriteAll();
  EXPECT_EQ(report.outcome, Outcome::kInterrupted);
  EXPECT_EQ(report.acknowledged.size(), 4U);
  EXPECT_FALSE(report.in_flight);
  ASSERT_EQ(radio.port.sent.size(), 7U);
  EXPECT_EQ(radio.port.sent[6].bytes, "KX~E\r\n\n");  // it leaves its clone mode
}

// A timer whose event a talkative line keeps from ever coming.
class StarvedTimer final : public OneShotTimer {
 public:
  void Start(milliseconds /*interval*/) override { running_ = true; }
  void Stop() override { running_ = false; }
  [[nodiscard]] bool IsRunning() const override { return running_; }

 private:
  bool running_ = false;
};

TEST(Sequences, EndlessChatterEndsWithTheDeadline) {
  Radio radio;
  StarvedTimer starved;
  Link link{radio.port, {radio.timer1, starved, radio.timer3, radio.deadline}, radio.pump};
  Sequences sequences{link, radio.document, radio.host};
  radio.pump.next_arrival = [&] {
    radio.port.LeaveOver("?");
    return radio.clock.now + milliseconds(1);
  };
  const SequenceReport report = sequences.ReadSettings();
  EXPECT_EQ(report.outcome, Outcome::kCommunicationError);
  EXPECT_EQ(report.why, "the whole command took longer than it may");
  EXPECT_EQ(radio.port.sent.size(), 1U);
  EXPECT_EQ(radio.clock.Ms(), 20 * 2010 + 5000);  // 17 units, two openings, End
  EXPECT_FALSE(link.DeadlineIsOver());            // the next command starts afresh
}

// Where nobody can be asked, a document stays with its model.
TEST(Sequences, WithoutQuestionsAnotherModelIsRefused) {
  Radio radio;
  radio.identity = "RXQ40x1Ax";
  Sequences sequences{radio.link, radio.document, radio.host};
  EXPECT_EQ(sequences.ReadSettings().outcome, Outcome::kWrongModel);
  EXPECT_EQ(radio.held.model, 0);
}

TEST(Sequences, ARadioExchangedBetweenTheHalvesGetsNoMemory) {
  Radio radio;
  radio.host.on_progress = [&] { radio.identity = "RXQ40x1Ax"; };
  const SequenceReport report = radio.sequences.WriteAll();
  EXPECT_EQ(report.outcome, Outcome::kWrongModel);
  EXPECT_EQ(report.acknowledged.size(), 17U);
}

}  // namespace
}  // namespace q40
