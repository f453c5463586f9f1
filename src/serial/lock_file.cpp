#include "serial/lock_file.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace q40 {
namespace {

namespace fs = std::filesystem;
using std::chrono::seconds;

// After this time a file without a number counts as left; Qt does the same.
constexpr seconds kTimeToWrite{30};
// The clocks of files and processes need not agree to the second.
constexpr seconds kClockMargin{2};

// As much as is worth reading: anybody may have put anything there.
std::string Text(const fs::path& path) {
  constexpr std::size_t kEnough = 4096;
  std::string text(kEnough, '\0');
  std::ifstream file(path, std::ios::binary);
  file.read(text.data(), static_cast<std::streamsize>(text.size()));
  text.resize(static_cast<std::size_t>(file.gcount()));
  return text;
}

// How long ago a file was written; 0 when it is gone.
seconds AgeOf(const std::string& path) {
  struct stat status {};
  return seconds(stat(path.c_str(), &status) == 0 ? std::time(nullptr) - status.st_mtime : 0);
}

// What the system tells about a process. Any of it may be unknown.
class Process {
 public:
  explicit Process(pid_t pid) : pid_(pid), folder_(fs::path("/proc") / std::to_string(pid)) {}

  [[nodiscard]] bool Lives() const { return kill(pid_, 0) == 0 || errno == EPERM; }

  [[nodiscard]] std::string Name() const {
    std::string name;
    std::istringstream(Text(folder_ / "comm")) >> name;
    return name;
  }

  // Whether it goes by a name: its own, its program's, or that of a script which it runs.
  [[nodiscard]] bool IsCalled(const std::string& name) const {
    std::vector<std::string> names = {Name()};
    std::error_code error;
    names.push_back(fs::read_symlink(folder_ / "exe", error).filename().string());
    std::istringstream words(Text(folder_ / "cmdline"));
    for (std::string word; std::getline(words, word, '\0');) {
      names.push_back(fs::path(word).filename().string());
    }
    const bool nothing_known =
        std::all_of(names.begin(), names.end(), [](auto& known) { return known.empty(); });
    return nothing_known || std::find(names.begin(), names.end(), name) != names.end();
  }

  // How long ago it started.
  [[nodiscard]] std::optional<seconds> Age() const {
    constexpr int kStartField = 22;  // counted from 1; in ticks since the machine was started
    constexpr int kBehindName = 3;
    const std::string text = Text(folder_ / "stat");
    // The name, in brackets, may hold blanks and brackets itself.
    const std::size_t name_end = text.rfind(')');
    if (name_end == std::string::npos) return std::nullopt;
    std::istringstream fields(text.substr(name_end + 1));
    std::string field;
    for (int i = kBehindName; i < kStartField; ++i) fields >> field;
    long long ticks = 0;
    timespec now{};
    if (!(fields >> ticks) || clock_gettime(CLOCK_BOOTTIME, &now) != 0) return std::nullopt;
    return seconds(now.tv_sec - ticks / sysconf(_SC_CLK_TCK));
  }

 private:
  pid_t pid_;
  fs::path folder_;
};

// The number of a process is given to another one in time. The one that wrote the file goes by the
// name that stands in it; where none does, it is not younger than the file. The name comes first: a
// clock that was set after the file was written makes every process look younger.
bool WroteTheFile(const Process& process, const std::string& program, seconds file_age) {
  if (!process.Lives()) return false;
  if (!program.empty()) return process.IsCalled(program);
  const auto age = process.Age();
  return !age || *age + kClockMargin >= file_age;
}

LockFile Judged(const std::string& path) {
  LockFile lock{path, LockFile::State::kNameless, {}};
  const seconds age = AgeOf(path);
  std::istringstream text(Text(path));
  pid_t pid = 0;
  std::string program;
  if (!(text >> pid) || pid <= 0) {
    if (age < kTimeToWrite && access(path.c_str(), R_OK) == 0) lock.state = LockFile::State::kNew;
    return lock;
  }
  text >> program;
  const Process process(pid);
  const bool held = WroteTheFile(process, program, age);
  lock.state = held ? LockFile::State::kHeld : LockFile::State::kLeft;
  if (program.empty()) program = process.Name();
  if (!program.empty()) lock.owner = program + ", ";
  lock.owner += "process " + std::to_string(pid);
  return lock;
}

}  // namespace

std::optional<LockFile> FindLockFile(const std::string& device) {
  std::error_code error;
  const auto resolved = fs::canonical(device, error);
  std::string name = resolved.lexically_relative("/dev").string();
  std::replace(name.begin(), name.end(), '/', '_');
  std::optional<LockFile> found;
  for (const char* folder : {"/run/lock", "/var/lock", "/tmp"}) {
    const std::string path = std::string(folder) + "/LCK.." + name;
    if (!fs::is_regular_file(path, error)) continue;
    LockFile lock = Judged(path);
    if (lock.state == LockFile::State::kHeld) return lock;
    if (!found) found = std::move(lock);
  }
  return found;
}

}  // namespace q40
