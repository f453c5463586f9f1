#include "lists/short_name.h"

#include <algorithm>
#include <optional>

#include "base/decimal.h"
#include "base/digits.h"
#include "base/hex.h"
#include "base/plain_text.h"
#include "radio/channel_record.h"

namespace q40 {
namespace {

struct Letter {
  std::string_view with;
  std::string_view without;
};
// By the German habit where there is one.
constexpr Letter kLetters[] = {
    {"Ä", "AE"}, {"Ö", "OE"}, {"Ü", "UE"}, {"ä", "ae"}, {"ö", "oe"}, {"ü", "ue"}, {"ß", "ss"},
    {"À", "A"},  {"Á", "A"},  {"Â", "A"},  {"Ã", "A"},  {"Å", "A"},  {"Æ", "AE"}, {"Ç", "C"},
    {"È", "E"},  {"É", "E"},  {"Ê", "E"},  {"Ë", "E"},  {"Ì", "I"},  {"Í", "I"},  {"Î", "I"},
    {"Ï", "I"},  {"Ñ", "N"},  {"Ò", "O"},  {"Ó", "O"},  {"Ô", "O"},  {"Õ", "O"},  {"Ø", "OE"},
    {"Ù", "U"},  {"Ú", "U"},  {"Û", "U"},  {"Ý", "Y"},  {"à", "a"},  {"á", "a"},  {"â", "a"},
    {"ã", "a"},  {"å", "a"},  {"æ", "ae"}, {"ç", "c"},  {"è", "e"},  {"é", "e"},  {"ê", "e"},
    {"ë", "e"},  {"ì", "i"},  {"í", "i"},  {"î", "i"},  {"ï", "i"},  {"ñ", "n"},  {"ò", "o"},
    {"ó", "o"},  {"ô", "o"},  {"õ", "o"},  {"ø", "oe"}, {"ù", "u"},  {"ú", "u"},  {"û", "u"},
    {"ý", "y"},  {"ÿ", "y"},  {"Ą", "A"},  {"ą", "a"},  {"Ć", "C"},  {"ć", "c"},  {"Č", "C"},
    {"č", "c"},  {"Ď", "D"},  {"ď", "d"},  {"Ę", "E"},  {"ę", "e"},  {"Ě", "E"},  {"ě", "e"},
    {"Ł", "L"},  {"ł", "l"},  {"Ń", "N"},  {"ń", "n"},  {"Ň", "N"},  {"ň", "n"},  {"Ő", "OE"},
    {"ő", "oe"}, {"Ř", "R"},  {"ř", "r"},  {"Ś", "S"},  {"ś", "s"},  {"Š", "S"},  {"š", "s"},
    {"Ť", "T"},  {"ť", "t"},  {"Ů", "U"},  {"ů", "u"},  {"Ű", "UE"}, {"ű", "ue"}, {"Ź", "Z"},
    {"ź", "z"},  {"Ż", "Z"},  {"ż", "z"},  {"Ž", "Z"},  {"ž", "z"}};

constexpr std::string_view kSigns = "*#+-/\\=($_";
constexpr std::string_view kVowels = "AEIOU";

bool IsLetter(char c) { return c >= 'A' && c <= 'Z'; }
bool IsSign(char c) { return kSigns.find(c) != std::string_view::npos; }

// Capitals and characters that the radio keeps; one blank where others were, none at the ends.
std::string NameCharacters(std::string_view text) {
  std::string name;
  const std::string latin = UpperCase(LatinLetters(text));
  for (const char c : latin) {
    const bool kept = IsLetter(c) || IsDigit(c) || IsSign(c);
    const bool accent = (static_cast<unsigned char>(c) & 0xC0U) == 0x80U || c == '\'';
    if (kept) {
      name += c;
    } else if (!accent && !name.empty() && name.back() != ' ') {
      name += ' ';
    }
  }
  return std::string(Trimmed(name));
}

// A call at the start of a name with something behind it, as in "DB0ABC-L": up to two letters or a digit
// and a letter, digits, up to four letters.
std::optional<std::string> CallIn(const std::string& name) {
  const auto length = static_cast<std::size_t>(
      std::find_if(name.begin(), name.end(), [](char c) { return !IsLetter(c) && !IsDigit(c); }) -
      name.begin());
  if (length == name.size() || length < 4 || length > kNameLength) return std::nullopt;
  const std::string call = name.substr(0, length);
  const auto digit = call.find_last_of("0123456789");
  const bool form = digit != std::string::npos && digit >= 1 && digit <= 3 && digit + 1 < length &&
                    std::any_of(call.begin(), call.begin() + 2, IsLetter);
  return form ? std::optional(call) : std::nullopt;
}

// Takes characters of a kind out, from the end, until the name fits. The first one stays.
template <class Goes>
void Thin(std::string& name, Goes goes) {
  for (std::size_t i = name.size(); i > 1 && name.size() > kNameLength; --i) {
    if (goes(name[i - 1])) name.erase(i - 1, 1);
  }
}

}  // namespace

std::string LatinLetters(std::string_view text) {
  std::string latin;
  while (!text.empty()) {
    const std::string_view character = text.substr(0, CharacterLength(text));
    const auto* const letter = std::find_if(std::begin(kLetters), std::end(kLetters),
                                            [&](const Letter& l) { return l.with == character; });
    latin += letter == std::end(kLetters) ? character : letter->without;
    text.remove_prefix(character.size());
  }
  return latin;
}

std::string ShortName(std::string_view text) {
  std::string name = NameCharacters(text);
  if (name.size() <= kNameLength) return name;
  if (const auto call = CallIn(name)) return *call;
  Thin(name, [](char c) { return c == ' '; });
  Thin(name, IsSign);
  Thin(name, [](char c) { return kVowels.find(c) != std::string_view::npos; });
  return std::string(Trimmed(name.substr(0, kNameLength)));
}

bool IsSameName(std::string_view name, std::string_view text) {
  return name == UpperCase(Trimmed(text));
}

std::string NamesGiven::Distinct(const std::string& name) {
  std::string given = name;
  for (int number = 2; names_.contains(given); ++number) {
    const std::string digits = std::to_string(number);
    given = name.substr(0, kNameLength - digits.size()) + digits;
  }
  names_.insert(given);
  return given;
}

}  // namespace q40
