#include "radio/channel_codec.h"

#include <gtest/gtest.h>

#include "base/hex.h"
#include "base/plain_text.h"
#include "document/defaults.h"
#include "radio/channel_fields.h"
#include "radio/name_codes.h"
#include "radio/unit.h"
#include "support/random_document.h"

namespace q40 {
namespace {

using enum Field;

constexpr auto kMemory = ChannelKind::kMemory;

// Bytes 0 to 31 of a used channel, every field different from its default.
const std::string kFullRecord =
    "88020C02014550000007600008266700"
    "3A5c3B5C30000100020101000102010A";

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
  // In the order of Field.
  const decltype(ChannelRecord::cellText) texts = {
      "*145.5000", "12.5KHz", "DCS", "88.5Hz", "250.3Hz", "754",   "+Shift", "7.6000", "Mid", "10",
      "20dB",      "BS-2",    "On",  "On",     "Narrow",  "A(B(0", "",       "On",     "023"};
  const decltype(ChannelRecord::value) numbers = {1'455'000, 2, 12, 8, 38, 103, 2, 76'000, 1, 10,
                                                  2,         2, 1,  1, 1,  1,   1, 1,      0};
  EXPECT_EQ(image.MemoryTable[5].cellText, texts);
  EXPECT_EQ(image.MemoryTable[5].value, numbers);
  EXPECT_TRUE(image.ChannelInUse[5]);
}

// One byte changed in the full record, and what its field then reads.
TEST(MemoryChannel, OddBytesReadAsStated) {
  const auto expect = [](std::size_t byte, const char* digits, Field field, int number,
                         std::string_view text) {
    const CloneImage image = Decoded(WithByte(kFullRecord, byte, digits));
    EXPECT_EQ(image.MemoryTable[5].Number(kMemory, field), number) << byte << " " << digits;
    EXPECT_EQ(image.MemoryTable[5].Text(kMemory, field), text) << byte << " " << digits;
  };
  const std::tuple<std::size_t, const char*, Field, int> codes[] = {
      {1, "01", kShift, 1},        {1, "03", kShift, 0},  {1, "FF", kShift, 0},
      {2, "00", kTone, 0},         {2, "01", kTone, 1},   {2, "02", kTone, 3},
      {2, "03", kTone, 3},         {2, "04", kTone, 0},   {2, "F9", kTone, 12},
      {2, "0A", kTone, 12},        {3, "05", kStep, 2},   {3, "01", kStep, 0},
      {3, "06", kStep, 0},         {3, "FF", kStep, 0},   {22, "02", kClock, 0},
      {24, "03", kBatterySave, 0}, {25, "02", kPower, 2}, {25, "03", kPower, 0},
      {26, "FF", kBclo, 0},        {28, "02", kRpt, 0},   {29, "03", kAtt, 0},
      {30, "02", kBandwidth, 0},   {0, "80", kSkip, 0},   {0, "8F", kSkip, 0}};
  for (const auto& [byte, digits, field, code] : codes)
    expect(byte, digits, field, code, CodeText(field, code));
  expect(4, "91", kFrequency, 1'455'000, "*145.5000");
  expect(4, "0A", kFrequency, 0, "*A45.5000");
  expect(4, "00", kFrequency, 455'000, "*045.5000");
  expect(5, "4a", kFrequency, 140'000, "*14A.5000");
  expect(5, "x5", kFrequency, 1'055'000, "*105.5000");
  expect(8, "12", kShiftFrequency, 12'076'000, "1207.6000");
  expect(8, "01", kShiftFrequency, 76'000, "7.6000");
  expect(9, "10", kShiftFrequency, 6'000, "0.6000");
  expect(17, "00", kName, 1, "AB(0");
  for (const char* flags : {"90", "F8", "08", "00", "18"})
    EXPECT_FALSE(Decoded(WithByte(kFullRecord, 0, flags)).ChannelInUse[5]) << flags;
}

TEST(MemoryChannel, IndexOutsideItsListIsRefusedUnlessTheChannelIsNotInUse) {
  // Where it can be, the first index behind the list.
  const std::pair<int, const char*> cases[] = {
      {12, "27"}, {13, "63"}, {14, "68"}, {15, "FF"}, {31, "0B"}};
  for (const auto& [byte, digits] : cases) {
    CloneImage image = Decoded(kFullRecord);
    const CloneImage before = image;
    const std::string bad = WithByte(kFullRecord, static_cast<std::size_t>(byte), digits);
    const auto error = DecodeMemoryChannel(bad, 5, image);
    ASSERT_TRUE(error) << byte;
    EXPECT_EQ(error->byte, byte);
    EXPECT_EQ(image, before);
    EXPECT_FALSE(DecodeMemoryChannel(WithByte(bad, 0, "00"), 5, image));
    EXPECT_FALSE(image.ChannelInUse[5]);
  }
  // Of several the first one is named.
  CloneImage image;
  const std::string two = WithByte(WithByte(kFullRecord, 13, "63"), 31, "FF");
  EXPECT_EQ(DecodeMemoryChannel(two, 5, image)->Message(),
            "byte 13 (RxTone) holds 0x63, which is outside its list");
}

TEST(MemoryChannel, AllZerosAndNothingReadAsAnEmptyChannel) {
  const CloneImage image = Decoded(std::string(64, '0'));
  EXPECT_EQ(image.MemoryTable[5].Text(kMemory, kFrequency), "000.0000");
  EXPECT_EQ(image.MemoryTable[5].Text(kMemory, kShiftFrequency), "0.0000");
  EXPECT_EQ(image.MemoryTable[5].Text(kMemory, kTxTone), "67.0Hz");
  EXPECT_FALSE(image.ChannelInUse[5]);
  for (const char* record : {"", "0000"}) EXPECT_EQ(Decoded(record), image);
}

TEST(MemoryChannel, EncodesItsNumbersAndTheName) {
  const CloneImage image = Decoded(kFullRecord);
  // The name read as "A(B(0": each "(" goes out with its lower-case digit.
  const std::string digits = "88020C020145500000076000082667003A5c3B5c30000100020101000102010A";
  const auto encoded = [](const CloneImage& i) {
    return std::string(EncodeMemoryChannel(i, 5)->Joined());
  };
  EXPECT_EQ(encoded(image), digits);
  // Numbers count, texts do not; of a switch any number but 0 is written as 1.
  CloneImage other = image;
  for (const std::size_t column : {0U, 1U, 2U, 7U, 10U})
    other.MemoryTable[5].cellText[column] = "?";
  for (const std::size_t column : {12U, 13U, 14U, 17U}) other.MemoryTable[5].value[column] = 7;
  EXPECT_EQ(encoded(other), digits);
  // A channel that is not in use differs in byte 0 alone.
  other.ChannelInUse[5] = false;
  EXPECT_EQ(encoded(other), WithByte(digits, 0, "08"));
  // Split and every step can be written, though they do not come back.
  other.MemoryTable[5].value[6] = 3;
  other.MemoryTable[5].value[1] = 5;
  EXPECT_EQ(encoded(other).substr(2, 6), "030C05");
}

TEST(MemoryChannel, ANumberOutsideItsListCannotBeEncoded) {
  for (const Field field : {kStep, kTxTone, kRxTone, kTxDcs, kMid, kRxDcs, kShiftFrequency}) {
    for (const int number : {-1, 104}) {
      if (field == kShiftFrequency && number > 0) continue;
      CloneImage image = Decoded(kFullRecord);
      image.MemoryTable[5].Set(kMemory, field, number, "");
      EXPECT_DEBUG_DEATH(EXPECT_FALSE(EncodeMemoryChannel(image, 5)), "encodable") << number;
    }
  }
}

TEST(SpecialChannel, UsesItsOwnColumnsAndKnowsSplit) {
  SpecialSet set;
  const std::string record = WithByte(WithByte(kFullRecord, 1, "03"), 15, "01");
  ASSERT_FALSE(DecodeSpecialChannel(record, 1, set));
  EXPECT_EQ(set[1].cellText[0], "145.5000");
  EXPECT_EQ(set[1].cellText[6], "Split");
  EXPECT_EQ(set[1].cellText[15], "On");
  EXPECT_EQ(set[1].cellText[16], "025");
  EXPECT_EQ(set[0], ChannelRecord());
  EXPECT_EQ(EncodeSpecialChannel(set, {}, 1)->Joined(),
            "80030C020145500000076000082667010000000000000100020101000102010A");
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
  const std::pair<const char*, const char*> cases[] = {
      {"09AZ", "30393A53"},       {" *#+", "54555657"},    {"-/\\=", "58595A5B"},
      {"()$_?", "5c5C5E5F6A"},    {":;<>@", "3334353739"}, {"!\"',.", "0000000000"},
      {"az[]^`", "000000000000"}, {"~{", "0000"}};
  for (const auto& [characters, digits] : cases) {
    std::string written;
    for (const char character : std::string(characters)) {
      const auto code = NameCodeDigits(static_cast<unsigned char>(character));
      written.append(code.begin(), code.end());
    }
    EXPECT_EQ(written, digits) << characters;
  }
}

TEST(Names, EveryCodeHasItsCharacter) {
  std::string read;
  for (int code = 0; code < 256; ++code) {
    const char character = NameCharacter(code);
    if (character != '\0') read += character;
  }
  EXPECT_EQ(read, "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ *#+-/\\=()$_" + std::string(18, '?'));
  EXPECT_EQ(NameCharacter(0x60), '?');
}

// \303\204 is a character of two bytes.
TEST(Names, CharactersCountNotBytes) {
  const std::pair<std::string_view, const char*> cases[] = {
      {"ABCDEFGH", "3A3B3C3D3E3F"},
      {"A\303\204B", "3A003B000000"},
      {"\377A", "003A00000000"},
      // Cut off in its last character; what lies behind is none of its business.
      {std::string_view("A\303\204B", 2), "3A0000000000"}};
  for (const auto& [name, digits] : cases) {
    const auto written = NameDigits(name);
    EXPECT_EQ(std::string(written.begin(), written.end()), digits);
  }
  EXPECT_EQ(FirstCharacters("\303\204\342\202\254ab", 2), "\303\204\342\202\254");
}

TEST(Hex, EveryCharacterIsADigitOrZero) {
  std::string digits;
  for (int c = 0; c < 256; ++c) {
    const char character = static_cast<char>(c);
    if (IsHexDigit(character)) digits += character;
    EXPECT_EQ(HexByteValue(HexByteText(c), 0), c);
  }
  EXPECT_EQ(digits, "0123456789ABCDEFabcdef");
  EXPECT_EQ(HexByteValue(std::string_view("12A5", 3), 2), 0xA0);
  EXPECT_EQ(UpperCase("[`az{\344"), "[`AZ{\344");
}

TEST(PlainText, ControlCharactersAreEscapedAndLongTextsCut) {
  EXPECT_EQ(Printable("\x1F ~\x7F\n\xC3\x84"), "\\x1F ~\\x7F\\x0A\xC3\x84");
  EXPECT_EQ(Quoted("a\tb"), "\"a\\x09b\"");
  const std::string long_text(32, 'x');
  EXPECT_EQ(Quoted(long_text), '"' + long_text + '"');
  EXPECT_EQ(Quoted(long_text + "y"), '"' + long_text + "...\"");
}

TEST(Vocabulary, AnUnknownNumberIsTheFirstWordAndNoEntryOfAList) {
  EXPECT_EQ(CodeText(kTone, 2), "None");
  EXPECT_EQ(CodeText(kStep, 7), "");
  EXPECT_EQ(CodeText(kMid, -1), "");
}

TEST(Units, HaveTheirPlacesAddressesAndNames) {
  const std::tuple<int, Address, const char*> cases[] = {
      {1, 0x0040, "settings area 2"},         {6, 0x0100, "VHF special channel PL"},
      {7, 0x00E0, "UHF special channel VFO"}, {16, 0x1D80, "auto-dialer memories M9 and St"},
      {216, 0x1AE0, "memory channel 199"},    {217, 0x1B00, "memory channel D0"}};
  for (const auto& [place, address, name] : cases) {
    const Unit unit = Unit::At(address).value();
    EXPECT_EQ(unit.place(), place) << name;
    EXPECT_EQ(unit.Name(), name);
  }
  for (const Address none : std::initializer_list<Address>{0x0000, 0x0210, 0x1C40})
    EXPECT_FALSE(Unit::At(none)) << none;
  for (const Unit unit : UnitsOf(Half::kBoth)) EXPECT_EQ(Unit::At(unit.address()), unit);
}

TEST(Decimal, NumbersAndTexts) {
  const std::pair<const char*, std::int64_t> numbers[] = {
      {"145.5", 1'455'000}, {"\t+7.6 MHz", 76'000}, {"-1", -10'000},
      {"abc", 0},           {"1.2.3", 12'000},      {".5", 5'000},
      {"88.5Hz", 885'000},  {"145,5", 1'450'000},   {"1e3", 10'000},
      {"&H10", 0},          {"0.00005", 1},         {"0.00004", 0}};
  for (const auto& [text, number] : numbers) EXPECT_EQ(LeadingNumber(text), number) << text;
  EXPECT_GT(LeadingNumber("18446744073709551616"), kLargestFrequency);  // 2 to the 64
  EXPECT_LT(LeadingNumber("-18446744073709551616.5"), 0);
  EXPECT_EQ(LeadingFrequency("9999.9999"), 99'999'999);
  for (const char* bad : {"10000", "9999.99995", "-0.1", "99999999999999999999999999"})
    EXPECT_EQ(LeadingFrequency(bad), 0) << bad;
  EXPECT_EQ(FrequencyText(0), ".0000");
  EXPECT_EQ(OffsetText(6'000), "0.6000");
}

}  // namespace
}  // namespace q40
