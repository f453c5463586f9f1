#include "radio/settings_codec.h"

#include <gtest/gtest.h>

#include "base/hex.h"
#include "document/defaults.h"
#include "document/document_cells.h"

namespace q40 {
namespace {

using V = SettingsValues;

// One byte of the default lines changed: what the control shows, what the line then holds, and what
// is written back.
TEST(Settings, OddBytesAreReadRepairedAndWrittenAsStated) {
  // kept: in the line after decoding
  // written: after encoding
  const std::tuple<std::size_t, int, const char*, int V::*, int, const char*, const char*> cases[] =
      {{0, 2, "01", &V::chkChannel, 1, "01", "01"}, {0, 2, "11", &V::chkChannel, 0, "11", "00"},
       {0, 5, "1E", &V::Slider1, 30, "1E", "1E"},   {0, 5, "1F", &V::Slider1, 0, "00", "00"},
       {0, 6, "0A", &V::Slider2, 10, "0A", "0A"},   {0, 6, "0B", &V::Slider2, 0, "00", "00"},
       {0, 8, "0A", &V::cmbDWait, 0, "00", "00"},   {0, 9, "FF", &V::cmbDFirst, 0, "00", "00"},
       {0, 10, "09", &V::cmbDOther, 9, "09", "09"}, {0, 11, "03", &V::cmbTB, 3, "03", "03"},
       {0, 11, "04", &V::cmbTB, 0, "00", "00"},     {0, 12, "10", &V::cmbTOT, 0, "00", "00"},
       {0, 13, "0F", &V::cmbTOTP, 15, "0F", "0F"},  {0, 13, "10", &V::cmbTOTP, 0, "10", "00"},
       {0, 14, "80", &V::chkLock, 1, "80", "01"},   {0, 15, "02", &V::chkAPO, 1, "02", "01"},
       {1, 0, "02", &V::chkBeep, 0, "02", "00"},    {1, 1, "07", &V::cmbScan, 2, "07", "02"},
       {1, 2, "09", &V::cmbLamp, 1, "09", "01"},    {1, 4, "04", &V::cmbBat, 0, "00", "00"},
       {1, 8, "4b", &V::cmbVod, 1, "4b", "4B"},     {1, 8, "BF", &V::cmbVod, 0, "BF", "BF"},
       {1, 9, "03", &V::cmbStb, 0, "00", "00"},     {1, 12, "0A", &V::cmbDBurst, 0, "00", "00"},
       {2, 7, "01", &V::chkVoxEn, 1, "01", "AA"},   {3, 13, "55", &V::chkReverseEn, 1, "55", "AA"}};
  for (const auto& [row, byte, digits, control, value, kept, written] : cases) {
    const auto at = 2 * static_cast<std::size_t>(byte);
    CloneImage image = FreshData().image;
    std::string& line = image.SettingsLine[row];
    line = ReplaceByte(line, digits, byte);
    const V values = DecodeSettings(image);
    EXPECT_EQ(values.*control, value) << row << "." << byte << " " << digits;
    EXPECT_EQ(line.substr(at, 2), kept) << row << "." << byte << " " << digits;
    EncodeSettings(values, image);
    EXPECT_EQ(line.substr(at, 2), written) << row << "." << byte << " " << digits;
  }
}

// Every control alone, against its byte by hand: nothing else may move.
TEST(Settings, EveryControlHasItsOwnByte) {
  // Line, byte, and its digits for the value 1.
  const std::tuple<int V::*, std::size_t, std::size_t, const char*> cases[] = {
      {&V::chkChannel, 0, 2, "01"},   {&V::Slider1, 0, 5, "01"},    {&V::Slider2, 0, 6, "01"},
      {&V::cmbDWait, 0, 8, "01"},     {&V::cmbDFirst, 0, 9, "01"},  {&V::cmbDOther, 0, 10, "01"},
      {&V::cmbTB, 0, 11, "01"},       {&V::cmbTOT, 0, 12, "01"},    {&V::cmbTOTP, 0, 13, "01"},
      {&V::chkLock, 0, 14, "01"},     {&V::chkAPO, 0, 15, "01"},    {&V::chkBeep, 1, 0, "01"},
      {&V::cmbScan, 1, 1, "01"},      {&V::cmbLamp, 1, 2, "01"},    {&V::cmbBat, 1, 4, "01"},
      {&V::cmbVod, 1, 8, "40"},       {&V::cmbStb, 1, 9, "01"},     {&V::cmbDBurst, 1, 12, "01"},
      {&V::chkScanEn, 2, 0, "AA"},    {&V::chkPowerEn, 2, 1, "AA"}, {&V::chkLockEn, 2, 2, "AA"},
      {&V::chkMoniEn, 2, 3, "AA"},    {&V::chkToneEn, 2, 4, "AA"},  {&V::chkBurstEn, 2, 5, "AA"},
      {&V::chkNameEn, 2, 6, "AA"},    {&V::chkVoxEn, 2, 7, "AA"},   {&V::chkAlertEn, 3, 12, "AA"},
      {&V::chkReverseEn, 3, 13, "AA"}};
  EXPECT_EQ(std::size(cases), Settings().size());
  const std::string zeros(32, '0');
  for (const auto& [control, line, byte, digits] : cases) {
    V values;
    values.*control = 1;
    std::array<std::string, 4> lines = {"A5000000D40000000000000000000000",
                                        "00000000000000000000000000000001", zeros, zeros};
    lines[line].replace(2 * byte, 2, digits);
    if (control == &V::chkChannel) lines[0].replace(8, 2, "D2");
    CloneImage image;
    image.SettingsLine.fill(zeros);
    EncodeSettings(values, image);
    EXPECT_EQ(image.SettingsLine, lines) << line << "." << byte;
    EXPECT_EQ(DecodeSettings(image), values) << line << "." << byte;
  }
}

TEST(Settings, EveryItemOfThePagesHasAByteThatCanHoldIt) {
  for (const Setting& item : Settings()) {
    if (item.items.empty()) continue;
    // The fifth tone burst is the one that does not come back.
    const int readable = static_cast<int>(item.items.size()) - (item.control == "cmbTB" ? 1 : 0);
    EXPECT_EQ(readable, item.top + 1) << item.control;
  }
}

TEST(Settings, WordsForValues) {
  const V values = {.Slider1 = 30, .cmbTB = 4, .cmbTOT = 1, .chkBeep = 1, .cmbStb = 2};
  const std::pair<int V::*, const char*> words[] = {{&V::Slider1, "30"},  {&V::cmbTB, "1450"},
                                                    {&V::cmbTOT, "30"},   {&V::chkBeep, "on"},
                                                    {&V::cmbStb, "DTMF"}, {&V::chkLock, "off"}};
  for (const auto& [value, text] : words) EXPECT_EQ(SettingText(values, SettingOf(value)), text);
  EXPECT_EQ(SettingText({.cmbTB = 5}, SettingOf(&SettingsValues::cmbTB)), "");
  EXPECT_EQ(CaptionOf(SettingOf(&SettingsValues::cmbDFirst)), "First Burst (msec)");
}

TEST(Settings, BytesWithoutAControlAreKeptOrForced) {
  CloneImage image;
  image.SettingsLine.fill(std::string(32, '7'));
  EncodeSettings(V(), image);
  //                                 0 1 2 3 4 5 6 7 8 9 101112131415
  EXPECT_EQ(image.SettingsLine[0], "A5000077D80000000000000000000000");
  EXPECT_EQ(image.SettingsLine[1], "00000000000000773700777700777701");
  EXPECT_EQ(image.SettingsLine[2], "00000000000000007777777777777777");
  EXPECT_EQ(image.SettingsLine[3], "77777777777777777777777700007777");
  image.SettingsLine[2].replace(16, 2, "5c");
  EncodeSettings({.cmbTB = 4}, image);
  EXPECT_EQ(image.SettingsLine[2].substr(16, 2), "5C");
  EXPECT_EQ(image.SettingsLine[0].substr(22, 2), "04");
}

TEST(Settings, StartChannelFollowsChannelModeUseAndParity) {
  CloneImage image = FreshData().image;
  const auto start = [&](int channel_mode) {
    EncodeSettings({.chkChannel = channel_mode}, image);
    return image.SettingsLine[0].substr(8, 2);
  };
  EXPECT_EQ(start(1), "D2");
  image.ChannelInUse[210] = true;  // the template does not count
  EXPECT_EQ(start(1), "D2");
  image.ChannelInUse[209] = true;
  EXPECT_EQ(start(1), "D1");
  image.ChannelInUse[5] = true;
  EXPECT_EQ(start(1), "05");
  const char* const parities[][2] = {{"00", "D4"}, {"01", "D8"}, {"1F", "D8"},
                                     {"0A", "D4"}, {"A1", "D4"}, {"99", "D8"},
                                     {"+1", "D4"}, {" 1", "D4"}, {"3.", "D8"}};
  for (const auto [byte, code] : parities) {
    image.SettingsLine[0] = ReplaceByte(image.SettingsLine[0], byte, 3);
    EXPECT_EQ(start(0), code) << byte;
  }
}

TEST(Settings, ShortLinesDoNotMatter) {
  CloneImage image;
  image.SettingsLine = {"", "0", "0102", ""};
  EncodeSettings(DecodeSettings(image), image);
  for (const std::string& line : image.SettingsLine) EXPECT_EQ(line.size(), 32U);
  EXPECT_EQ(image.SettingsLine[2], "AAAA0000000000000000000000000000");
  EXPECT_EQ(ReplaceByte("00", "xy", 3), "00xy00");
  // There is no seventeenth byte.
  const std::string line(32, '7');
  EXPECT_EQ(ReplaceByte(line, "xy", 15), std::string(30, '7') + "xy");
  EXPECT_EQ(ReplaceByte(line, "xy", 16), line);
}

TEST(Dial, TextsAndBlocks) {
  const std::tuple<const char*, const char*, const char*> cases[] = {
      {"12ab*#", "31323A3B3E3F00000000000000000000", "12AB*#"},
      {"", "00000000000000000000000000000000", ""},
      {"0123456789ABCD*#", "303132333435363738393A3B3C3D3E3F", "0123456789ABCD*#"},
      {"1-2 E3", "31323300000000000000000000000000", "123"},
      {"11111111111111112", "31313131313131313131313131313131", "1111111111111111"}};
  for (const auto& [text, block, back] : cases) {
    DialTexts texts;
    texts[9] = text;
    EXPECT_EQ(MakeDialData(texts, 9), block);
    UpDateDialData(texts, block, 9);
    EXPECT_EQ(texts[9], back);
  }
  DialTexts texts;
  UpDateDialData(texts, "31FF3200402F" + std::string(20, 'F'), 3);
  EXPECT_EQ(texts[3], "12");
}

TEST(Defaults, DependOnTheModel) {
  const std::tuple<int, int, const char*, const char*, const char*> cases[] = {
      {0, 0, "445.0000", "5.0000", "01000000000000000000000002000001"},
      {1, 2, "435.0000", "7.6000", "01000000010000000000000002000001"},
      {2, 0, "415.0000", "5.0000", "01000000000000000000000002000001"},
      {3, 0, "415.0000", "5.0000", "01000000000000000000000002000001"}};
  for (const auto& [model, step, uhf, offset, line1] : cases) {
    CloneData document = FreshData();
    ChangeModel(document, model);
    const CloneImage& image = document.image;
    EXPECT_EQ(image.SettingsLine[0], "A5000000000F03000002020000000000");
    EXPECT_EQ(image.SettingsLine[1], line1);
    EXPECT_EQ(image.TemplateChannel().value[1], step);
    EXPECT_EQ(image.TemplateChannel().cellText[0], "145.0000");
    EXPECT_EQ(image.UhfSpecialSet[0].cellText[0], uhf);
    EXPECT_EQ(image.UhfSpecialSet[4].cellText[7], offset);
  }
}

TEST(Defaults, ResetKeepsWhatNewKeeps) {
  CloneData document = FreshData();
  document.dial[0] = "123";
  document.image.VersionA = true;
  ShowBand(document.image, Band::kUhf);
  for (const std::size_t n : {0U, 7U, 209U, 210U}) {
    document.image.ChannelInUse[n] = true;
    document.image.MemoryTable[n].cellText[0] = "146.0000";
  }
  for (const Band band : kBands) SetStoredPresent(document.image, band, {true, true});
  ResetToDefaults(document);
  EXPECT_EQ(document.dial[0], "123");
  CloneImage expected = FreshData().image;
  expected.VersionA = true;
  ShowBand(expected, Band::kUhf);
  EXPECT_EQ(document.image, expected);

  document.image.ChannelInUse[5] = true;
  EXPECT_FALSE(ChangeModel(document, 0));  // the model that it is
  EXPECT_TRUE(document.image.ChannelInUse[5]);
  EXPECT_TRUE(ChangeModel(document, 1));
  EXPECT_FALSE(document.image.ChannelInUse[5]);
}

}  // namespace
}  // namespace q40
