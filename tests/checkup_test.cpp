// What the check-up finds in a document, and that it agrees with what a clone file really keeps.
#include "checkup/checkup.h"

#include <algorithm>
#include <random>
#include <set>

#include <gtest/gtest.h>

#include "document/defaults.h"
#include "document/document_cells.h"
#include "document/memory_edit.h"
#include "files/clone_file.h"
#include "radio/channel_fields.h"
#include "radio/settings_codec.h"
#include "support/random_document.h"

namespace q40 {
namespace {

using enum Field;

void SetNumber(ChannelKind kind, ChannelRecord& record, Field field, int number) {
  record.Set(kind, field, number, CodeText(field, number));
}

// An RX-Q40E in which there is nothing to find: two memory channels, no PH, no PL.
struct Sample {
  CloneData document = FreshData();
  CloneImage& image = document.image;

  Sample() {
    ChangeModel(document, 1);
    for (const Band band : kBands) {
      SpecialStore(image, band)[kPhRow] = {};
      SpecialStore(image, band)[kPlRow] = {};
    }
    Channel(3, 1'456'000, "HILL").Channel(203, 4'389'500, "CLUB");
  }
  Sample& Channel(int n, Units100Hz frequency, const std::string& name) {
    Memory(n) = image.TemplateChannel();
    Memory(n).Set(ChannelKind::kMemory, kFrequency, frequency, FrequencyText(frequency));
    image.ChannelInUse[static_cast<std::size_t>(n)] = true;
    return Name(n, name);
  }
  ChannelRecord& Memory(int n) { return image.MemoryTable[static_cast<std::size_t>(n)]; }
  Sample& Name(int n, const std::string& name) {
    Memory(n).Set(ChannelKind::kMemory, kName, 1, name);
    return *this;
  }
  Sample& Code(int n, Field field, int number) {
    SetNumber(ChannelKind::kMemory, Memory(n), field, number);
    return *this;
  }
  Sample& Special(Band band, std::size_t k, Field field, int number) {
    SetNumber(ChannelKind::kSpecial, SpecialStore(image, band)[k], field, number);
    return *this;
  }
  Sample& Present(Band band, bool ph, bool pl) {
    SetStoredPresent(image, band, {ph, pl});
    return *this;
  }
  // PH and PL of the UHF band; 0 is absent.
  Sample& Limits(Units100Hz ph, Units100Hz pl) {
    image.UhfSpecialSet[kPhRow] = image.UhfSpecialSet[kPlRow] = image.UhfSpecialSet[kVfoRow];
    Special(Band::kUhf, kPhRow, kFrequency, ph).Special(Band::kUhf, kPlRow, kFrequency, pl);
    return Present(Band::kUhf, ph != 0, pl != 0);
  }
  Sample& VersionA() {
    image.VersionA = true;
    return *this;
  }
  Sample& Byte(std::size_t line, int byte, const char* text) {
    image.SettingsLine[line] = ReplaceByte(image.SettingsLine[line], text, byte);
    document.settings = DecodeSettings(image);
    return *this;
  }
};

std::string Line(const Finding& finding) {
  return PlaceText(finding.place) + ", " + finding.field + ": " +
         std::string(RowOf(finding.kind).code);
}

// The findings of a document, one a line.
std::string Listed(const CloneData& document) {
  std::string text;
  for (const Finding& finding : CheckUp(document)) text += Line(finding) + '\n';
  return text;
}

using S = Sample;

TEST(CheckUp, OneFaultEach) {
  // What is done to the sample, the findings, and words of the last one's sentence.
  const std::tuple<void (*)(S&), std::string, const char*> cases[] = {
      {[](S& s) { s.Channel(5, 1'456'000, "TWO"); }, "channel 5, Frequency: duplicate-frequency",
       "145.6000 MHz is also the frequency of channel 3"},
      {[](S& s) { s.Channel(5, 1'460'000, "OFF"); }, "channel 5, Frequency: out-of-band",
       "the RX-Q40E version 0 covers only 144.000-145.995MHz and 430.000-439.995MHz."},
      {[](S& s) { s.Special(Band::kVhf, kCallRow, kFrequency, 4'350'000); },
       "VHF CALL, Frequency: out-of-band", "covers only 144.000-145.995MHz."},
      {[](S& s) { s.Channel(0, 12'960'000, "23CM"); },
       "channel 0, Frequency: out-of-band\nchannel 0, Frequency: frequency-lost",
       "1296.0000 MHz, but it is read back as 296.0000 MHz"},
      {[](S& s) { s.Code(3, kStep, 5); }, "channel 3, Step: step-lost",
       "store 25KHz, but it is read back as 12.5KHz"},
      {[](S& s) { s.Code(203, kShift, 3); }, "channel D3, Shift: split-lost",
       "\"Split\", but a memory channel is read back with \"None\""},
      {[](S& s) { s.Code(203, kShiftFrequency, 100'000); },
       "channel D3, Shift frequency: offset-lost", "10.0000 MHz, but it is read back as 0.0000"},
      {[](S& s) { s.Code(3, kShift, 2).Code(3, kShiftFrequency, 6'000); },
       "channel 3, Shift: shift-leaves-band",
       "With +Shift by 0.6000 MHz the radio is to transmit on 146.2000 MHz, outside its VHF band"},
      // Without a lower limit, but not below 0.
      {[](S& s) {
         s.VersionA().Channel(3, 5'000, "LW").Code(3, kShift, 1).Code(3, kShiftFrequency, 6'000);
       },
       "channel 3, Shift: shift-leaves-band", "transmit on -0.1000 MHz"},
      {[](S& s) { s.Name(3, "   "); }, "channel 3, Name: no-name", "without a name"},
      {[](S& s) { s.Name(203, "HILL"); }, "channel D3, Name: duplicate-name",
       "\"HILL\" here and in channel 3"},
      {[](S& s) { s.Name(3, "a<\303\204\t1%234"); }, "channel 3, Name: name-lost",
       "is read back as \"51\": \"a\" is left out, \"<\" becomes \"5\", \"\303\204\" is left out, "
       "\"\\x09\" is left out, \"%\" is left out, six characters fit."},
      // Only read back they are the same.
      {[](S& s) { s.Name(3, "A)").Name(203, "A("); },
       "channel 3, Name: name-lost\nchannel D3, Name: duplicate-name",
       "\"A(\" here and in channel 3"},
      {[](S& s) { s.Limits(4'330'000, 4'340'000); }, "UHF PH, Frequency: ph-below-pl",
       "PH, 433.0000 MHz, lies below PL, 434.0000 MHz"},
      {[](S& s) { s.Present(Band::kVhf, false, true); },
       "VHF PL, Frequency: limit-without-frequency", "store PL as absent"},
      {[](S& s) { s.Limits(0, 4'340'000).Present(Band::kUhf, false, false); },
       "UHF PL, Frequency: limit-comes-back", "gets PL as absent, but 434.0000 MHz stays stored"},
      {[](S& s) { s.document.settings.cmbTB = 4; }, "settings, Tone Burst (Hz): tone-burst-lost",
       "\"1450\", but it is read back as \"1750\""},
      {[](S& s) { s.document.settings.Slider1 = 31; }, "settings, Volume: setting-lost",
       "\"31\", but it is read back as \"0\""},
      {[](S& s) { s.Byte(0, 13, "10"); }, "settings, Penalty Time (sec): setting-rewritten",
       "The byte 0x002D holds 10, which is shown as \"0\"; the next save or write makes it 00."},
      {[](S& s) {
         s.document.settings.chkChannel = 1;
         ClearAllMemoryChannels(s.image);
       },
       "access, Channel Mode: no-start-channel", "start with number 210"},
      {[](S& s) { s.document.dial[9] = "12z"; }, "auto dialer, St: dial-lost",
       "keeps \"12z\", the radio gets \"12\""},
  };
  std::set<FindingKind> seen;
  for (const auto& [spoil, lines, words] : cases) {
    Sample sample;
    spoil(sample);
    ASSERT_EQ(Listed(sample.document), lines + '\n');
    const Findings findings = CheckUp(sample.document);
    EXPECT_NE(findings.back().text.find(words), std::string::npos) << findings.back().text;
    for (const Finding& finding : findings) seen.insert(finding.kind);
  }
  // All but two: the codecs of today lose nothing that kValueLost would have to say, and
  // kStoredValueDropped, the last, is not about documents.
  EXPECT_EQ(seen.size() + 1, static_cast<std::size_t>(FindingKind::kStoredValueDropped));
}

TEST(CheckUp, WhatIsNoFinding) {
  void (*const harmless[])(S&) = {
      [](S& /*s*/) {},
      [](S& s) { LoadSpecialDefaults(s.image, s.document.model); },  // PH and PL of a new document
      [](S& s) { s.image.ChannelInUse[3] = false; },  // not in use: whatever it still holds
      [](S& s) { s.Code(4, kStep, 6).Code(4, kFrequency, 9'000'000); },  // nor is this one
      [](S& s) { s.VersionA().Channel(4, 1'000'000, "LOW"); },
      [](S& s) { s.Special(Band::kVhf, kVfoRow, kShift, 3); },  // Split
      // What the RPT row does not carry.
      [](S& s) { s.Special(Band::kVhf, kRptRow, kFrequency, 0); },
      [](S& s) { s.Limits(4'340'000, 4'330'000); }, [](S& s) { s.Name(3, "*#+_/("); },
      // Bytes that no control owns are carried.
      [](S& s) { s.Byte(0, 3, "77").Byte(1, 8, "F3").Byte(2, 8, "5c").Byte(2, 0, "aa"); },
      [](S& s) {  // the model that has no ranges
        s.document.model = 3;
        s.Code(3, kShift, 2);
        s.Code(3, kShiftFrequency, 60'000);
      }};
  for (std::size_t i = 0; i < std::size(harmless); ++i) {
    Sample sample;
    harmless[i](sample);
    EXPECT_EQ(Listed(sample.document), "") << i;
  }
}

// A random document with every number that an editor or an import can give. Its frequencies have at
// least three digits before the point, so that a text that is read back tells what was lost.
CloneData EditedDocument(unsigned seed) {
  std::mt19937 random(seed);
  const auto below = [&](int top) {
    return std::uniform_int_distribution<int>(0, top - 1)(random);
  };
  const auto edit = [&](ChannelKind kind, ChannelRecord& record) {
    SetNumber(kind, record, kStep, below(7));
    SetNumber(kind, record, kShift, below(4));
    const int offset = below(below(2) != 0 ? 100'000 : 20'000'000);
    record.Set(kind, kShiftFrequency, offset, OffsetText(offset));
    const int frequency = 1'000'000 + below(20'000'000);
    record.Set(kind, kFrequency, frequency, FrequencyText(frequency));
    if (!HasField(kind, kName)) return;
    std::string name;
    for (int i = below(9); i > 0; --i) name += static_cast<char>(' ' + below(95));
    record.Set(kind, kName, name.empty() ? 0 : 1, name);
    record.Set(kind, kSkip, 0, "");
  };
  CloneData document = test::RandomDocument(seed);
  CloneImage& image = document.image;
  for (ChannelRecord& record : image.MemoryTable) edit(ChannelKind::kMemory, record);
  for (const Band band : kBands) {
    for (ChannelRecord& record : SpecialStore(image, band)) edit(ChannelKind::kSpecial, record);
    SetStoredPresent(image, band, {below(2) != 0, below(2) != 0});
  }
  document.settings.cmbTB = below(5);
  return document;
}

using Lines = std::multiset<std::string>;

// What is not in the opened file as it was in the document, found without the check-up.
Lines Differences(const CloneData& saved, const CloneData& opened) {
  std::set<std::string_view> not_in_rpt;
  for (const ChannelField& row : kChannelFields) {
    if (!row.in_repeater_row) not_in_rpt.insert(row.name);
  }
  Lines lines;
  for (const CellDifference& d : DifferencesOf(saved, opened)) {
    // Cells of channels that are not in use are empty, or stored data.
    if (d.a.empty() || d.name == "stored data") continue;
    if (d.place.ends_with("RPT") && not_in_rpt.contains(d.name)) continue;
    std::string place = d.place;
    if (place.starts_with("Memory")) place.replace(0, 6, "channel");
    if (place == "Settings") place = "settings";
    lines.insert(place + ", " + (d.name == "In use" ? "Frequency" : d.name));
  }
  return lines;
}

// No more and no less than a clone file really loses; and once it is lost, it is not found any more.
TEST(CheckUp, AgreesWithWhatAFileKeeps) {
  for (unsigned seed = 1; seed <= 20; ++seed) {
    CloneData document = EditedDocument(seed);
    CloneData opened = FreshData();
    ASSERT_FALSE(
        OpenCloneText(CloneFileText(document, document.model).value(), "test", opened).problem);
    Lines losses;
    const Findings findings = CheckUp(document);
    EXPECT_TRUE(std::ranges::is_sorted(findings, {}, &Finding::place)) << seed;
    for (const Finding& finding : findings) {
      if (RowOf(finding.kind).severity != Severity::kLoss) continue;
      losses.insert(PlaceText(finding.place) + ", " + finding.field);
    }
    EXPECT_EQ(losses, Differences(document, opened)) << seed;
    EXPECT_GT(losses.size(), 50U) << seed;
    for (const Finding& finding : CheckUp(opened))
      EXPECT_EQ(RowOf(finding.kind).occurs, Occurs::kAnywhere) << Line(finding);
  }
}

}  // namespace
}  // namespace q40
