// The figures of docs and notes, measured in one run. Prints a Markdown table.
#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <new>
#include <sstream>
#include <string>
#include <unistd.h>
#include <vector>

#include "document/defaults.h"
#include "files/clone_file.h"
#include "files/whole_file.h"
#include "link/link.h"
#include "support/process.h"

namespace {

std::atomic<long> allocations{0};

}  // namespace

// Not inlined: g++ 14 takes a free() that it sees without its malloc() for a mistake.
[[gnu::noinline]] void* operator new(std::size_t size) {
  ++allocations;
  if (void* memory = std::malloc(size)) return memory;
  throw std::bad_alloc();
}
[[gnu::noinline]] void operator delete(void* memory) noexcept { std::free(memory); }
[[gnu::noinline]] void operator delete(void* memory, std::size_t /*size*/) noexcept {
  std::free(memory);
}

namespace q40 {
namespace {

using test::ProcessResult;
using test::Program;
using test::SimulatorProcess;

// ---- the wire's own time, from the protocol

constexpr double kByteSeconds = 10.0 / 9600;
constexpr double kPauseSeconds = 0.010;
constexpr int kIdentifyBytes = 19;
constexpr int kAnnounceBytes = 11;
constexpr int kReadBytes = 77;
constexpr int kWriteBytes = 79;
constexpr int kEndBytes = 11;

struct WireTime {
  int bytes;
  int pauses;
  [[nodiscard]] double Seconds() const { return bytes * kByteSeconds + pauses * kPauseSeconds; }
};
// Settings: 16 pauses between 17 units, one before and one after the End command; memory: the two
// around its End command.
constexpr WireTime kReadAll = {2 * (kIdentifyBytes + kEndBytes) + (17 + 210) * kReadBytes, 18 + 2};
// One pause more before each identification, and one before every memory channel.
constexpr WireTime kWriteAll = {
    2 * (kAnnounceBytes + kIdentifyBytes + kEndBytes) + (17 + 210) * kWriteBytes,
    1 + 18 + 1 + 210 + 2};

// The identification, what was written, End; a pause before every unit and around End.
constexpr WireTime kVerify = {kIdentifyBytes + kEndBytes + (17 + 210) * kReadBytes, 17 + 210 + 2};

// Write Changes: compare, write and verify `units` blocks; in a sequence of units every command but the
// first has a pause in front of it, the End command one behind it too. Before the first command the line,
// which has just been opened, must be quiet for a while: the pause that counts in so short a command.
constexpr WireTime ChangesWire(int units) {
  constexpr int kQuietPauses = static_cast<int>(kQuietLine.count()) / kPauseMs;
  return {(kIdentifyBytes + units * kReadBytes + kEndBytes) * 2 + kAnnounceBytes + kIdentifyBytes +
              units * kWriteBytes + kEndBytes,
          kQuietPauses + 2 * (units + 2) + 1 + units + 2};
}
double Seconds(const WireTime& a, const WireTime& b) { return a.Seconds() + b.Seconds(); }

// ---- measuring

double Median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

double MedianOf(int times, const std::function<double()>& measure) {
  std::vector<double> values(static_cast<std::size_t>(times));
  std::generate(values.begin(), values.end(), measure);
  return Median(values);
}

ProcessResult Must(const ProcessResult& result) {
  if (result.code == 0) return result;
  std::fprintf(stderr, "bench: a program failed (%d): %s\n", result.code, result.err.c_str());
  std::exit(1);
}

void Row(const std::string& what, const std::string& figure, const std::string& limit) {
  std::printf("| %s | %s | %s |\n", what.c_str(), figure.c_str(), limit.c_str());
  std::fflush(stdout);
}

std::string Number(const char* format, double value) {
  char text[64];
  std::snprintf(text, sizeof text, format, value);
  return text;
}

class Folder {
 public:
  Folder() {
    std::string pattern = "/tmp/rxq40-bench-XXXXXX";
    path_ = mkdtemp(pattern.data());
  }
  ~Folder() { std::filesystem::remove_all(path_); }
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;
  [[nodiscard]] std::string operator/(const std::string& name) const {
    return (path_ / name).string();
  }

 private:
  std::filesystem::path path_;
};

// ---- the figures

void Paced(const Folder& folder, const std::string& verb, const WireTime& wire) {
  SimulatorProcess radio({"--pace", "9600", "--load", folder / "full.Q40"});
  std::vector<std::string> command = {Program("rxq40ctl"), verb, "-p", radio.device()};
  if (verb == "read") command.emplace_back("--force");
  command.push_back(folder / "full.Q40");
  const ProcessResult result = Must(test::Run(command, {.limit = std::chrono::minutes(2)}));
  const std::string name = verb == "read" ? "Read All" : "Write All";
  Row(name + " at 9600 baud, time over the wire's " + Number("%.2f s", wire.Seconds()),
      Number("%.4f", result.seconds / wire.Seconds()), verb == "read" ? "1.02" : "");
  Row(name + " at 9600 baud, processor share",
      Number("%.2f %%", 100 * result.cpu_seconds / result.seconds), verb == "read" ? "2 %" : "");
}

// What a write with a net costs: the wire's time for it, and the program's over that.
// Seconds that it took.
double PacedNet(const Folder& folder, const std::string& option, const WireTime& more) {
  SimulatorProcess radio({"--pace", "9600", "--load", folder / "full.Q40"});
  std::vector<std::string> command = {Program("rxq40ctl"), "write", "-p", radio.device(),
                                      folder / "full.Q40", option};
  if (option == "--backup") command.push_back(folder / "backup.Q40");
  const ProcessResult result = Must(test::Run(command, {.limit = std::chrono::minutes(2)}));
  const double wire = Seconds(kWriteAll, more);
  Row("Write All " + option + ", the wire's time over that of Write All",
      Number("%.2f", wire / kWriteAll.Seconds()), "");
  Row("Write All " + option + ", time over the wire's " + Number("%.2f s", wire),
      Number("%.4f", result.seconds / wire), "");
  return result.seconds;
}

// The program's own time, from its start to its end, against that of its bytes and pauses.
double ChangesSeconds(const Folder& folder, const std::string& changed) {
  SimulatorProcess radio({"--pace", "9600", "--load", folder / "full.Q40"});
  return Must(test::Run({Program("rxq40ctl"), "write", "-p", radio.device(), "--changes",
                         folder / "full.Q40", folder / changed},
                        {.limit = std::chrono::minutes(2)}))
      .seconds;
}

// `write_all`: seconds of Write All with --verify.
void PacedChanges(const Folder& folder, double write_all) {
  const double one = MedianOf(5, [&] { return ChangesSeconds(folder, "one.Q40"); });
  Row("one changed channel at 9600 baud, verified, time over the wire's " +
          Number("%.3f s", ChangesWire(1).Seconds()),
      Number("%.4f", one / ChangesWire(1).Seconds()), "1.05");
  Row("Write All --verify over one changed channel, verified", Number("%.1f", write_all / one),
      "30 or more");
  const double all = ChangesSeconds(folder, "many.Q40");
  Row("210 changed channels, verified, time over the wire's for Write Memory and two reads, " +
          Number("%.2f s", ChangesWire(210).Seconds()),
      Number("%.4f", all / ChangesWire(210).Seconds()), "1.02");
}

void Unpaced(const Folder& folder) {
  SimulatorProcess radio({"--load", folder / "full.Q40"});
  const double seconds = MedianOf(15, [&] {
    return Must(test::Run({Program("rxq40ctl"), "read", "--only", "memory", "-p", radio.device(),
                           folder / "full.Q40"}))
        .seconds;
  });
  Row("Read Memory without pacing, whole program", Number("%.1f ms", 1000 * seconds), "60 ms");
  const double waits = 2 * kPauseSeconds + std::chrono::duration<double>(kQuietLine).count();
  Row("of it one exchange (two pauses of 10 ms and 20 ms of quiet after opening taken off)",
      Number("%.0f us", 1e6 * (seconds - waits) / 212), "");
}

void Codec(const Folder& folder) {
  constexpr int kTimes = 300;
  CloneData document = FreshData();
  long allocated = 0;
  const double open = MedianOf(kTimes, [&] {
    const long before = allocations;
    const auto start = std::chrono::steady_clock::now();
    const bool failed = OpenCloneFile(folder / "full.Q40", document).problem.has_value();
    const auto text = CloneFileText(document, document.model);
    const auto end = std::chrono::steady_clock::now();
    allocated = allocations - before;
    if (failed || !text) std::exit(1);
    return std::chrono::duration<double>(end - start).count();
  });
  const double read = MedianOf(kTimes, [&] {
    const auto start = std::chrono::steady_clock::now();
    std::string text;
    if (ReadFile(folder / "full.Q40", kLongestCloneFile, text)) std::exit(1);
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  });
  Row("Open a clone file, decode all, encode all", Number("%.0f us", 1e6 * open), "1000 us");
  Row("of it over reading the file's bytes", Number("%.1f", open / read), "");
  Row("of it allocations (4,200 cells)", std::to_string(allocated), "");
  const double save = MedianOf(50, [&] {
    const auto start = std::chrono::steady_clock::now();
    if (SaveCloneFile(folder / "saved.Q40", document, document.model)) std::exit(1);
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  });
  Row("Save a clone file, pushed to the disk", Number("%.1f ms", 1000 * save), "");
  const double plain = MedianOf(50, [&] {
    const auto start = std::chrono::steady_clock::now();
    std::FILE* file = std::fopen((folder / "plain").c_str(), "wb");
    const auto text = CloneFileText(document, document.model);
    if (file == nullptr || !text || std::fwrite(text->data(), 1, text->size(), file) == 0 ||
        std::fflush(file) != 0 || fsync(fileno(file)) != 0 || std::fclose(file) != 0) {
      std::exit(1);
    }
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  });
  Row("of it over encoding, writing and pushing a plain file", Number("%.2f", save / plain), "");
}

void Check(const Folder& folder) {
  double single = 0;
  for (const int count : {1, 10, 100, 1000}) {
    std::vector<std::string> command = {Program("rxq40ctl"), "check"};
    command.insert(command.end(), static_cast<std::size_t>(count), folder / "full.Q40");
    long peak = 0;
    const double seconds = MedianOf(9, [&] {
      const ProcessResult result = Must(test::Run(command));
      peak = std::max(peak, result.peak_kib);
      return result.seconds;
    });
    if (count == 1) single = seconds;
    const std::string files = std::to_string(count) + (count == 1 ? " file" : " files");
    Row("check of " + files,
        Number("%.1f ms", 1000 * seconds) +
            (count > 1 ? Number(" (%.0f us a file more)", 1e6 * (seconds - single) / (count - 1))
                       : ""),
        "linear");
    if (count == 1000) {
      Row("memory of check, 1000 files", Number("%.1f MiB", static_cast<double>(peak) / 1024),
          "16 MB");
    }
  }
}

void Start(const Folder& folder) {
  const auto median = [](const std::vector<std::string>& command) {
    return MedianOf(101, [&] { return Must(test::Run(command)).seconds; });
  };
  const double baseline = median({Program("bench_baseline")});
  Row("start of an empty dynamically linked C++ program", Number("%.2f ms", 1000 * baseline), "");
  const double version = median({Program("rxq40ctl"), "--version"});
  Row("rxq40ctl --version, over that",
      Number("%.2f ms", 1000 * version) + Number(" = %.2f", version / baseline), "");
  const double qt = median({Program("bench_baseline_qt")});
  Row("the empty program linked with the serial port's libraries",
      Number("%.2f ms", 1000 * qt) + Number(" = %.2f", qt / baseline), "");
  const double check = median({Program("rxq40ctl"), "check", folder / "full.Q40"});
  Row("rxq40ctl check of one file",
      Number("%.2f ms", 1000 * check) + Number(" = %.2f", check / baseline), "");
}

// ---- the window, offscreen

std::vector<double> WindowFigures(const std::vector<std::string>& mode) {
  std::vector<std::string> command = {Program("bench_window")};
  command.insert(command.end(), mode.begin(), mode.end());
  test::ProcessOptions options;
  options.environment = {{"QT_QPA_PLATFORM", "offscreen"}, {"XDG_RUNTIME_DIR", "/tmp"}};
  options.limit = std::chrono::minutes(2);
  std::istringstream out(Must(test::Run(command, options)).out);
  std::vector<double> figures;
  for (double figure = 0; out >> figure;) figures.push_back(figure);
  if (figures.empty()) std::exit(1);
  return figures;
}

void Window() {
  const double start = MedianOf(15, [] {
    const auto now = std::chrono::steady_clock::now().time_since_epoch().count();
    return WindowFigures({"start", std::to_string(now)})[0];
  });
  Row("window: from process start to the first painted window", Number("%.0f ms", start), "150 ms");
  Row("window: memory after three idle seconds",
      Number("%.1f MiB", WindowFigures({"memory"})[0] / 1024), "80 MB");
  Row("window: slowest tab switch or scroll step", Number("%.1f ms", WindowFigures({"frames"})[0]),
      "16 ms");
  constexpr double kFrame = 16;
  Row("window: slowest Undo of a step that changes everything, over a frame of 16 ms",
      Number("%.2f", WindowFigures({"undo"})[0] / kFrame), "1");
  Row("channel list: slowest step through 210 rows, over a frame of 16 ms",
      Number("%.2f", WindowFigures({"list"})[0] / kFrame), "1");
  const auto read = WindowFigures({"read"});
  Row("window: Read All at 9600 baud, time over the wire's",
      Number("%.4f", read[0] / kReadAll.Seconds()), "1.03");
  Row("window: Read All at 9600 baud, processor share", Number("%.2f %%", 100 * read[1] / read[0]),
      "");
}

// Clone files with all 210 channels in use, and with the first `changed` of them changed.
void MakeFile(const std::string& path, std::size_t changed) {
  CloneData document = FreshData();
  for (std::size_t n = 0; n < kMemoryChannelCount; ++n) {
    document.image.MemoryTable[n] = document.image.TemplateChannel();
    document.image.MemoryTable[n].Set(ChannelKind::kMemory, Field::kName, 1,
                                      (n < changed ? "X" : "CH") + std::to_string(n));
    document.image.ChannelInUse[n] = true;
  }
  if (SaveCloneFile(path, document, document.model)) std::exit(1);
}

}  // namespace
}  // namespace q40

int main() {
  const q40::Folder folder;
  q40::MakeFile(folder / "full.Q40", 0);
  q40::MakeFile(folder / "one.Q40", 1);
  q40::MakeFile(folder / "many.Q40", q40::kMemoryChannelCount);
  std::printf("| what | measured | limit |\n| --- | --- | --- |\n");
  q40::Codec(folder);
  q40::Check(folder);
  q40::Start(folder);
  q40::Window();
  q40::Unpaced(folder);
  q40::Paced(folder, "read", q40::kReadAll);
  q40::Paced(folder, "write", q40::kWriteAll);
  q40::PacedNet(folder, "--backup", q40::kReadAll);
  q40::PacedChanges(folder, q40::PacedNet(folder, "--verify", q40::kVerify));
  return 0;
}
