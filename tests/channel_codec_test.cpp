#include "image/channel_codec.h"

#include <gtest/gtest.h>

#include "image/defaults.h"
#include "image/hex.h"
#include "image/name_codes.h"
#include "image/plain_text.h"
#include "image/vocabulary.h"
#include "support/random_document.h"

namespace q40 {
namespace {

constexpr auto kMemory = ChannelKind::kMemory;

// Bytes 0 to 31 of a used channel, every field different from its default.
const std::string kFullRecord =
    "88"
    "02"
    "0C"
    "02"
    "01455000"
    "00076000"
    "08"
    "26"
    "67"
    "00"
    "3A5c3B5C3000"
    "01"
    "00"
    "02"
    "01"
    "01"
    "00"
    "01"
    "02"
    "01"
    "0A";

std::string WithByte(std::string record, std::size_t byte, const char* digits) {
  return record.replace(2 * byte, 2, digits);
}

CloneImage Decoded(const std::string& record, int n = 5) {
  CloneImage image;
  EXPECT_FALSE(DecodeMemoryChannel(record, n, image));
  return image;
}

TEST(MemoryChannel, DecodesEveryField) {
  const CloneImage image = Decoded(kFullRecord);
  const struct {
    Field field;
    int number;
    const char* text;
  } expected[] = {{Field::kFrequency, 1'455'000, "*145.5000"},
                  {Field::kStep, 2, "12.5KHz"},
                  {Field::kTone, 12, "DCS"},
                  {Field::kTxTone, 8, "88.5Hz"},
                  {Field::kRxTone, 38, "250.3Hz"},
                  {Field::kTxDcs, 103, "754"},
                  {Field::kShift, 2, "+Shift"},
                  {Field::kShiftFrequency, 76'000, "7.6000"},
                  {Field::kPower, 1, "Mid"},
                  {Field::kMid, 10, "10"},
                  {Field::kAtt, 2, "20dB"},
                  {Field::kBatterySave, 2, "BS-2"},
                  {Field::kClock, 1, "On"},
                  {Field::kBclo, 1, "On"},
                  {Field::kBandwidth, 1, "Narrow"},
                  {Field::kName, 1, "A(B(0"},
                  {Field::kSkip, 1, ""},
                  {Field::kRpt, 1, "On"},
                  {Field::kRxDcs, 0, "023"}};
  for (const auto& e : expected) {
    EXPECT_EQ(image.MemoryTable[5].Number(kMemory, e.field), e.number) << static_cast<int>(e.field);
    EXPECT_EQ(image.MemoryTable[5].Text(kMemory, e.field), e.text) << static_cast<int>(e.field);
  }
  EXPECT_TRUE(image.ChannelInUse[5]);
}

TEST(MemoryChannel, TouchesOnlyItsRowAndFlag) {
  CloneImage before = test::RandomDocument(1).image;
  CloneImage after = before;
  ASSERT_FALSE(DecodeMemoryChannel(kFullRecord, 5, after));
  EXPECT_NE(after.MemoryTable[5], before.MemoryTable[5]);
  after.MemoryTable[5] = before.MemoryTable[5];
  after.ChannelInUse[5] = before.ChannelInUse[5];
  EXPECT_EQ(after, before);
}

// One byte changed in the full record, and what its field then reads.
TEST(MemoryChannel, OddBytesReadAsStated) {
  const struct {
    std::size_t byte;
    const char* digits;
    Field field;
    int number;
    const char* text;
  } cases[] = {{1, "01", Field::kShift, 1, "-Shift"},
               {1, "03", Field::kShift, 0, "None"},
               {1, "FF", Field::kShift, 0, "None"},
               {2, "00", Field::kTone, 0, "None"},
               {2, "01", Field::kTone, 1, "Tone"},
               {2, "02", Field::kTone, 3, "TSQ"},
               {2, "03", Field::kTone, 3, "TSQ"},
               {2, "04", Field::kTone, 0, "None"},
               {2, "F9", Field::kTone, 12, "DCS"},
               {2, "0A", Field::kTone, 12, "DCS"},
               {17, "00", Field::kName, 1, "AB(0"},
               {3, "05", Field::kStep, 2, "12.5KHz"},
               {3, "01", Field::kStep, 0, "5KHz"},
               {3, "06", Field::kStep, 0, "5KHz"},
               {3, "FF", Field::kStep, 0, "5KHz"},
               {4, "91", Field::kFrequency, 1'455'000, "*145.5000"},
               {4, "0A", Field::kFrequency, 0, "*A45.5000"},
               {4, "00", Field::kFrequency, 455'000, "*045.5000"},
               {5, "4a", Field::kFrequency, 140'000, "*14A.5000"},
               {5, "x5", Field::kFrequency, 1'055'000, "*105.5000"},
               {9, "10", Field::kShiftFrequency, 6'000, "0.6000"},
               {8, "12", Field::kShiftFrequency, 12'076'000, "1207.6000"},
               {8, "01", Field::kShiftFrequency, 76'000, "7.6000"},
               {22, "02", Field::kClock, 0, "Off"},
               {24, "03", Field::kBatterySave, 0, "Off"},
               {25, "02", Field::kPower, 2, "Hi"},
               {25, "03", Field::kPower, 0, "Lo"},
               {26, "FF", Field::kBclo, 0, "Off"},
               {28, "02", Field::kRpt, 0, "Off"},
               {29, "03", Field::kAtt, 0, "Off"},
               {30, "02", Field::kBandwidth, 0, "Normal"},
               {0, "80", Field::kSkip, 0, ""},
               {0, "8F", Field::kSkip, 0, ""}};
  for (const auto& c : cases) {
    std::string record = WithByte(kFullRecord, c.byte, c.digits);
    if (c.byte == 9) record = WithByte(record, 10, "60");
    const CloneImage image = Decoded(record);
    EXPECT_EQ(image.MemoryTable[5].Number(kMemory, c.field), c.number) << c.byte << " " << c.digits;
    EXPECT_EQ(image.MemoryTable[5].Text(kMemory, c.field), c.text) << c.byte << " " << c.digits;
  }
  for (const char* flags : {"90", "F8", "08", "00", "18"}) {
    EXPECT_FALSE(Decoded(WithByte(kFullRecord, 0, flags)).ChannelInUse[5]) << flags;
  }
}

TEST(MemoryChannel, IndexOutsideItsListIsRefusedUnlessTheChannelIsNotInUse) {
  for (const std::size_t byte : {12U, 13U, 14U, 15U, 31U}) {
    CloneImage image = Decoded(kFullRecord);
    const CloneImage before = image;
    const std::string bad = WithByte(kFullRecord, byte, "FF");
    const auto error = DecodeMemoryChannel(bad, 5, image);
    ASSERT_TRUE(error) << byte;
    EXPECT_EQ(error->byte, static_cast<int>(byte));
    EXPECT_EQ(image, before);
    EXPECT_FALSE(DecodeMemoryChannel(WithByte(bad, 0, "00"), 5, image));
    EXPECT_FALSE(image.ChannelInUse[5]);
  }
  CloneImage image;
  // Of several the first one is named.
  const std::string two = WithByte(WithByte(kFullRecord, 13, "63"), 31, "FF");
  EXPECT_EQ(DecodeMemoryChannel(two, 5, image)->Message(),
            "byte 13 (RxTone) holds 0x63, which is outside its list");
  // The first index behind each list.
  EXPECT_TRUE(DecodeMemoryChannel(WithByte(kFullRecord, 12, "27"), 5, image));
  EXPECT_TRUE(DecodeMemoryChannel(WithByte(kFullRecord, 14, "68"), 5, image));
  EXPECT_TRUE(DecodeMemoryChannel(WithByte(kFullRecord, 31, "0B"), 5, image));
}

TEST(MemoryChannel, AllZerosAndNothingReadAsAnEmptyChannel) {
  for (const std::string& record : {std::string(64, '0'), std::string(), std::string("0000")}) {
    const CloneImage image = Decoded(record);
    const ChannelRecord& row = image.MemoryTable[5];
    const char* const texts[19] = {"000.0000", "5KHz", "None", "67.0Hz", "67.0Hz", "023", "None",
                                   "0.0000",   "Lo",   "00",   "Off",    "Off",    "Off", "Off",
                                   "Normal",   "",     "",     "Off",    "023"};
    for (std::size_t column = 0; column < 19; ++column)
      EXPECT_EQ(row.cellText[column], texts[column]);
    EXPECT_FALSE(image.ChannelInUse[5]);
  }
}

TEST(MemoryChannel, EncodesItsNumbersAndTheName) {
  const CloneImage image = Decoded(kFullRecord);
  const auto lines = EncodeMemoryChannel(image, 5);
  ASSERT_TRUE(lines);
  // The name read as "A(B(0": each "(" goes out with its lower-case digit.
  EXPECT_EQ(lines->First(), kFullRecord.substr(0, 32));
  EXPECT_EQ(lines->Second(), "3A5c3B5c30000100020101000102010A");
  // Numbers count, texts do not; a channel that is not in use differs in byte 0 alone.
  CloneImage other = image;
  for (std::size_t column : {0U, 1U, 2U, 7U, 10U}) other.MemoryTable[5].cellText[column] = "?";
  EXPECT_EQ(EncodeMemoryChannel(other, 5)->Joined(), lines->Joined());
  other.ChannelInUse[5] = false;
  EXPECT_EQ(EncodeMemoryChannel(other, 5)->Joined(), "08" + std::string(lines->Joined().substr(2)));
  // A number outside its list cannot be written.
  for (const std::size_t column : {1U, 3U, 4U, 5U, 9U, 18U}) {
    CloneImage bad = image;
    for (const int number : {-1, 104}) {
      bad.MemoryTable[5].value[column] = number;
      EXPECT_DEBUG_DEATH(EXPECT_FALSE(EncodeMemoryChannel(bad, 5)), "encodable") << column;
    }
  }
  CloneImage negative = image;
  negative.MemoryTable[5].value[7] = -1;
  EXPECT_DEBUG_DEATH(EXPECT_FALSE(EncodeMemoryChannel(negative, 5)), "encodable");
  // Of a switch any number but 0 is written as 1.
  CloneImage switched = image;
  for (const std::size_t column : {12U, 13U, 14U, 17U}) switched.MemoryTable[5].value[column] = 7;
  EXPECT_EQ(EncodeMemoryChannel(switched, 5)->Joined(), lines->Joined());
  // Split and every step can be written, though they do not come back.
  other.MemoryTable[5].value[6] = 3;
  other.MemoryTable[5].value[1] = 5;
  EXPECT_EQ(EncodeMemoryChannel(other, 5)->First().substr(2, 6), "030C05");
}

TEST(MemoryChannel, WhatWasDecodedOnceComesBackUnchanged) {
  std::mt19937 random(7);
  for (int i = 0; i < 300; ++i) {
    const std::string record = test::RandomRecord(random, i % 2 == 0);
    const auto lines = EncodeMemoryChannel(Decoded(record, i % 210), i % 210);
    ASSERT_TRUE(lines);
    EXPECT_EQ(lines->Joined(), record);
  }
}

TEST(SpecialChannel, UsesItsOwnColumnsAndKnowsSplit) {
  SpecialSet set;
  const std::string record = WithByte(WithByte(kFullRecord, 1, "03"), 15, "01");
  ASSERT_FALSE(DecodeSpecialChannel(record, 1, set));
  EXPECT_EQ(set[1].cellText[0], "145.5000");
  EXPECT_EQ(set[1].cellText[6], "Split");
  EXPECT_EQ(set[1].value[6], 3);
  EXPECT_EQ(set[1].cellText[14], "Narrow");
  EXPECT_EQ(set[1].cellText[15], "On");
  EXPECT_EQ(set[1].cellText[16], "025");
  EXPECT_EQ(set[1].value[16], 1);
  EXPECT_EQ(set[0], ChannelRecord());
  const auto lines = EncodeSpecialChannel(set, {}, 1);
  ASSERT_TRUE(lines);
  EXPECT_EQ(lines->First(), "80030C02014550000007600008266701");
  EXPECT_EQ(lines->Second(), "0000000000000100020101000102010A");
}

TEST(SpecialChannel, PhAndPlNeedFlagAndFrequency) {
  SpecialSet set;
  for (int k = 0; k < 5; ++k) ASSERT_FALSE(DecodeSpecialChannel(kFullRecord, k, set));
  const auto flags = [&](PresentPair present, int k) {
    return std::string(EncodeSpecialChannel(set, present, k)->First().substr(0, 8));
  };
  EXPECT_EQ(flags({false, false}, kRptRow), "80020C02");
  EXPECT_EQ(flags({false, true}, kPhRow), "00020C02");
  EXPECT_EQ(flags({true, false}, kPhRow), "80020C02");
  EXPECT_EQ(flags({true, false}, kPlRow), "00020C02");
  set[kPlRow].value[0] = 0;
  EXPECT_EQ(flags({true, true}, kPlRow), "00020C02");
}

TEST(SpecialChannel, ErasedPhIsReadableAnErasedCallIsNot) {
  SpecialSet set;
  const std::string zero_frequency = std::string(8, 'F') + "00000000" + std::string(48, 'F');
  EXPECT_TRUE(DecodeSpecialChannel(zero_frequency, kCallRow, set));
  EXPECT_EQ(set[kCallRow], ChannelRecord());
  EXPECT_FALSE(DecodeSpecialChannel(zero_frequency, kPhRow, set));
  EXPECT_EQ(set[kPhRow].cellText[3], "67.0Hz");
  // FFF.FFFF is no number and counts as 0 too.
  EXPECT_FALSE(DecodeSpecialChannel(std::string(64, 'F'), kPlRow, set));
}

TEST(Names, EveryCharacterHasItsCode) {
  const struct {
    const char* characters;
    const char* digits;
  } cases[] = {{"09AZ", "30393A53"},       {" *#+", "54555657"},    {"-/\\=", "58595A5B"},
               {"()$_?", "5c5C5E5F6A"},    {":;<>@", "3334353739"}, {"!\"',.", "0000000000"},
               {"az[]^`", "000000000000"}, {"~{", "0000"}};
  for (const auto& c : cases) {
    std::string digits;
    for (const char character : std::string(c.characters)) {
      const auto code = NameCodeDigits(static_cast<unsigned char>(character));
      digits.append(code.begin(), code.end());
    }
    EXPECT_EQ(digits, c.digits) << c.characters;
  }
}

TEST(Names, EveryCodeHasItsCharacter) {
  std::string read;
  for (int code = 0; code < 256; ++code) {
    const char character = NameCharacter(code);
    if (character != '\0') read += character;
  }
  EXPECT_EQ(read, "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ *#+-/\\=()$_" + std::string(18, '?'));
  EXPECT_EQ(NameCharacter(0x30), '0');
  EXPECT_EQ(NameCharacter(0x60), '?');
  EXPECT_EQ(NameCharacter(0x71), '?');
}

TEST(Names, CharactersCountNotBytes) {
  const auto digits = [](std::string_view name) {
    const auto array = NameDigits(name);
    return std::string(array.begin(), array.end());
  };
  EXPECT_EQ(digits("ABCDEFGH"), "3A3B3C3D3E3F");
  EXPECT_EQ(digits("A\xC3\x84"
                   "B"),
            "3A003B000000");
  EXPECT_EQ(digits("\xFF"
                   "A"),
            "003A00000000");
  // Cut off in its last character; what lies behind is none of its business.
  EXPECT_EQ(digits(std::string_view("A\xC3\x84"
                                    "B",
                                    2)),
            "3A0000000000");
  EXPECT_EQ(FirstCharacters("\xC3\x84\xE2\x82\xAC"
                            "ab",
                            2),
            "\xC3\x84\xE2\x82\xAC");
  EXPECT_EQ(FirstCharacters("ab", 6), "ab");
  EXPECT_EQ(FirstCharacters("\xF0\x9F\x93\xBB\xE2\x82", 2), "\xF0\x9F\x93\xBB\xE2\x82");
}

TEST(Hex, BitsOfADigit) {
  EXPECT_EQ(HexDigitToBits('0'), "0000");
  EXPECT_EQ(HexDigitToBits('6'), "0110");
  EXPECT_EQ(HexDigitToBits('f'), "1111");
  for (const char digit : std::string("0123456789ABCDEF")) {
    EXPECT_EQ(BitsToHexDigit(HexDigitToBits(digit)), digit);
  }
}

TEST(Hex, EveryCharacterIsADigitOrZero) {
  std::string digits;
  for (int c = 0; c < 256; ++c) {
    const char character = static_cast<char>(c);
    if (IsHexDigit(character)) digits += character;
    EXPECT_EQ(HexDigitValue(character), HexByteValue(std::string{'0', character}, 0));
    const bool lower = character >= 'a' && character <= 'z';
    EXPECT_EQ(UpperCase(character), lower ? static_cast<char>(character - 32) : character);
  }
  EXPECT_EQ(digits, "0123456789ABCDEFabcdef");
  for (int value = 0; value < 256; ++value) EXPECT_EQ(HexByteValue(HexByteText(value), 0), value);
  EXPECT_EQ(HexByteValue("1g", 0), 0x10);
  EXPECT_EQ(HexByteValue(std::string_view("12A5", 3), 2), 0xA0);
  EXPECT_EQ(HexByteValue(std::string_view("12A5", 3), 3), 0);
}

TEST(PlainText, ControlCharactersAreEscapedAndLongTextsCut) {
  EXPECT_EQ(Printable("\x1F ~\x7F\n\xC3\x84"), "\\x1F ~\\x7F\\x0A\xC3\x84");
  EXPECT_EQ(Quoted("a\tb"), "\"a\\x09b\"");
  const std::string long_text(32, 'x');
  EXPECT_EQ(Quoted(long_text), '"' + long_text + '"');
  EXPECT_EQ(Quoted(long_text + "y"), '"' + long_text + "...\"");
}

TEST(Vocabulary, NumbersAndWords) {
  const struct {
    Field field;
    int number;
    const char* text;
  } cases[] = {{Field::kTone, 3, "TSQ"},   {Field::kTone, 2, "None"},  {Field::kPower, 9, "Lo"},
               {Field::kStep, 6, "30KHz"}, {Field::kStep, 7, ""},      {Field::kMid, -1, ""},
               {Field::kName, 1, ""},      {Field::kRxDcs, 103, "754"}};
  for (const auto& c : cases) EXPECT_EQ(CodeText(c.field, c.number), c.text) << c.text;
}

TEST(MemoryMap, EveryAddressHasItsName) {
  const struct {
    Address address;
    const char* name;
  } cases[] = {{0x0020, "settings area 1"},        {0x0040, "settings area 2"},
               {0x0100, "VHF special channel PL"}, {0x01E0, "UHF special channel RPT"},
               {0x0200, "memory channel 0"},       {0x1AE0, "memory channel 199"},
               {0x1B00, "memory channel D0"},      {0x1C20, "memory channel D9"},
               {0x1C40, "address 1C40"},           {0x0210, "address 0210"},
               {0x0000, "address 0000"},           {0x1D80, "auto-dialer memories M9 and St"}};
  for (const auto& c : cases) EXPECT_EQ(UnitName(c.address), c.name);
}

TEST(Decimal, NumbersAndTexts) {
  const struct {
    const char* text;
    std::int64_t number;
  } numbers[] = {{"145.5", 1'455'000}, {" +7.6 MHz", 76'000}, {"-1", -10'000},
                 {"abc", 0},           {"1.2.3", 12'000},     {".5", 5'000},
                 {"88.5Hz", 885'000},  {"145,5", 1'450'000},  {"1e3", 10'000},
                 {"&H10", 0},          {"0.00005", 1},        {"0.00004", 0}};
  for (const auto& c : numbers) EXPECT_EQ(LeadingNumber(c.text), c.number) << c.text;
  EXPECT_GT(LeadingNumber("18446744073709551616"), kLargestFrequency);  // 2 to the 64
  EXPECT_LT(LeadingNumber("-18446744073709551616.5"), 0);
  EXPECT_EQ(LeadingFrequency("9999.9999"), 99'999'999);
  for (const char* bad : {"10000", "9999.99995", "-0.1", "99999999999999999999999999"}) {
    EXPECT_EQ(LeadingFrequency(bad), 0) << bad;
  }
  EXPECT_EQ(FrequencyText(1'455'000), "145.5000");
  EXPECT_EQ(FrequencyText(455'000), "45.5000");
  EXPECT_EQ(FrequencyText(0), ".0000");
  EXPECT_EQ(OffsetText(6'000), "0.6000");
  EXPECT_EQ(OffsetText(125'000), "12.5000");
}

}  // namespace
}  // namespace q40
