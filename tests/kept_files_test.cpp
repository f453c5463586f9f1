// What is kept so that a write costs nothing: the folder of the backups, and a write that has not ended.
#include <gtest/gtest.h>

#include "document/document_units.h"
#include "files/backup_folder.h"
#include "files/radio_copy_file.h"
#include "files/unfinished_write.h"
#include "support/temp_folder.h"

namespace q40 {
namespace {

RadioCopy SomeRadio(int model) {
  RadioCopy copy{model, '0', {}};
  const CloneData data;
  for (const Unit unit : UnitsOf(Half::kBoth)) copy.units.push_back({unit, std::string(64, 'F')});
  return copy;
}

TEST(BackupFolder, ListsTheLatestFirstWithWhatTheNamesTell) {
  const test::TempFolder folder;
  const std::string backups = folder / "made when needed";
  RadioCopy radio = SomeRadio(1);
  std::string path;
  using R = BackupReason;
  ASSERT_FALSE(KeepBackup(backups, radio, "2026-11-22 01.02.03", R::kByHand, path));
  const std::string by_hand = path;
  radio.units[17].digits = "80" + std::string(62, '0');
  radio.units[18].digits = "80" + std::string(62, '9');  // no channel at all
  ASSERT_FALSE(KeepBackup(backups, radio, "2026-11-22 01.02.03", R::kByHand, path));
  EXPECT_EQ(path, backups + "/RX-Q40E 2026-11-22 01.02.03 by hand (2).Q40");
  ASSERT_FALSE(KeepBackup(backups, radio, "2026-11-23 00.00.00", R::kAfterBrokenWrite, path));
  // Of an earlier version, and files that the user has put there.
  std::filesystem::copy(by_hand, backups + "/RX-Q40T 2026-11-21 23.59.59.Q40");
  std::filesystem::copy(by_hand, backups + "/RX-Q40E my own.Q40");
  test::Store(backups + "/RX-Q40E 2026-11-20 00.00.00 before a write.Q40", "not a clone");
  test::Store(backups + "/notes.txt", "");
  std::string told;
  for (const BackupEntry& entry : ListBackups(backups)) {
    if (entry.name.reason == R::kUnknown) {
      EXPECT_EQ(entry.name.time.size(), 19U);
      EXPECT_FALSE(entry.IsWhole());
      continue;
    }
    told += entry.name.time.substr(8) + ' ' + std::to_string(entry.name.model) + ' ' +
            std::string(BackupReasonText(entry.name.reason)) + ' ' +
            std::to_string(entry.channels) + '/' + std::to_string(entry.undecodable) +
            (entry.problem.empty() ? "" : " bad") + (entry.IsWhole() ? " whole\n" : "\n");
  }
  EXPECT_EQ(told,
            "23 00.00.00 1 after a broken write 2/1\n"
            "22 01.02.03 1 by hand 2/1 whole\n"
            "22 01.02.03 1 by hand 0/0 whole\n"
            "21 23.59.59 1 before a write 0/0 whole\n"  // the model that stands in the file
            "20 00.00.00 1 before a write 0/0 bad\n");
  EXPECT_EQ(LastWholeBackup(backups, 1), backups + "/RX-Q40E 2026-11-22 01.02.03 by hand (2).Q40");
  EXPECT_EQ(LastWholeBackup(backups, 0), "");
  EXPECT_TRUE(ListBackups(folder / "nowhere").empty());
}

UnitSwap Swap(int place, char target, const std::string& known) {
  UnitSwap swap{{Unit::AtPlace(place), std::string(64, target)}, {}};
  for (const char c : known) swap.known.emplace_back(64, c);
  return swap;
}

// "16:F<01 200:a<": place, what is to be written, what may have been there.
std::string Told(const std::optional<UnfinishedWrite>& write) {
  if (!write) return "nothing";
  std::string text;
  for (const UnitSwap& swap : write->swaps) {
    text += std::to_string(swap.target.unit.place()) + ':' + swap.target.digits.front() + '<';
    for (const std::string& known : swap.known) text += known.front();
    text += ' ';
  }
  return text;
}

TEST(UnfinishedWrite, ComesBackAsItWas) {
  const test::TempFolder folder;
  const UnfinishedWrite write{
      2, "2026-11-22 01.02.03", {Swap(0, 'f', ""), Swap(16, 'F', "01"), Swap(226, 'a', "B")}};
  UnfinishedWrite read;
  ASSERT_FALSE(SaveUnfinishedWrite(folder / "write", write));
  ASSERT_FALSE(OpenUnfinishedWrite(folder / "write", read));
  EXPECT_EQ(read.model, 2);
  EXPECT_EQ(read.time, write.time);
  EXPECT_EQ(Told(read), "0:f< 16:F<01 226:a<B ");
  EXPECT_EQ(UnfinishedWriteText(read), UnfinishedWriteText(write));
  // The form is documented, and files of earlier versions must stay readable.
  EXPECT_EQ(UnfinishedWriteText({1, "2026-11-22 01.02.03", {Swap(17, '8', "F")}}),
            "Korvex RX-Q40 unfinished write 1\nmodel 1\ntime 2026-11-22 01.02.03\n0200 " +
                std::string(64, '8') + ' ' + std::string(64, 'F') + "\nend 1 02F9602E\n");
}

// One changed, lost or added character anywhere, and nothing of it is written to a radio.
TEST(UnfinishedWrite, NoDamageGoesUnnoticed) {
  const std::string good =
      UnfinishedWriteText({0, "2026-11-22 01.02.03", {Swap(3, '1', "2"), Swap(4, '3', "45")}});
  UnfinishedWrite read;
  ASSERT_FALSE(ReadUnfinishedWrite(good, "", read));
  for (std::size_t at = 0; at < good.size(); ++at) {
    for (const char c : {'1', ' ', '\n', '\0'}) {
      std::string bad = good;
      bad[at] = c;
      EXPECT_EQ(ReadUnfinishedWrite(bad, "", read).has_value(), bad != good) << at;
    }
    EXPECT_TRUE(ReadUnfinishedWrite(good.substr(0, at), "", read)) << at;
    EXPECT_TRUE(ReadUnfinishedWrite(std::string(good).insert(at, "1"), "", read)) << at;
  }
  // Sums that fit do not help what makes no sense.
  for (const auto& swaps : {std::vector<UnitSwap>{},
                            {Swap(4, '1', ""), Swap(3, '1', "")},
                            {Swap(3, 'G', "")},
                            {Swap(3, '1', "xyz")}}) {
    EXPECT_TRUE(ReadUnfinishedWrite(UnfinishedWriteText({0, "t", swaps}), "", read));
  }
  EXPECT_TRUE(ReadUnfinishedWrite(UnfinishedWriteText({4, "t", {Swap(3, '1', "")}}), "", read));
}

TEST(UnfinishedWrite, WritesOfOneRadioAddUpAndAreTakenOff) {
  const UnfinishedWrite first{1, "1", {Swap(2, 'A', "0"), Swap(5, 'B', "0"), Swap(9, 'C', "")}};
  const UnfinishedWrite second{1, "2", {Swap(1, 'D', ""), Swap(5, 'E', ""), Swap(9, 'F', "7")}};
  const UnfinishedWrite other{0, "3", {Swap(5, '1', "")}};
  // Of unit 5 the earlier one knew what was there, or it has written it.
  EXPECT_EQ(Told(Over(first, second)), "1:D< 2:A<0 5:E<0B 9:F<7 ");
  EXPECT_EQ(Told(Without(first, second)), "2:A<0 ");
  EXPECT_EQ(Told(Without(first, first)), "nothing");
  EXPECT_EQ(Told(Over(first, other)), Told(other));
  EXPECT_EQ(Told(Without(first, other)), Told(first));
}

}  // namespace
}  // namespace q40
