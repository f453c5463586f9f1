#include "lists/heading_words.h"

#include <algorithm>
#include <string>

#include "base/digits.h"
#include "lists/list_words.h"
#include "lists/short_name.h"

namespace q40 {
namespace {

using enum Meaning;

struct HeadingRow {
  std::string_view first;
  std::string_view second;  // empty: one word is enough
  Meaning meaning;
};

// A word stands at the beginning or the end of a word of the heading ("Ausgabefrequenz"). Where two rows
// say as much, the upper one is tried first.
constexpr HeadingRow kHeadings[] = {
    {"dcs", "pol", kDcsPolarity},
    {"dtcs", "pol", kDcsPolarity},
    {"tone", "burst", kIgnored},
    {"show", "name", kIgnored},
    {"tone", "mode", kToneKind},
    {"tone", "type", kToneKind},
    {"tone", "kind", kToneKind},
    {"ton", "art", kToneKind},
    {"squelch", "mode", kToneKind},
    {"squelch", "type", kToneKind},
    {"sql", "mode", kToneKind},
    {"ctone", "freq", kToneBoth},
    {"tone", "squelch", kToneBoth},
    {"tone", "freq", kToneSent},
    {"offset", "dir", kDirection},
    {"shift", "dir", kDirection},
    {"shift", "richtung", kDirection},
    {"tx", "power", kPower},
    {"channel", "name", kName},
    {"kanal", "name", kName},
    {"second", "name", kSecondName},
    {"offset", "freq", kOffset},
    {"shift", "freq", kOffset},

    {"ctone", "", kToneBoth},
    {"dcs", "", kDcsBoth},
    {"dtcs", "", kDcsBoth},
    {"dpl", "", kDcsBoth},
    {"tsql", "", kToneBoth},
    {"tsq", "", kToneBoth},
    {"ctcss", "", kToneSent},
    {"subton", "", kToneSent},
    {"encode", "", kToneSent},
    {"decode", "", kToneHeard},
    {"access", "", kToneSent},
    {"tonruf", "", kIgnored},
    {"rufton", "", kIgnored},
    {"pl", "", kToneSent},
    {"tone", "", kToneSent},
    {"tone", "", kToneKind},
    {"ton", "", kToneSent},
    {"ton", "", kToneKind},
    {"squelch", "", kToneKind},
    {"input", "", kInput},
    {"eingabe", "", kInput},
    {"eingang", "", kInput},
    {"input", "", kOffset},
    {"eingabe", "", kOffset},
    {"eingang", "", kOffset},
    {"uplink", "", kInput},
    {"sende", "", kInput},
    {"transmit", "", kInput},
    {"tx", "", kInput},
    {"output", "", kOutput},
    {"ausgabe", "", kOutput},
    {"ausgang", "", kOutput},
    {"downlink", "", kOutput},
    {"empfang", "", kOutput},
    {"receive", "", kOutput},
    {"rx", "", kOutput},
    {"offset", "", kOffset},
    {"ablage", "", kOffset},
    {"versatz", "", kOffset},
    {"shift", "", kOffset},
    {"shift", "", kDirection},
    {"offset", "", kDirection},
    {"ablage", "", kDirection},
    {"dup", "", kDirection},
    {"dup", "", kOffset},
    {"dir", "", kDirection},
    {"richtung", "", kDirection},
    {"freq", "", kOutput},
    {"frequenz", "", kOutput},
    {"frequency", "", kOutput},
    {"frecuencia", "", kOutput},
    {"frek", "", kOutput},
    {"qrg", "", kOutput},
    {"name", "", kName},
    {"call", "", kName},
    {"rufz", "", kName},
    {"alias", "", kName},
    {"label", "", kName},
    {"bezeichnung", "", kName},
    {"relais", "", kName},
    {"repeater", "", kName},
    {"station", "", kName},
    {"indicatif", "", kName},
    {"tag", "", kName},
    {"town", "", kSecondName},
    {"city", "", kSecondName},
    {"ort", "", kSecondName},
    {"location", "", kSecondName},
    {"place", "", kSecondName},
    {"qth", "", kSecondName},
    {"stadt", "", kSecondName},
    {"site", "", kSecondName},
    {"step", "", kStep},
    {"raster", "", kStep},
    {"ts", "", kStep},
    {"width", "", kWidth},
    {"wide", "", kWidth},
    {"bandbreite", "", kWidth},
    {"bw", "", kWidth},
    {"mode", "", kMode},
    {"modulation", "", kMode},
    {"betriebsart", "", kMode},
    {"modus", "", kMode},
    {"power", "", kPower},
    {"leistung", "", kPower},
    {"skip", "", kSkip},
    {"lockout", "", kSkip},
    {"mhz", "", kOutput},
    {"khz", "", kOutput},
};

// A tone, a code or a frequency of one way. The repeater's output is what the radio hears.
constexpr std::string_view kHeardWords[] = {"rx",      "receive",  "empfang", "out",  "ausgabe",
                                            "ausgang", "downlink", "dec",     "heard"};
constexpr std::string_view kSentWords[] = {"tx",  "transmit", "send",    "input",
                                           "in",  "eingabe",  "eingang", "uplink",
                                           "enc", "access",   "sent"};
struct WayRow {
  std::string_view of;
  Meaning heard;
  Meaning sent;
};
constexpr WayRow kWays[] = {{"tone", kToneHeard, kToneSent},  {"ton", kToneHeard, kToneSent},
                            {"ctcss", kToneHeard, kToneSent}, {"qt", kToneHeard, kToneSent},
                            {"pl", kToneHeard, kToneSent},    {"dcs", kDcsHeard, kDcsSent},
                            {"dtcs", kDcsHeard, kDcsSent},    {"freq", kOutput, kInput},
                            {"frequenz", kOutput, kInput},    {"qrg", kOutput, kInput}};

// The words of a heading in small letters: "txToneFreq" and "TX tone freq" are the same three.
std::vector<std::string> WordsOf(std::string_view heading) {
  std::vector<std::string> words(1);
  char before = '\0';
  for (const char c : LatinLetters(heading)) {
    const bool letter = BareWord({&c, 1}).size() == 1;
    const bool capital = letter && c != LowerCase(c);
    const bool begins = capital && before != '\0' && before == LowerCase(before);
    if ((!letter || begins) && !words.back().empty()) words.emplace_back();
    if (letter) words.back() += LowerCase(c);
    before = letter && !IsDigit(c) ? c : '\0';
  }
  return words;
}

// A word of two letters is one of its own, unless it says which way ("rxtone"). One that begins a heading may
// be written in two ("cTone").
bool Has(const std::vector<std::string>& words, std::string_view part) {
  const bool whole = part.size() == 2 && part != "rx" && part != "tx";
  if (!whole && words.size() > 1 && (words[0] + words[1]).starts_with(part)) return true;
  return std::any_of(words.begin(), words.end(), [&](const std::string& word) {
    return whole ? word == part : word.starts_with(part) || word.ends_with(part);
  });
}

std::vector<HeadingMeaning> OfOneWay(const std::vector<std::string>& words) {
  const auto has = [&](std::string_view part) { return Has(words, part); };
  const bool heard = std::any_of(std::begin(kHeardWords), std::end(kHeardWords), has);
  const bool sent = std::any_of(std::begin(kSentWords), std::end(kSentWords), has);
  std::vector<HeadingMeaning> found;
  for (const WayRow& row : kWays) {
    if (heard != sent && has(row.of)) found.push_back({heard ? row.heard : row.sent, 2});
  }
  return found;
}

}  // namespace

std::vector<HeadingMeaning> MeaningsOfHeading(std::string_view heading) {
  std::vector<std::string> words = WordsOf(heading);
  // "Frequency in MHz" speaks of no input.
  if (words.size() > 2)
    words.erase(std::remove(words.begin() + 1, words.end() - 1, "in"), words.end() - 1);
  std::vector<HeadingMeaning> found = OfOneWay(words);
  for (const HeadingRow& row : kHeadings) {
    if (!Has(words, row.first) || (!row.second.empty() && !Has(words, row.second))) continue;
    found.push_back({row.meaning, row.second.empty() ? 1 : 2});
  }
  const bool signs = heading.find("+/-") != std::string_view::npos ||
                     heading.find("\xC2\xB1") != std::string_view::npos;
  if (signs) found.push_back({kDirection, 1});
  std::stable_sort(found.begin(), found.end(), [](auto& a, auto& b) { return a.words > b.words; });
  return found;
}

}  // namespace q40
