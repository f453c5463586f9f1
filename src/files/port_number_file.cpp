#include "files/port_number_file.h"

#include <filesystem>
#include <system_error>

#include "base/decimal.h"
#include "files/whole_file.h"

namespace q40 {
namespace fs = std::filesystem;
namespace {

constexpr int kHighestPortNumber = 14;
constexpr std::size_t kLongestFile = 256;
constexpr const char* kDesktopEntry = "share/applications/rxq40.desktop";

std::string PathIn(const std::string& folder) {
  return (fs::path(folder) / kPortNumberFile).string();
}

// Beside the desktop entry that is installed with it. Such a folder belongs to the package manager:
// root could write there, and then every user would get root's port.
bool IsInstalled(const std::string& program_folder) {
  std::error_code error;
  return fs::exists(fs::path(program_folder) / ".." / kDesktopEntry, error);
}

}  // namespace

int PortNumberIn(std::string_view text) {
  const std::string_view item = Trimmed(text.substr(0, text.find_first_of(",\r\n")));
  const bool digits = !item.empty() && item.find_first_not_of("0123456789") == std::string::npos;
  const auto number = digits ? LeadingNumber(item) / kNumberScale : 0;
  return number >= 1 && number <= kHighestPortNumber ? static_cast<int>(number)
                                                     : kDefaultPortNumber;
}

std::string PortNumberText(int number) { return std::to_string(number) + "\r\n"; }

int PortNumberFile::Read() const {
  std::string text;
  for (const std::string& folder : {user_folder_, program_folder_}) {
    if (!ReadFile(PathIn(folder), kLongestFile, text)) return PortNumberIn(text);
  }
  return kDefaultPortNumber;
}

void PortNumberFile::Write(int number) const {
  std::error_code error;
  if (!IsInstalled(program_folder_) &&
      !WriteFile(PathIn(program_folder_), PortNumberText(number))) {
    fs::remove(PathIn(user_folder_), error);  // it would win, and go out of date
    return;
  }
  fs::create_directories(user_folder_, error);
  // Nobody asked for this file, so nobody is told when it fails; the next start uses port 1.
  static_cast<void>(WriteFile(PathIn(user_folder_), PortNumberText(number)));
}

}  // namespace q40
