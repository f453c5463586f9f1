// Command lines of rxq40ctl, run in a folder of their own with a simulated radio at every port.
//
// Input, line by line: a fault of the radio (or none), the words of the command line, an empty
// line. The rest is the content of the file "input" and of standard input.
#include <filesystem>
#include <map>

#include "document/defaults.h"
#include "files/clone_file.h"
#include "sim/demo_radio.h"
#include "support/run_ctl.h"
#include "support/temp_folder.h"
#include "target.h"

namespace q40::fuzz {
namespace {

namespace fs = std::filesystem;
using Files = std::map<std::string, std::string>;

constexpr std::string_view kInputFile = "input";
constexpr std::string_view kErrorStart = "rxq40ctl: ";  // of a message about a failure

Files FilesToStartWith() {
  CloneData demo = DemoDocument();
  CloneData other = FreshData();
  CloneData changed = demo;
  changed.dial[9] = "77";
  return {{"a.Q40", CloneFileText(demo, demo.model).value()},
          {"c.Q40", CloneFileText(changed, changed.model).value()},
          {"b.Q40", CloneFileText(other, other.model).value()},
          {"bad.Q40", "no clone file"}};
}

Files Content() {
  Files files;
  for (const auto& entry : fs::directory_iterator("."))
    files[entry.path().filename().string()] = test::Content(entry.path().string());
  return files;
}

// The folder in which the commands run, for as long as one runs: the fuzzer has its own files, under
// names that count from where it was started.
class WorkingFolder {
 public:
  explicit WorkingFolder(const Files& files) : outside_(fs::current_path()) {
    static const test::TempFolder kFolder;
    fs::current_path(kFolder.path());
    for (const auto& entry : fs::directory_iterator(".")) fs::remove_all(entry.path());
    for (const auto& [name, content] : files) test::Store(name, content);
  }
  ~WorkingFolder() { fs::current_path(outside_); }
  WorkingFolder(const WorkingFolder&) = delete;
  WorkingFolder& operator=(const WorkingFolder&) = delete;

 private:
  fs::path outside_;
};

// Nothing outside the folder and no real device: no word is a path, and "ports", which asks the
// system for its devices, is not run. A word cannot hold a zero, and no file is called like the start
// of an error message.
bool MayRun(const std::vector<std::string>& words) {
  return std::none_of(words.begin(), words.end(), [](const std::string& word) {
    return word == "ports" || word.starts_with("--trace") || word.find("..") != std::string::npos ||
           word.find(kErrorStart) != std::string::npos ||
           word.find_first_of(std::string_view("/\0", 2)) != std::string::npos;
  });
}

bool IsDocumented(int code) {
  return (code >= kExitDone && code <= kExitNotAsKnown) || code == kExitInterrupted;
}

SimulatedRadio RadioWith(std::string_view fault_text) {
  SimulatedRadio::Options options;
  std::string why;
  if (const auto fault = ParseFault(fault_text, why)) options.faults.push_back(*fault);
  CloneData demo = DemoDocument();
  options.model = demo.model;
  options.version = 'A';
  SimulatedRadio radio(std::move(options));
  StoreDocument(std::move(demo), radio.memory());
  return radio;
}

}  // namespace

void Run(Input input) {
  testing::GTEST_FLAG(break_on_failure) = true;  // a wait without an end
  const std::string_view fault = input.Line();
  std::vector<std::string> words;
  for (std::string_view word = input.Line(); !word.empty(); word = input.Line())
    words.emplace_back(word);
  if (!MayRun(words)) return;

  static const Files kFiles = FilesToStartWith();
  Files files = kFiles;
  files[std::string(kInputFile)] = input.Rest();
  const WorkingFolder folder(files);
  Check(std::freopen(kInputFile.data(), "rb", stdin) != nullptr, "standard input can be opened");

  test::FakeTime time;
  SimulatedRadio radio = RadioWith(fault);
  test::CtlResult result;
  try {
    result = test::RunCtl(words, [&](const std::string& /*device*/) {
      return std::make_unique<test::SimulatedLine>(radio, time);
    });
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    Check(false, "no command line is an internal error");
  }
  Check(IsDocumented(result.code), "every command ends with a documented exit code");
  const bool failed = result.code != kExitDone && result.code != kExitDifferent;
  const bool says_so =
      ("\n" + result.err).find("\n" + std::string(kErrorStart)) != std::string::npos;
  Check(!says_so || failed, "a command that says it fails does not end with 0 or 1");
  // "check" says what is wrong with a file in its result.
  Check(!failed || says_so || !result.out.empty(), "a command that fails says so");
  const bool in_part = result.code == kExitImportedInPart;  // which has made its file
  Check(!failed || in_part || Content() == files,
        "a command that fails leaves every file as it was");
}

}  // namespace q40::fuzz
