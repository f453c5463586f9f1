// Writes the seeds of the fuzz targets: what the programs themselves make of the demonstration
// radio. To be run again when the form of an input changes.
#include <cstdio>
#include <filesystem>
#include <fstream>

#include "files/channel_csv.h"
#include "files/clone_file.h"
#include "files/port_number_file.h"
#include "image/channel_codec.h"
#include "image/defaults.h"
#include "sim/demo_radio.h"

namespace q40 {
namespace {

using namespace std::string_literals;

void Store(const std::string& target, const std::string& name, std::string_view content) {
  const std::filesystem::path folder = std::filesystem::path(SEED_FOLDER) / target;
  std::filesystem::create_directories(folder);
  std::ofstream(folder / name, std::ios::binary) << content;
}

std::string Digits(const std::optional<ChannelLines>& lines) {
  return std::string(lines.value().Joined());
}

void StoreRecords(const CloneImage& image) {
  const std::string target = "channel_record";
  const auto special = [&](char number, const SpecialSet& set, int k) {
    return number + Digits(EncodeSpecialChannel(set, {true, true}, k));
  };
  const auto memory = [&](char number, int n) {
    return number + Digits(EncodeMemoryChannel(image, n));
  };
  Store(target, "vhf-vfo", special('\x00', image.VhfSpecialSet, kVfoRow));
  Store(target, "vhf-ph", special('\x03', image.VhfSpecialSet, kPhRow));
  Store(target, "uhf-rpt", special('\x07', image.UhfSpecialSet, kRptRow));
  Store(target, "memory", memory('\x0A', 1));
  Store(target, "memory-skipped", memory('\x0D', 3));
  Store(target, "memory-unused", memory('\x0E', 4));
}

std::string SettingsInput(const CloneDocument& document) {
  std::string text = "\x00\x05"s;
  for (const std::string& line : document.image.SettingsLine) text += line + '\n';
  return text;
}

// What to run, then: save and select answered with yes, model 1, nothing changed, radio of model 1
// that answers behind the input, port opens.
std::string LinkInput(char what, const std::string& steps) {
  return what + "\x00\x00\x01\x00\x00\x01\x01\x00"s + steps;
}

void StoreLinkReplies() {
  const std::string target = "link_replies";
  const char* const names[] = {"identify",    "auto-select",    "read-settings", "read-memory",
                               "read-all",    "write-settings", "write-memory",  "write-all",
                               "read-bitmap", "write-bitmap",   "service-read"};
  char what = 0;
  for (const char* name : names) Store(target, name, LinkInput(what++, {}));
  const std::string data(32, '\x11');
  Store(target, "read-settings-data", LinkInput('\x02', "\x00\x01"s + data + "\x01" + data));
  Store(target, "read-memory-pieces", LinkInput('\x03', "\x00\x02\x0A\x05\x02\x20\x14"s));
  Store(target, "write-memory-no-answer", LinkInput('\x06', "\x00\x00\x00\x08"s));
  Store(target, "write-settings-not-ok", LinkInput('\x05', "\x00\x00\x03\x4BN"s));
}

void StoreCommandLines() {
  const std::string target = "command_line";
  const std::string csv =
      "\"RX-Q40\",\"MEMORY\",\"7\",\"145.6000\",\"12.5KHz\",\"Tone\",\"88.5Hz\",\"88.5Hz\",\"023\","
      "\"023\",\" -Shift\",\"0.6000\",\"Off\",\"Hi\",\"05\",\"Off\",\"BS-1\",\"Off\",\"Off\","
      "\"Normal\",\"HOME\",\"Off\"\r\n";
  const struct {
    const char* name;
    const char* lines;
  } seeds[] = {{"identify", "\nidentify\n-p\n1\n--json\n"},
               {"read", "\nread\n-p\n2\nnew.Q40\n"},
               {"read-only-memory", "short@0400\nread\n--port=14\n--only\nmemory\na.Q40\n"},
               {"write", "ng@0240\nwrite\n-p\n1\na.Q40\n"},
               {"new", "\nnew\n--model\nRX-Q40E\n--version-a\nnew.Q40\n"},
               {"check", "\ncheck\n--json\na.Q40\nbad.Q40\n"},
               {"show", "\n--quiet\nshow\na.Q40\n"},
               {"show-json", "\nshow\n--json\na.Q40\n"},
               {"diff", "\ndiff\na.Q40\nb.Q40\n"},
               {"export", "\nexport\na.Q40\n-\n"},
               {"import", "\nimport\na.Q40\n-\n-o\nnew.Q40\n"},
               {"dump", "late=300\ndump\n-p\n1\n--first\n20\n--count\n2\n"},
               {"help", "\nread\n--help\n"}};
  for (const auto& seed : seeds) Store(target, seed.name, seed.lines + "\n"s + csv);
}

void StoreAll() {
  CloneDocument demo = DemoDocument();
  CloneDocument fresh = FreshDocument();
  Store("clone_file", "demo.Q40", CloneFileText(demo, demo.model).value());
  Store("clone_file", "fresh.Q40", CloneFileText(fresh, fresh.model).value());
  // The first memory channel, line 36 of 34 bytes each; a settings byte; a dialer text.
  Store("clone_file", "patches",
        "\x04\xA6\x20" + Digits(EncodeMemoryChannel(demo.image, 1)).substr(0, kBlockDigits) +
            "\x00\x2C\x02"
            "1F"
            "\x03\x52\x03"
            "1*#");
  Store("channel_csv", "demo.csv", ExportChannels(demo.image));
  Store("channel_csv", "plain.csv",
        "RX-Q40,MEMORY,D7,446.00625,5KHz,DCS,88.5,88.5,23,023,+Shift,7.6,On,Mid,5,10,BS-2,On,On,"
        "Narrow,\"A,\"\"B\",On\nRX-Q40,VFO VHF,PH,144,,,,,,,Split,,,,,,,,,,No,Off\n");
  StoreRecords(demo.image);
  Store("settings_lines", "demo", SettingsInput(demo));
  Store("settings_lines", "fresh", SettingsInput(fresh));
  for (const int index : {0, 1, 2}) {
    Store("dial_block", kDialTitles[static_cast<std::size_t>(index)].data(),
          static_cast<char>(index) + MakeDialData(demo.dial, index));
  }
  StoreLinkReplies();
  Store("port_number", "seven", PortNumberText(7));
  Store("port_number", "blanks", " 14\t,COM");
  StoreCommandLines();
}

}  // namespace
}  // namespace q40

int main() {
  q40::StoreAll();
  return 0;
}
