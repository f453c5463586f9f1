// Writing with a net, against a radio that keeps what is written to it.
#include <set>

#include "link/unit_sequences.h"
#include "link/write_texts.h"
#include "support/random_document.h"
#include "support/scripted_radio.h"

namespace q40 {
namespace {

using test::Radio;
using Stage = WriteResult::Stage;

bool Heard(const Radio& radio, const std::string& start) {
  return std::any_of(radio.port.sent.begin(), radio.port.sent.end(),
                     [&](const auto& sent) { return sent.bytes.starts_with(start); });
}

TEST(SafeWrite, BacksUpWritesAndVerifiesInThisOrder) {
  Radio radio;
  radio.held = test::RandomDocument(41);
  radio.held.model = 0;
  radio.held.image.VersionA = false;
  const std::string radio_held_before = "80" + std::string(62, '0');
  radio.data["0200"] = radio_held_before;
  std::optional<RadioCopy> backup;
  const WriteNet net{[&](const RadioCopy& held) {
                       EXPECT_FALSE(Heard(radio, "RXQ40"));        // before anything is written
                       EXPECT_EQ(radio.host.version_letter, 'A');  // the document says 0
                       backup = held;
                       return true;
                     },
                     true};
  const CloneData before = radio.held;
  const WriteResult result = SafeWrite(radio.link, radio.document, radio.host, Half::kBoth, net);
  EXPECT_EQ(result.stage, Stage::kVerify);
  EXPECT_EQ(result.last.outcome, Outcome::kDone);
  EXPECT_TRUE(result.backup_kept && result.differences.empty());
  ASSERT_TRUE(backup);
  EXPECT_EQ(backup->units.at(17).digits, radio_held_before);
  EXPECT_EQ(result.write.acknowledged.size(), 227U);
  // 229 exchanges of the backup, 233 of the write, 229 of the verification.
  EXPECT_EQ(radio.port.sent.size(), 229U + 233U + 229U);
  EXPECT_EQ(radio.port.sent[229].bytes, "RXQ40\r\n");
  EXPECT_EQ(radio.host.begins, 4);
  EXPECT_EQ(radio.held.image.MemoryTable, before.image.MemoryTable);
  EXPECT_EQ(radio.host.shown.size(), 0U);  // the backup's data is not shown
}

TEST(SafeWrite, WithoutANetItIsTheWrite) {
  const std::tuple<Half, std::size_t> cases[] = {
      {Half::kSettings, 20}, {Half::kMemory, 213}, {Half::kBoth, 233}};
  for (const auto& [half, exchanges] : cases) {
    Radio radio;
    const WriteResult result = SafeWrite(radio.link, radio.document, radio.host, half, {});
    EXPECT_EQ(result.stage, Stage::kWrite);
    EXPECT_EQ(result.last.outcome, Outcome::kDone);
    EXPECT_FALSE(result.backup_kept);
    EXPECT_EQ(radio.port.sent.size(), exchanges);
    EXPECT_EQ(Heard(radio, "KX~F0020W"), half != Half::kMemory);
    EXPECT_EQ(Heard(radio, "KX~F0200W"), half != Half::kSettings);
  }
}

TEST(SafeWrite, NothingIsWrittenWithoutTheBackupThatWasAskedFor) {
  const WriteNet refuses{[](const RadioCopy&) { return false; }, true};
  const WriteNet keeps{[](const RadioCopy&) { return true; }, true};
  const struct {
    const char* identity;
    const WriteNet& net;
    Outcome outcome;
    const char* why;
    std::string channel2{};
  } cases[] = {{"RXQ40-00-", refuses, Outcome::kCancelled, "the backup could not be kept"},
               {"RXQ40-20-", keeps, Outcome::kWrongModel,
                "the radio is an RX-Q40T1, the data is for an RX-Q40T"},
               {"RXQ40-90-", keeps, Outcome::kCommunicationError,
                "the radio reports the unknown variant \"9\""},
               {"RXQ40-00-", keeps, Outcome::kCommunicationError, "the reply was damaged twice",
                std::string(63, '0') + "G\r\n"}};
  for (const auto& c : cases) {
    Radio radio;
    if (!c.channel2.empty()) radio.answers["0240"] = c.channel2;
    radio.identity = c.identity;
    const WriteResult result =
        SafeWrite(radio.link, radio.document, radio.host, Half::kBoth, c.net);
    EXPECT_EQ(result.stage, Stage::kBackup);
    EXPECT_EQ(result.last.outcome, c.outcome);
    EXPECT_EQ(result.last.why, c.why);
    EXPECT_FALSE(result.backup_kept || Heard(radio, "RXQ40"));
    EXPECT_EQ(AftermathText(result, {"so", {}}),
              "The backup was not made, so nothing was written.");
    EXPECT_EQ(radio.host.ends.back().outcome,
              c.outcome == Outcome::kCancelled ? Outcome::kDone : c.outcome);
  }
}

TEST(SafeWrite, VerifyingNamesWhatTheRadioDidNotKeep) {
  Radio radio;
  radio.deaf_to = "1D00";
  radio.held.dial[1] = "12";
  radio.held.dial[0] = "";
  const WriteResult result =
      SafeWrite(radio.link, radio.document, radio.host, Half::kSettings, {nullptr, true});
  EXPECT_EQ(result.stage, Stage::kVerify);
  EXPECT_EQ(result.last.outcome, Outcome::kDone);
  ASSERT_EQ(result.differences.size(), 1U);
  EXPECT_EQ(DifferenceText(result.differences[0]), "Auto dialer: M2: \"12\" -> \"\"");
}

TEST(Verify, ReadsNothingWithoutTheRadioOfTheDocument) {
  const std::vector<UnitData> written = {{Unit::Memory(0), std::string(64, '0')}};
  Radio closed;
  closed.port.can_open = false;
  Radio silent;
  silent.identity = "";
  Radio other;
  other.identity = "RXQ40x2A.";
  Radio stops;
  stops.answers["0200"] = "";
  const std::tuple<Radio&, Outcome, std::size_t, std::size_t> cases[] = {
      {closed, Outcome::kPortError, 0, 0},
      {silent, Outcome::kCommunicationError, 2, 0},  // a bare line end is asked for once more
      {other, Outcome::kWrongModel, 1, 0},
      {stops, Outcome::kCommunicationError, 2, 1}};
  for (const auto& [radio, outcome, sent, units] : cases) {
    std::vector<UnitData> found;
    UnitSequences sequences(radio.link, radio.host);
    EXPECT_EQ(sequences.Read(Sequence::kVerify, 0, written, found).outcome, outcome);
    EXPECT_EQ(radio.port.sent.size(), sent);
    EXPECT_EQ(found.size(), units);
    EXPECT_EQ(radio.held.model, 0);
  }
}

// ---- what the radio holds, unit by unit

std::string With(std::size_t byte, const std::string& digits, std::string unit) {
  return unit.replace(2 * byte, digits.size(), digits);
}

TEST(Units, DifferencesAreNamedAsTheOwnerKnowsThem) {
  const std::string zeros(64, '0');
  const std::string used = With(0, "80", zeros);
  const struct {
    Address address;
    std::string a;
    std::string b;
    const char* differences;
  } cases[] = {
      {0x0020, zeros, With(5, "0A", zeros), "Settings: Volume: \"0\" -> \"10\"\n"},
      {0x0020, With(4, "D4", zeros), zeros,
       "Settings: byte 0x0024 (start channel): \"D4\" -> \"00\"\n"},
      {0x0020, zeros, With(24, "40", zeros), "Settings: VOX On Delay: \"Off\" -> \"On\"\n"},
      {0x0020, zeros, With(24, "80", zeros),
       "Settings: byte 0x0038 without VOX On Delay: \"00\" -> \"80\"\n"},
      {0x0040, With(2, "AA", zeros), With(2, "01", zeros),
       "Access: byte 0x0042 (Key Lock): \"AA\" -> \"01\"\n"},
      {0x0180, zeros, With(25, "02", zeros), "VHF CALL: Power: \"Lo\" -> \"Hi\"\n"},
      {0x0200, used, With(0, "88", zeros), "Memory 0: Skip: \"Off\" -> \"On\"\n"},
      {0x0200, used, With(3, "0101", used),
       "Memory 0: Frequency: \"000.0000\" -> \"100.0000\"\n"
       "Memory 0: byte 3 (Step): \"00\" -> \"01\"\n"},
      {0x0200, With(16, "3A003B", used), With(16, "3A3B00", used),
       "Memory 0: byte 17 (Name): \"00\" -> \"3B\"\nMemory 0: byte 18 (Name): \"3B\" -> \"00\"\n"},
      {0x1D00, With(16, "3100", zeros), With(16, "0031", zeros),
       "Auto dialer: M2, byte 0: \"31\" -> \"00\"\nAuto dialer: M2, byte 1: \"00\" -> \"31\"\n"},
      {0x1C20, used, With(12, "63", used),
       "Memory D9: content: \"\" -> \"cannot be read: byte 12 (TxTone) holds 0x63, which is "
       "outside "
       "its list\"\n"},
      {0x1C20, zeros, With(23, "63", zeros), "Memory D9: byte 23: \"00\" -> \"63\"\n"},
      {0x0200, With(16, "5c", used), With(16, "5C", used), ""},  // as the radio answers
      {0x00C0, zeros, With(0, "01", zeros), "VHF VFO: byte 0 (flags): \"00\" -> \"01\"\n"},
      {0x00C0, zeros, With(0, "ZZ", zeros),
       "VHF VFO: content: \"\" -> \"cannot be read: no hexadecimal digits\"\n"},
  };
  for (const auto& c : cases) {
    std::string text;
    for (const CellDifference& difference :
         UnitDifferences({*Unit::At(c.address), c.a}, {*Unit::At(c.address), c.b}))
      text += DifferenceText(difference) + '\n';
    EXPECT_EQ(text, c.differences);
  }
}

// A write command leaves something else in the repeater-access rows than a document has there.
TEST(Units, WhatAWriteLeavesInTheRadioIsNoChange) {
  for (const unsigned seed : {1U, 2U, 3U}) {
    const CloneData document = test::RandomDocument(seed);
    const CloneData written = AsWritten(document);
    RadioContent radio;
    radio.SetModel(document.model);
    for (const Unit unit : UnitsOf(Half::kBoth)) radio.SetHeld({unit, DigitsOf(written, unit)});
    EXPECT_EQ(ChangedUnits(radio, document).size(), 0U) << seed;
  }
}

// Whatever byte of whatever unit the radio changed: it is told, and nothing is told twice.
TEST(Units, NoDifferenceIsSilentOrNamedTwice) {
  for (const Unit unit : {Unit::Settings(0), Unit::Settings(1), Unit::Special(Band::kUhf, kPhRow),
                          Unit::Dialer(4), Unit::Memory(7)}) {
    for (std::size_t at = 0; at + 1 < kUnitSize; ++at) {
      const std::string a = With(0, "80", std::string(64, '0'));
      std::set<std::string> names;
      for (const auto& one : UnitDifferences({unit, a}, {unit, With(at, "40FF", a)}))
        EXPECT_TRUE(names.insert(one.place + one.name).second) << one.place << one.name;
      EXPECT_FALSE(names.empty()) << unit.Name() << " " << at;
    }
  }
}

// ---- what is said about a write that ended early

SequenceReport ReportOf(Half half, int acknowledged, bool in_flight) {
  const std::vector<Unit> plan = UnitsOf(half);
  SequenceReport report;
  for (std::size_t i = 0; i < static_cast<std::size_t>(acknowledged); ++i) {
    report.acknowledged.push_back({plan[i], ""});
  }
  if (in_flight) report.in_flight = plan[static_cast<std::size_t>(acknowledged)];
  return report;
}

TEST(WrittenText, NamesWhatIsWrittenWhatMayBeAndWhatIsNot) {
  const std::tuple<Half, int, bool, const char*> cases[] = {
      {Half::kBoth, 0, false, "nothing was written"},
      {Half::kBoth, 0, true,
       "settings area 1 perhaps (sent, but not acknowledged), the rest as before"},
      {Half::kBoth, 16, true,
       "settings up to auto-dialer memories M7 and M8 written, auto-dialer memories M9 and St "
       "perhaps (sent, but not acknowledged), the rest as before"},
      {Half::kBoth, 17, false, "settings written, the rest as before"},
      {Half::kBoth, 17, true,
       "settings written, memory channel 0 perhaps (sent, but not acknowledged), 1 onwards as "
       "before"},
      {Half::kBoth, 18, false, "settings and channel 0 written, 1 onwards as before"},
      {Half::kBoth, 226, true,
       "settings and channels 0 to D8 written, memory channel D9 perhaps (sent, but not "
       "acknowledged)"},
      {Half::kBoth, 227, false, "settings and channels 0 to D9 written"},
      {Half::kSettings, 17, false, "settings written"},
      {Half::kMemory, 0, true,
       "memory channel 0 perhaps (sent, but not acknowledged), 1 onwards as before"},
      {Half::kMemory, 1, false, "channel 0 written, 1 onwards as before"},
      {Half::kMemory, 210, false, "channels 0 to D9 written"}};
  for (const auto& [half, acknowledged, in_flight, text] : cases)
    EXPECT_EQ(WrittenText(ReportOf(half, acknowledged, in_flight), half), text);
}

}  // namespace
}  // namespace q40
