// What the documents show is what the programs do: their examples are taken out of the text and run.
//
// A fence in a document says what it is: "```text clone-lines" and so on, one check a kind below.
#include <algorithm>
#include <fstream>
#include <sstream>

#include <gtest/gtest.h>

#include "app/tables/values.h"
#include "files/channel_csv.h"
#include "files/clone_file.h"
#include "image/defaults.h"
#include "image/hex.h"
#include "image/name_codes.h"
#include "image/settings_codec.h"
#include "sim/demo_radio.h"
#include "sim/simulated_radio.h"
#include "support/fake_host.h"
#include "support/fake_link.h"
#include "support/process.h"
#include "support/temp_folder.h"

namespace q40 {
namespace {

using Lines = std::vector<std::string>;

const std::string kFolder = PROJECT_FOLDER;
const std::string kDocs = kFolder + "/docs/";

Lines LinesOf(const std::string& text) {
  Lines lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) {
    if (line.ends_with('\r')) line.pop_back();
    lines.push_back(line);
  }
  return lines;
}

struct Fence {
  std::string kind;  // behind the three quotes
  Lines lines;
  std::string place;  // "docs/csv.md, line 12"
};

std::vector<Fence> Fences(const std::string& document) {
  std::vector<Fence> fences;
  bool inside = false;
  int number = 0;
  for (const std::string& line : LinesOf(test::Content(kFolder + '/' + document))) {
    ++number;
    if (!line.starts_with("```")) {
      if (inside) fences.back().lines.push_back(line);
      continue;
    }
    inside = !inside;
    if (inside) {
      fences.push_back({line.substr(3), {}, document + ", line " + std::to_string(number)});
    }
  }
  EXPECT_FALSE(inside) << document << ": a fence is never closed";
  return fences;
}

std::vector<Fence> FencesOf(const std::string& document, const std::string& kind) {
  std::vector<Fence> fences = Fences(document);
  std::erase_if(fences, [&](const Fence& fence) { return fence.kind != kind; });
  EXPECT_FALSE(fences.empty()) << document << ": no example of the kind " << kind;
  return fences;
}

// Lines of the first fence of a kind.
Lines FirstOf(const std::string& document, const std::string& kind) {
  const auto fences = FencesOf(document, kind);
  return fences.empty() ? Lines() : fences.front().lines;
}

// Cells of the rows of a document's tables, without the blanks around them.
std::vector<Lines> TableRows(const std::string& document) {
  std::vector<Lines> rows;
  for (const std::string& line : LinesOf(test::Content(kFolder + '/' + document))) {
    if (!line.starts_with("| ")) continue;
    Lines cells;
    std::istringstream stream(line.substr(1));
    for (std::string cell; std::getline(stream, cell, '|');) {
      cells.emplace_back(Trimmed(cell));
    }
    rows.push_back(cells);
  }
  return rows;
}

// "`A`" is A.
std::string Unquoted(const std::string& cell) {
  const bool quoted = cell.size() > 2 && cell.front() == '`' && cell.back() == '`';
  return quoted ? cell.substr(1, cell.size() - 2) : std::string();
}

void Replace(std::string& text, const std::string& from, const std::string& to) {
  for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size()) {
    text.replace(at, from.size(), to);
  }
}

// "  3  0123..." lines: number and content of a clone-file line.
void ExpectCloneLines(const Fence& fence, const std::string& text) {
  const Lines file = LinesOf(text);
  for (const std::string& line : fence.lines) {
    std::size_t end = 0;
    const auto number = static_cast<std::size_t>(std::stoi(line, &end));
    ASSERT_LT(number, file.size()) << fence.place;
    EXPECT_EQ(line.substr(end + 2), file[number]) << fence.place << ": " << line;
  }
}

CloneDocument Example() {
  CloneDocument document = FreshDocument();
  const OpenResult opened = OpenCloneFile(kDocs + "examples/radio.Q40", document);
  EXPECT_FALSE(opened.problem) << opened.problem->Message();
  return document;
}

TEST(Documents, ExampleFilesAreTheSimulatedRadio) {
  CloneDocument example = Example();
  CloneDocument demo = DemoDocument();
  RadioMemory memory;
  StoreDocument(demo, memory);
  std::string why;
  auto read = DocumentOf(memory, demo.model, demo.image.VersionA, why);
  ASSERT_TRUE(read) << why;
  const std::string text = test::Content(kDocs + "examples/radio.Q40");
  EXPECT_EQ(CloneFileText(example, example.model), text);
  EXPECT_EQ(CloneFileText(*read, read->model), text);
  EXPECT_EQ(ExportChannels(example.image), test::Content(kDocs + "examples/channels.csv"));
}

TEST(Documents, CloneFileLines) {
  for (const Fence& fence : FencesOf("docs/clone-file.md", "text clone-lines")) {
    ExpectCloneLines(fence, test::Content(kDocs + "examples/radio.Q40"));
  }
  for (const std::string name : {"RX-Q40T", "RX-Q40E"}) {
    CloneDocument document = FreshDocument();
    ChangeModel(document, *FindModel(name));
    const auto text = CloneFileText(document, document.model);
    for (const Fence& fence : FencesOf("docs/clone-file.md", "text new=" + name)) {
      ExpectCloneLines(fence, *text);
    }
  }
}

TEST(Documents, HeadersAndValueLists) {
  int headers = 0;
  for (const Lines& row : TableRows("docs/clone-file.md")) {
    const auto model = FindModel(row[0]);
    if (!model || !row[1].starts_with('`')) continue;
    ++headers;
    for (const int version : {kVersionPlain, kVersionA}) {
      EXPECT_EQ(Unquoted(row[static_cast<std::size_t>(1 + version)]), HeaderLine(*model, version));
    }
  }
  EXPECT_EQ(headers, kModelCount);

  const struct {
    const char* kind;
    std::span<const std::string_view> list;
    const char* unit;  // not repeated in the document
  } lists[] = {{"text list=steps", StepTexts(), ""},
               {"text list=tones", ToneTexts(), "Hz"},
               {"text list=dcs", DcsTexts(), ""}};
  for (const auto& list : lists) {
    std::string words;
    for (const auto& line : FirstOf("docs/clone-file.md", list.kind)) words += line + ' ';
    std::istringstream stream(words);
    Lines shown;
    for (std::string word; stream >> word;) shown.push_back(word + list.unit);
    EXPECT_EQ(shown, Lines(list.list.begin(), list.list.end())) << list.kind;
  }
}

TEST(Documents, SettingsTable) {
  std::size_t found = 0;
  for (const Lines& row : TableRows("docs/clone-file.md")) {
    if (row.size() != 6 || Unquoted(row[2]).empty()) continue;
    ++found;
    const SettingsField& field = SettingsFieldOf(Unquoted(row[2]));
    EXPECT_EQ(Unquoted(row[2]), field.control);
    EXPECT_EQ(row[0], std::to_string(field.line) + '.' + std::to_string(field.byte));
    EXPECT_EQ(row[1], "00" + HexByteText(0x20 + 16 * field.line + field.byte)) << row[0];
    if (field.rule == SettingRule::kRange || field.rule == SettingRule::kRangeTotp) {
      EXPECT_EQ(row[4], "0-" + std::to_string(field.top)) << row[0];
    }
    EXPECT_EQ(row[5].starts_with("`AA`"), field.rule == SettingRule::kAccess) << row[0];
  }
  EXPECT_EQ(found, SettingsFields().size());
}

TEST(Documents, NameCodes) {
  int found = 0;
  for (const Lines& row : TableRows("docs/clone-file.md")) {
    const std::string typed = Unquoted(row[0]);
    if (typed.size() != 1 || row.size() != 3) continue;
    ++found;
    const auto digits = NameCodeDigits(static_cast<unsigned char>(typed[0]));
    const std::string code(digits.begin(), digits.end());
    EXPECT_EQ(Unquoted(row[1]), code) << typed;
    EXPECT_EQ(Unquoted(row[2]), std::string(1, NameCharacter(HexByteValue(code, 0)))) << typed;
  }
  EXPECT_EQ(found, 22);
}

TEST(Documents, CsvRecords) {
  const Lines exported = LinesOf(test::Content(kDocs + "examples/channels.csv"));
  for (const Fence& fence : FencesOf("docs/csv.md", "text csv-lines")) {
    for (const std::string& line : fence.lines) {
      EXPECT_NE(std::find(exported.begin(), exported.end(), line), exported.end()) << line;
    }
  }
  CloneImage image = Example().image;
  std::string text;
  for (const auto& line : FirstOf("docs/csv.md", "text csv-import")) text += line + '\n';
  EXPECT_EQ(ImportChannels(text, image).passed_over_count, 1);
  Lines added = LinesOf(ExportChannels(image));
  std::erase_if(added, [&](const std::string& line) {
    return std::find(exported.begin(), exported.end(), line) != exported.end();
  });
  EXPECT_EQ(added, FirstOf("docs/csv.md", "text csv-imported"));
}

// The messages of the exchanges: direction and bytes.
std::vector<std::pair<char, std::string>> Messages() {
  std::vector<std::pair<char, std::string>> messages;
  for (const Fence& fence : FencesOf("docs/protocol.md", "text exchange")) {
    for (std::string line : fence.lines) {
      Replace(line, "<CR>", "\r");
      Replace(line, "<LF>", "\n");
      if (line[0] != ' ') messages.emplace_back(line[0], "");
      messages.back().second += line.substr(2);
    }
  }
  return messages;
}

TEST(Documents, TheRadioAnswersAsShown) {
  const CloneDocument example = Example();
  SimulatedRadio radio({example.model, example.image.VersionA ? 'A' : '0', 0, {}});
  StoreDocument(example, radio.memory());
  SimulatedRadio::TimePoint now;
  for (const auto& [direction, bytes] : Messages()) {
    if (direction == '>') {
      radio.Receive(bytes, now);
    } else {
      now += std::chrono::milliseconds(10);
      EXPECT_EQ(radio.Take(now), bytes);
    }
  }
}

TEST(Documents, TheProgramSendsWhatIsShown) {
  CloneDocument document = Example();
  SimulatedRadio radio({document.model, document.image.VersionA ? 'A' : '0', 0, {}});
  StoreDocument(document, radio.memory());
  test::ScriptedLink line;
  line.port.reply = [&](const std::string& sent) -> test::ScriptedPort::Reply {
    radio.Receive(sent, line.clock.now);
    return {{radio.Take(line.clock.now + test::milliseconds(10))}};
  };
  test::FakeHost host(document);
  Sequences sequences(line.link, document, host);
  EXPECT_EQ(sequences.ReadAll().outcome, Outcome::kDone);
  EXPECT_EQ(sequences.WriteAll().acknowledged.size(), 227U);
  for (const auto& [direction, bytes] : Messages()) {
    if (direction != '>' || bytes.back() == '\r')
      continue;  // nothing sends the 16-byte commands here
    const auto same = [&text = bytes](const auto& message) { return message.bytes == text; };
    const auto sent = std::find_if(line.port.sent.begin(), line.port.sent.end(), same);
    EXPECT_NE(sent, line.port.sent.end()) << bytes;
  }
}

// ---- command lines and what they print

struct Shell {
  explicit Shell(const std::string& document) {
    for (const char* name : {"radio.Q40", "channels.csv"}) {
      std::filesystem::copy(kDocs + "examples/" + name, folder / name);
    }
    for (const Fence& fence : Fences(document)) {
      if (fence.kind != "text csv-import") continue;
      for (const std::string& line : fence.lines) {
        std::ofstream(folder / "changes.csv", std::ios::app) << line << "\r\n";
      }
    }
    const std::string ctl = test::Program("rxq40ctl");
    path = ctl.substr(0, ctl.rfind('/')) + ":/usr/bin:/bin";
  }

  // What a command prints, without the lines that only tell of progress.
  Lines Output(const std::string& command, const std::string& device) {
    std::map<std::string, std::string> environment = {{"PATH", path}};
    if (!device.empty()) environment["RXQ40_COM1"] = device;
    auto result = test::Run({"/bin/sh", "-c", "cd '" + folder.path() + "'; exec 2>&1; " + command},
                            {environment});
    Lines lines = LinesOf(result.out + result.err);
    std::erase_if(lines, [](const std::string& line) {
      constexpr std::string_view kProgress[] = {"Identifying", "Reading settings", "Reading memory",
                                                "Writing settings", "Writing memory"};
      return std::find(std::begin(kProgress), std::end(kProgress), line) != std::end(kProgress);
    });
    return lines;
  }

  test::TempFolder folder;
  std::string path;
};

// "```console", "```console no-port" (nothing is plugged in) or "```console ARGUMENTS" (of the
// simulated radio). Lines that begin with "$ " are commands.
void ExpectConsole(Shell& shell, const Fence& fence) {
  constexpr std::string_view kConsole = "console";
  std::string arguments(Trimmed(fence.kind.substr(kConsole.size())));
  std::unique_ptr<test::SimulatorProcess> radio;
  if (arguments != "no-port") {
    std::vector<std::string> words;
    std::istringstream stream(arguments);
    for (std::string word; stream >> word;) words.push_back(word);
    if (words.empty() || words[0] != "--model") {
      words.insert(words.end(), {"--load", shell.folder / "radio.Q40"});
    }
    radio = std::make_unique<test::SimulatorProcess>(words);
    ASSERT_FALSE(radio->device().empty()) << fence.place;
  }
  for (std::size_t at = 0; at < fence.lines.size();) {
    ASSERT_TRUE(fence.lines[at].starts_with("$ ")) << fence.place;
    const std::string command = fence.lines[at].substr(2);
    Lines expected;
    while (++at < fence.lines.size() && !fence.lines[at].starts_with("$ ")) {
      expected.push_back(fence.lines[at]);
    }
    EXPECT_EQ(shell.Output(command, radio ? radio->device() : ""), expected)
        << fence.place << ": " << command;
  }
}

class Consoles : public testing::TestWithParam<const char*> {};

TEST_P(Consoles, PrintWhatIsShown) {
  Shell shell(GetParam());
  int found = 0;
  for (const Fence& fence : Fences(GetParam())) {
    if (!fence.kind.starts_with("console")) continue;
    ++found;
    ExpectConsole(shell, fence);
  }
  EXPECT_GT(found, 0);
}

INSTANTIATE_TEST_SUITE_P(Documents, Consoles,
                         testing::Values("README.md", "docs/clone-file.md", "docs/csv.md",
                                         "docs/protocol.md"));

}  // namespace
}  // namespace q40
