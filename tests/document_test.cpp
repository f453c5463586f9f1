// The document as it is edited: its operations, its flags and its notices, and what is taken back.
#include <algorithm>
#include <functional>

#include <gtest/gtest.h>

#include "document/channel_cells.h"
#include "document/clone_document.h"
#include "document/defaults.h"
#include "document/document_units.h"
#include "document/memory_edit.h"
#include "radio/channel_fields.h"
#include "support/random_document.h"

namespace q40 {
namespace {

using V = SettingsValues;

using enum Field;

constexpr auto kMemory = ChannelKind::kMemory;
constexpr auto kSpecial = ChannelKind::kSpecial;

class Listener final : public DocumentListener {
 public:
  std::string heard;  // of each notice, in order
  void DocumentChanged(const DocumentChange& change) override {
    heard += '[';
    EachRun(change.channels, [this](int first, int last) {
      heard += std::to_string(first) + '-' + std::to_string(last) + ' ';
    });
    if (change.channels.any()) heard.pop_back();
    const std::pair<bool, const char*> parts[] = {
        {change.as_read, " read"},      {change.special_channels, " special"},
        {change.settings, " settings"}, {change.dial, " dial"},
        {change.model, " model"},       {change.anew, " anew"}};
    for (const auto& [is_set, name] : parts) heard += is_set ? name : "";
    heard += ']';
  }
};

// Intended oddities: Clear All and Clear PH set one flag only, a special channel the other one, the
// band none; some settings do not count; what was read of a radio counts when all channels are there.
TEST(Document, OperationsSetTheirFlagsAndGiveOneNotice) {
  using D = CloneDocument;
  const std::string digits(64, '0');
  const struct {
    const char* name;
    std::function<void(D&)> run;
    const char* flags;  // after the operation on a document without changes
    const char* heard;
  } cases[] = {
      {"insert", [](D& d) { d.InsertChannel(3); }, "SM", "[3-209]"},
      {"delete", [](D& d) { d.DeleteChannel(3); }, "SM", "[3-209]"},
      {"clear", [](D& d) { d.ClearChannel(3); }, "SM", "[3-3]"},
      {"clear all", [](D& d) { d.ClearAllChannels(); }, "-M", "[0-209]"},
      {"edit", [](D& d) { d.StoreMemoryChannel(209, {}); }, "SM", "[209-209]"},
      {"edit PH", [](D& d) { d.StoreSpecialChannel(kPhRow, {}); }, "S-", "[ special]"},
      {"clear PH", [](D& d) { d.ClearLimit(kPhRow); }, "-M", "[ special]"},
      {"nothing of many", [](D& d) { EXPECT_FALSE(d.StoreChannels(d.image())); }, "--", ""},
      {"many",
       [](D& d) {
         CloneImage image = d.image();
         for (const int n : {7, 3, 4}) SetCell(image, 0, {kMemory, {}, n}, kFrequency, "145");
         d.StoreChannels(image);
         EXPECT_EQ(d.image().MemoryTable[7].cellText[0], "145.0000");
       },
       "SM", "[3-4 7-7]"},
      {"many special",
       [](D& d) {
         CloneImage image = d.image();
         SetCell(image, 0, {kSpecial, Band::kVhf, kVfoRow}, kFrequency, "146");
         SetCell(image, 0, {kSpecial, Band::kUhf, kPhRow}, kFrequency, "446");
         d.StoreChannels(image);
         EXPECT_EQ(d.image().ShownSpecialSet[kVfoRow].cellText[0], "146.0000");
         EXPECT_TRUE(StoredPresent(d.image(), Band::kUhf)[0]);
       },
       "S-", "[ special]"},
      {"an emptied PL",
       [](D& d) {
         CloneImage image = d.image();
         SetCell(image, 0, {kSpecial, Band::kVhf, kPlRow}, kFrequency, "146");
         d.StoreChannels(image);
         d.ForgetChanges();
         EXPECT_TRUE(ClearRecord(image, {kSpecial, Band::kVhf, kPlRow}));
         d.StoreChannels(image);
       },
       "-M", "[ special][ special]"},
      {"band", [](D& d) { d.ChooseBand(Band::kUhf); }, "--", "[ special]"},
      {"setting", [](D& d) { d.ChangeSetting(SettingOf(&V::cmbTOT), 3); }, "S-", "[]"},
      {"quiet setting", [](D& d) { d.ChangeSetting(SettingOf(&V::chkVoxEn), 1); }, "--", "[]"},
      {"loose setting", [](D& d) { d.ChangeLooseSetting(); }, "S-", "[]"},
      {"dialer", [](D& d) { d.ChangeDialText(9, "1"); }, "S-", "[]"},
      {"nothing to take back", [](D& d) { d.TakeBack(FreshData(), {{}}); }, "--", ""},
      {"take back",
       [](D& d) {
         d.TakeBack(FreshData(), {{.unit = Unit::Memory(7), .setting = {}, .field = kPower},
                                  {.unit = Unit::Memory(3), .setting = {}, .field = {}}});
       },
       "SM", "[3-3 7-7]"},
      {"take back a special channel",
       [](D& d) {
         d.TakeBack(FreshData(),
                    {{.unit = Unit::Special(Band::kUhf, 0), .setting = {}, .field = kPower}});
       },
       "S-", "[ special]"},
      {"take back a quiet setting",
       [](D& d) {
         d.TakeBack(
             FreshData(),
             {{.unit = Unit::Settings(1), .setting = &SettingOf(&V::chkVoxEn), .field = {}}});
       },
       "--", "[ settings]"},
      {"take back a dialer memory",
       [](D& d) {
         d.TakeBack(FreshData(),
                    {{.unit = Unit::Dialer(4), .setting = {}, .field = {}, .index = 9}});
       },
       "S-", "[ dial]"},
      {"put back",
       [](D& d) {
         CloneData state = d.data();
         state.image.ChannelInUse[5] = true;
         d.Restore(state, true, false);
       },
       "S-", "[5-5]"},
      {"import", [](D& d) { d.Import(d.image()); }, "--", "[0-209 special]"},
      {"the same model", [](D& d) { d.ChangeModel(0); }, "--", ""},
      {"another model", [](D& d) { d.ChangeModel(1); }, "--",
       "[0-209 special settings dial model anew]"},
      {"lines",
       [&](D& d) {
         d.TakeSettingsLines({digits, digits, digits, digits});
       },
       "S-", "[ settings]"},
      {"channel", [&](D& d) { EXPECT_FALSE(d.TakeMemoryChannel(7, digits)); }, "--", "[7-7 read]"},
      {"all channels", [](D& d) { d.FinishMemoryRead(); }, "-M", ""},
  };
  for (const auto& c : cases) {
    Listener listener;
    D document;
    document.SetListener(&listener);
    c.run(document);
    const std::string flags = std::string(document.SettingsChanged() ? "S" : "-") +
                              (document.MemoryChanged() ? "M" : "-");
    EXPECT_EQ(flags, c.flags) << c.name;
    EXPECT_EQ(listener.heard, c.heard) << c.name;
    for (const auto anew : {+[](D& d) { d.New(); }, +[](D& d) { d.Open(FreshData()); },
                            +[](D& d) { d.Import(d.image()); }}) {
      c.run(document);
      anew(document);
      EXPECT_FALSE(document.HasChanges()) << c.name;
    }
  }
}

TEST(Document, WhatHoldsTheUnitsOfAnotherGivesItsDigits) {
  for (unsigned seed = 0; seed < 4; ++seed) {
    const CloneData document = test::RandomDocument(seed);
    CloneData copy;
    copy.model = document.model;
    const std::vector<Unit> units = UnitsOf(Half::kBoth);
    for (const Unit unit : units) EXPECT_FALSE(LoadUnit({unit, DigitsOf(document, unit)}, copy));
    for (const Unit unit : units)
      EXPECT_EQ(DigitsOf(copy, unit), DigitsOf(document, unit)) << unit.Name();
  }
}

// Cell by cell, and then all that is left: each is as before, none comes up elsewhere.
TEST(Document, WhatIsTakenBackIsAsBefore) {
  for (const unsigned seed : {1U, 2U, 3U}) {
    const CloneData before = test::RandomDocument(seed);
    CloneDocument document(test::RandomDocument(seed + 100));
    document.ChooseBand(Band::kUhf);
    std::vector<CellDifference> left = DifferencesOf(before, document.data());
    for (std::size_t i = 0; i < left.size(); i += 61) {
      const CellDifference cell = left[i];
      if (document.TakeBack(before, {cell.at}) == 0) continue;
      const std::vector<CellDifference> now = DifferencesOf(before, document.data());
      EXPECT_EQ(std::find(now.begin(), now.end(), cell), now.end()) << DifferenceText(cell);
      std::size_t at = 0;
      for (const CellDifference& one : now) {
        while (at < left.size() && !(left[at] == one)) ++at;
      }
      EXPECT_LT(at, left.size()) << "after " << DifferenceText(cell);
      left = now;
      for (const ChannelRecord& record : document.image().MemoryTable) {
        EXPECT_EQ(record.Text(kMemory, kFrequency).starts_with('*'),
                  record.Number(kMemory, kSkip) == 1);
      }
    }
    std::vector<CellAddress> all;
    all.reserve(left.size());
    for (const CellDifference& cell : left) all.push_back(cell.at);
    document.TakeBack(before, all);
    for (const CellDifference& cell : DifferencesOf(before, document.data())) {
      EXPECT_EQ(cell.place, "Radio") << DifferenceText(cell);
    }
    EXPECT_EQ(document.image().ShownSpecialSet, document.image().UhfSpecialSet);
    EXPECT_EQ(document.image().ChannelInUse, before.image.ChannelInUse);
    const auto& table = before.image.MemoryTable;  // its last row is the model's own
    EXPECT_TRUE(std::equal(table.begin(), table.end() - 1, document.image().MemoryTable.begin()));
    // The same data, but no longer in use.
    for (const std::size_t flag : {7U, 211U}) {
      CloneData gone = before;
      gone.image.ChannelInUse[flag] = !gone.image.ChannelInUse[flag];
      ASSERT_FALSE(DifferencesOf(before, gone).empty()) << flag;
      EXPECT_EQ(DifferencesOf(before, gone)[0].name, "In use");
      CloneDocument back(gone);
      back.TakeBack(before, {DifferencesOf(before, gone)[0].at});
      EXPECT_TRUE(DifferencesOf(before, back.data()).empty()) << flag;
    }
  }
}

}  // namespace
}  // namespace q40
