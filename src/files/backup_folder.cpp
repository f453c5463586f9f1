#include "files/backup_folder.h"

#include <algorithm>
#include <ctime>
#include <filesystem>
#include <sys/stat.h>

#include "document/defaults.h"
#include "document/document_units.h"
#include "files/radio_copy_file.h"
#include "radio/models.h"

namespace q40 {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kSuffix = ".Q40";
constexpr std::string_view kTimeForm = "0000-00-00 00.00.00";
constexpr BackupReason kReasons[] = {BackupReason::kByHand, BackupReason::kBeforeWrite,
                                     BackupReason::kAfterBrokenWrite};

bool IsTime(std::string_view text) {
  return std::equal(
      text.begin(), text.end(), kTimeForm.begin(), kTimeForm.end(),
      [](char c, char form) { return form == '0' ? '0' <= c && c <= '9' : c == form; });
}

// Without the number of a second file of the same second: " (2)".
std::string_view WithoutNumber(std::string_view text) {
  const auto at = text.rfind(" (");
  return at != std::string_view::npos && text.ends_with(')') ? text.substr(0, at) : text;
}

std::optional<BackupReason> ReasonOf(std::string_view text) {
  if (text.empty()) return BackupReason::kBeforeWrite;
  if (text.starts_with(' ')) text.remove_prefix(1);
  for (const BackupReason reason : kReasons) {
    if (text == BackupReasonText(reason)) return reason;
  }
  return std::nullopt;
}

// What a name tells; none that the program has given tells nothing.
BackupName NameOf(std::string_view name) {
  const auto blank = name.find(' ');
  if (blank == std::string_view::npos || !name.ends_with(kSuffix)) return {};
  const auto model = FindModel(name.substr(0, blank));
  std::string_view rest = name.substr(blank + 1);
  rest.remove_suffix(kSuffix.size());
  const std::string_view time = rest.substr(0, kTimeForm.size());
  if (!model || !IsTime(time)) return {};
  const auto reason = ReasonOf(WithoutNumber(rest.substr(time.size())));
  if (!reason) return {};
  return {*model, std::string(time), *reason};
}

std::string LastChange(const std::string& path) {
  struct stat about {};
  std::tm parts{};
  char text[] = "0000-00-00 00.00.00";
  if (stat(path.c_str(), &about) != 0 || localtime_r(&about.st_mtime, &parts) == nullptr) return {};
  return std::strftime(text, sizeof text, "%Y-%m-%d %H.%M.%S", &parts) > 0 ? text : std::string();
}

void CountChannels(const RadioCopy& copy, BackupEntry& entry) {
  CloneData data = FreshData();
  for (const UnitData& unit : copy.units) {
    if (unit.unit.kind() != Unit::Kind::kMemory) continue;
    const bool undecodable = LoadUnit(unit, data).has_value();
    entry.undecodable += undecodable ? 1 : 0;
    const auto n = static_cast<std::size_t>(unit.unit.index());
    entry.channels += undecodable || data.image.ChannelInUse[n] ? 1 : 0;
  }
}

BackupEntry EntryOf(const fs::path& path) {
  BackupEntry entry{path.string(), NameOf(path.filename().string()), 0, 0, {}};
  if (entry.name.time.empty()) entry.name.time = LastChange(entry.path);
  RadioCopy copy;
  if (const auto problem = OpenRadioCopy(entry.path, copy)) {
    entry.problem = problem->what;
    return entry;
  }
  entry.name.model = copy.model;
  CountChannels(copy, entry);
  return entry;
}

// The paths of all files with the suffix. An entry that cannot be looked at ends the list: the folder
// is gone then.
std::vector<fs::path> PathsIn(const std::string& folder) {
  std::vector<fs::path> paths;
  std::error_code error;
  for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
       entry.increment(error)) {
    std::error_code vanished;
    const bool is_backup = entry->path().filename().string().ends_with(kSuffix);
    if (is_backup && entry->is_regular_file(vanished)) paths.push_back(entry->path());
  }
  return paths;
}

// The number of a second file counts like one of a later second.
bool IsLater(const BackupEntry& a, const BackupEntry& b) {
  if (a.name.time != b.name.time) return a.name.time > b.name.time;
  if (a.path.size() != b.path.size()) return a.path.size() > b.path.size();
  return a.path > b.path;
}

}  // namespace

std::string_view BackupReasonText(BackupReason reason) {
  switch (reason) {
    case BackupReason::kByHand: return "by hand";
    case BackupReason::kBeforeWrite: return "before a write";
    case BackupReason::kAfterBrokenWrite: return "after a broken write";
    default: return {};
  }
}

std::vector<BackupEntry> ListBackups(const std::string& folder) {
  std::vector<BackupEntry> entries;
  for (const fs::path& path : PathsIn(folder)) entries.push_back(EntryOf(path));
  std::sort(entries.begin(), entries.end(), IsLater);
  return entries;
}

std::string LastWholeBackup(const std::string& folder, int model) {
  for (const BackupEntry& entry : ListBackups(folder)) {
    if (entry.IsWhole() && entry.name.model == model) return entry.path;
  }
  return {};
}

std::optional<FileProblem> KeepBackup(const std::string& folder, const RadioCopy& copy,
                                      const std::string& time, BackupReason reason,
                                      std::string& path) {
  std::error_code error;  // of a folder that cannot be had the save tells
  fs::create_directories(folder, error);
  std::string name = folder + '/';
  name.append(ModelName(copy.model)).append(" ").append(time).append(" ");
  name.append(BackupReasonText(reason));
  path = name + std::string(kSuffix);
  for (int number = 2; fs::exists(path, error); ++number) {
    path = name + " (" + std::to_string(number) + ')' + std::string(kSuffix);
  }
  return SaveRadioCopy(path, copy);
}

}  // namespace q40
