// What the documents show is what the programs do: their examples are taken out of the text and run.
//
// A fence in a document says what it is: "```text clone-lines" and so on, one check a kind below.
#include <algorithm>
#include <set>
#include <sstream>

#include <gtest/gtest.h>

#include "base/hex.h"
#include "document/defaults.h"
#include "files/channel_csv.h"
#include "files/clone_file.h"
#include "link/trace_line.h"
#include "lists/mapping.h"
#include "programs/ctl/clone_names.h"
#include "programs/ctl/json_values.h"
#include "radio/channel_codec.h"
#include "radio/name_codes.h"
#include "radio/settings_codec.h"
#include "radio/values.h"
#include "sim/demo_radio.h"
#include "sim/simulated_radio.h"
#include "support/document_lines.h"
#include "support/fake_host.h"
#include "support/fake_link.h"
#include "support/process.h"

namespace q40 {
namespace {

using namespace test;

// Cells of the rows of the tables of docs/clone-file.md that have so many cells.
std::vector<Lines> TableRows(std::size_t cells) {
  std::vector<Lines> rows;
  for (const std::string& line : LinesOf(test::Content(kFolder + "docs/clone-file.md"))) {
    if (line.starts_with("| ")) rows.push_back(Words(line, '|'));
  }
  std::erase_if(rows, [&](const Lines& row) { return row.size() != cells; });
  return rows;
}

// "`A`" is A.
std::string Unquoted(const std::string& cell) {
  const bool quoted = cell.size() > 2 && cell.front() == '`' && cell.back() == '`';
  return quoted ? cell.substr(1, cell.size() - 2) : std::string();
}

CloneData Example() {
  CloneData document = FreshData();
  EXPECT_FALSE(OpenCloneFile(kExamples + "radio.Q40", document).problem);
  return document;
}

// The manual page of the command line without roff's marks.
std::string ManualPage() {
  std::string page = test::Content(kFolder + "man/rxq40ctl.1");
  for (std::size_t at = 0; (at = page.find("\\-", at)) != std::string::npos;) page.erase(at, 1);
  return page;
}

TEST(Documents, ExampleFilesAreTheSimulatedRadio) {
  const CloneData demo = DemoDocument();
  RadioMemory memory;
  StoreDocument(demo, memory);
  std::string why;
  auto read = DocumentOf(memory, demo.model, demo.image.VersionA, why);
  ASSERT_TRUE(read) << why;
  EXPECT_EQ(CloneFileText(*read, read->model), test::Content(kExamples + "radio.Q40"));
  EXPECT_EQ(ExportChannels(Example().image), test::Content(kExamples + "channels.csv"));
}

// The whole of what "show" prints, every column and blank.
TEST(Documents, ShowPrintsTheWholeFile) {
  const auto shown = test::Run({test::Program("rxq40ctl"), "show", kExamples + "radio.Q40"});
  EXPECT_EQ(shown.out, test::Content(kFolder + "tests/show-radio.txt"));
}

// "  3  0123..." lines: number and content of a clone-file line.
TEST(Documents, CloneFileLines) {
  CloneData t = FreshData();
  CloneData e = FreshData();
  ChangeModel(e, 1);
  const std::pair<const char*, std::string> kinds[] = {
      {"text clone-lines", test::Content(kExamples + "radio.Q40")},
      {"text new=RX-Q40T", CloneFileText(t, 0).value()},
      {"text new=RX-Q40E", CloneFileText(e, 1).value()}};
  for (const auto& [kind, text] : kinds) {
    const Lines file = LinesOf(text);
    for (const std::string& line : FenceLines("docs/clone-file.md", kind)) {
      std::size_t end = 0;
      const auto number = static_cast<std::size_t>(std::stoi(line, &end));
      EXPECT_EQ(line.substr(end + 2), file.at(number)) << line;
    }
  }
}

TEST(Documents, HeadersAndValueLists) {
  int headers = 0;
  for (const Lines& row : TableRows(3)) {
    const auto model = FindModel(row[0]);
    if (!model) continue;
    ++headers;
    EXPECT_EQ(Unquoted(row[1]), HeaderLine(*model, kVersionPlain));
    EXPECT_EQ(Unquoted(row[2]), HeaderLine(*model, kVersionA));
  }
  EXPECT_EQ(headers, kModelCount);

  // The document and the manual page do not repeat the unit of the tones.
  std::string page = ManualPage();
  std::replace(page.begin(), page.end(), '\n', ' ');
  const std::tuple<const char*, std::span<const std::string_view>, const char*> lists[] = {
      {"text list=steps", StepTexts(), ""},
      {"text list=tones", ToneTexts(), "Hz"},
      {"text list=dcs", DcsTexts(), ""}};
  for (const auto& [kind, list, unit] : lists) {
    Lines shown;
    for (const std::string& line : FenceLines("docs/clone-file.md", kind)) {
      for (const std::string& word : Words(line, ' ')) {
        shown.push_back(word + unit);
        EXPECT_NE(page.find(' ' + word), std::string::npos) << word;
      }
    }
    EXPECT_EQ(shown, Lines(list.begin(), list.end())) << kind;
  }
}

TEST(Documents, SettingsTable) {
  std::size_t found = 0;
  for (const Lines& row : TableRows(6)) {
    if (Unquoted(row[2]).empty()) continue;
    ++found;
    const auto known =
        std::find_if(Settings().begin(), Settings().end(),
                     [&](const Setting& setting) { return setting.control == Unquoted(row[2]); });
    ASSERT_NE(known, Settings().end()) << row[2];
    const Setting& field = *known;
    EXPECT_EQ(row[0], std::to_string(field.line) + '.' + std::to_string(field.byte));
    EXPECT_EQ(row[1], "00" + HexByteText(0x20 + 16 * field.line + field.byte)) << row[0];
    if (field.rule == SettingRule::kRange || field.rule == SettingRule::kRangeTotp) {
      EXPECT_EQ(row[4], "0-" + std::to_string(field.top)) << row[0];
    }
    EXPECT_EQ(row[5].starts_with("`AA`"), field.rule == SettingRule::kLockFlag) << row[0];
  }
  EXPECT_EQ(found, Settings().size());
}

TEST(Documents, NameCodes) {
  int found = 0;
  for (const Lines& row : TableRows(3)) {
    const std::string typed = Unquoted(row[0]);
    if (typed.size() != 1) continue;
    ++found;
    const auto digits = NameCodeDigits(static_cast<unsigned char>(typed[0]));
    const std::string code(digits.begin(), digits.end());
    EXPECT_EQ(Unquoted(row[1]), code) << typed;
    EXPECT_EQ(Unquoted(row[2]), std::string(1, NameCharacter(HexByteValue(code, 0)))) << typed;
  }
  EXPECT_EQ(found, 22);
}

// The row of docs/json.md that describes an item: its section, its name, and where the code has a list of
// them its type and values. "byte 0x0025 (Volume)" is one of the bytes "byte ADDRESS (NAME)".
Lines JsonRow(const CloneItem& item) {
  const auto row = [&](const std::string& name, const Choices* choices = nullptr) {
    const bool channel = item.kind >= ItemKind::kInUse;
    return Lines{channel ? "Channels" : item.place, name, choices ? choices->TypeText() : "",
                 choices ? choices->ValuesText() : ""};
  };
  switch (item.kind) {
    case ItemKind::kCarriedByte: return row("byte ADDRESS");
    case ItemKind::kOddByte: return row("byte ADDRESS (NAME)");
    case ItemKind::kDialText: return row("M1 to M9, St");
    case ItemKind::kOddDialText: return row("NAME stored data");
    case ItemKind::kSetting: {
      const Choices choices = Choices::Of(Settings()[item.index]);
      return row(item.name, &choices);
    }
    case ItemKind::kField:
      if (WordsOf(item.field).empty() && IndexListOf(item.field).empty()) return row(item.name);
      return row(item.name, &Choices::Of(item.field));
    default: return row(item.name);
  }
}

// The document of the JSON names everything that can be printed, as it is printed, and nothing else.
TEST(Documents, EveryNameOfTheJson) {
  std::set<Lines> expected;
  Lines addresses;
  for (const CloneItem& item : CloneItems()) {
    expected.insert(JsonRow(item));
    if (item.kind == ItemKind::kCarriedByte) addresses.push_back(item.name.substr(5));
  }
  std::set<Lines> described;
  std::string section;
  for (const std::string& line : LinesOf(test::Content(kFolder + "docs/json.md"))) {
    if (line.starts_with("### ")) section = line.substr(4);
    if (!line.starts_with("| `")) continue;
    const Lines cells = Words(line, '|');
    ASSERT_EQ(cells.size(), 4U) << line;
    Lines row = {section, Unquoted(cells[0]), cells[1], cells[2]};
    if (!expected.contains(row)) row[2] = row[3] = "";  // no list of the code's
    EXPECT_TRUE(described.insert(row).second) << line;
  }
  EXPECT_EQ(described, expected);
  Lines shown;
  for (const std::string& line : FenceLines("docs/json.md", "text addresses")) {
    for (const std::string& word : Words(line, ' ')) shown.push_back(word);
  }
  EXPECT_EQ(shown, addresses);
}

// Digits as they are read and written again, as a frequency and as an offset.
TEST(Documents, FrequencyAndOffset) {
  constexpr auto kKind = ChannelKind::kMemory;
  int found = 0;
  for (const Lines& row : TableRows(5)) {
    const std::string stored = Unquoted(row[0]);
    if (stored.size() != 8) continue;
    ++found;
    CloneImage image;
    ASSERT_FALSE(DecodeMemoryChannel("80000000" + stored + stored, 0, image));
    const std::string again(EncodeMemoryChannel(image, 0).value().First());
    const ChannelRecord& record = image.MemoryTable[0];
    EXPECT_EQ(Unquoted(row[1]), record.Text(kKind, Field::kFrequency)) << stored;
    EXPECT_EQ(Unquoted(row[2]), again.substr(8, 8)) << stored;
    EXPECT_EQ(Unquoted(row[3]), record.Text(kKind, Field::kShiftFrequency)) << stored;
    EXPECT_EQ(Unquoted(row[4]), again.substr(16, 8)) << stored;
  }
  EXPECT_EQ(found, 9);
}

TEST(Documents, CsvRecords) {
  const Lines exported = LinesOf(test::Content(kExamples + "channels.csv"));
  const auto is_exported = [&](const std::string& line) {
    return std::find(exported.begin(), exported.end(), line) != exported.end();
  };
  for (const std::string& line : FenceLines("docs/csv.md", "text csv-lines"))
    EXPECT_TRUE(is_exported(line)) << line;
  CloneImage image = Example().image;
  const std::string text = Joined(FenceLines("docs/csv.md", "text csv-import"));
  EXPECT_EQ(ImportChannels(text, image).passed_over_count, 1);
  Lines added = LinesOf(ExportChannels(image));
  std::erase_if(added, is_exported);
  EXPECT_EQ(added, FenceLines("docs/csv.md", "text csv-imported"));
}

// The table of meanings in docs/lists.md, and the mapping that it shows.
TEST(Documents, MeaningsOfColumns) {
  const std::string page = test::Content(kFolder + "docs/lists.md");
  for (const MeaningRow& row : kMeanings)
    EXPECT_NE(page.find('`' + std::string(row.name) + '`'), std::string::npos) << row.name;
  for (const std::string& line : LinesOf(page)) {
    if (!line.starts_with("| `")) continue;
    const std::string name = line.substr(3, line.find('`', 3) - 3);
    const bool form = name == "encoding" || name == "separator" || name == "headings" ||
                      name == "\"HEADING\"" || name == "column N";
    EXPECT_TRUE(form || MeaningNamed(name)) << name;
  }
  KeptMapping kept;
  EXPECT_FALSE(
      ReadMapping(Joined(FenceLines("docs/lists.md", "text mapping")), "the example", kept));
  EXPECT_EQ(kept.entries.size(), 3U);
}

// The page alone is enough to write a list: its lines are taken as they stand.
TEST(Documents, ManualPageOfTheList) {
  Lines list = LinesOf(ManualPage());
  std::erase_if(list,
                [](auto& l) { return !l.starts_with("MODEL,") && !l.starts_with("RX-Q40,"); });
  EXPECT_EQ(list.size(), 3U);
  CloneImage image = FreshData().image;
  ImportChannels(Joined(list), image);
  std::string exported = ExportChannels(image);
  std::erase(exported, '"');
  exported.replace(exported.find(" -Shift,0.6000,Off,Hi"), 1, "");
  for (const std::string& line : list)
    EXPECT_NE(exported.find(line + "\r\n"), std::string::npos) << line;
}

// The program reads and writes a simulated radio. What the document shows is a part of what went over
// the cable, direction and bytes; only the 16-byte commands, which nothing sends here, are sent apart.
TEST(Documents, ExchangesRunAsShown) {
  CloneData document = Example();
  SimulatedRadio radio({document.model, document.image.VersionA ? 'A' : '0', 0, {}});
  StoreDocument(document, radio.memory());
  test::ScriptedLink line;
  std::string cable;
  line.port.reply = [&](const std::string& sent) -> test::ScriptedPort::Reply {
    radio.Receive(sent, line.clock.now);
    const std::string reply = radio.Take(line.clock.now + test::milliseconds(10));
    cable += '>' + sent + '<' + reply;
    return {{reply}};
  };
  CloneDocument read(document);
  test::FakeHost host(read);
  Sequences sequences(line.link, read, host, &host);
  EXPECT_EQ(sequences.ReadAll().outcome, Outcome::kDone);
  EXPECT_EQ(sequences.WriteAll().acknowledged.size(), 227U);

  std::string shown;
  for (const std::string& text : FenceLines("docs/protocol.md", "text exchange"))
    shown += (text[0] == ' ' ? "" : text.substr(0, 1)) + text.substr(2);
  for (const auto& [name, character] : {std::pair{"<CR>", "\r"}, std::pair{"<LF>", "\n"}}) {
    for (auto at = shown.find(name); at != std::string::npos; at = shown.find(name, at))
      shown.replace(at, 4, character);
  }
  for (const std::string& exchange : Words(shown, '>')) {
    const std::string sent = exchange.substr(0, exchange.find('<'));
    if (sent.ends_with('\r')) line.port.Write(sent);
    EXPECT_NE((cable + '>').find('>' + exchange + '>'), std::string::npos) << exchange;
  }
}

// The trace is a conversation with the radio of the example.
TEST(Documents, TraceOfTheExample) {
  std::vector<TraceEvent> events;
  const std::string text = Joined(FenceLines("docs/protocol.md", "text trace"));
  ASSERT_FALSE(ParseTrace(text, "the trace", events));
  const CloneData document = Example();
  SimulatedRadio radio({document.model, document.image.VersionA ? 'A' : '0', 0, {}});
  StoreDocument(document, radio.memory());
  std::string said;
  std::string told;
  for (const TraceEvent& event : events) {
    if (event.kind == TraceEvent::Kind::kArrived) told += event.bytes;
    if (event.kind != TraceEvent::Kind::kSent) continue;
    radio.Receive(event.bytes, {});
    said += radio.Take(test::TimePoint() + test::milliseconds(10));
  }
  EXPECT_EQ(told, said);
  EXPECT_EQ(said.size(), 19U + 77 + 11);
}

}  // namespace
}  // namespace q40
