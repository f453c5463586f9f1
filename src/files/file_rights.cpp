#include "files/file_rights.h"

#include <cerrno>

namespace q40 {
namespace {

constexpr std::uint32_t kSetUser = 04000;
constexpr std::uint32_t kSetGroup = 02000;
constexpr std::uint32_t kOthers = 07;
constexpr unsigned kGroupShift = 3;

// Owner and group, or the group alone. `fresh` becomes what the file has then.
bool KeepOwner(FileSystem& system, const FileRights& old, std::FILE* file, const std::string& path,
               FileRights& fresh) {
  if (old.owner == fresh.owner && old.group == fresh.group) return true;
  const bool kept = system.SetOwner(file, old.owner, old.group) ||
                    (old.group != fresh.group && system.SetOwner(file, fresh.owner, old.group));
  return (kept || errno == EPERM || IsUnsupported(errno)) && system.Rights(path, fresh);
}

// The list speaks of the old group too, and means nothing in another one.
bool KeepAccessList(FileSystem& system, const FileRights& old, std::FILE* file,
                    const std::string& path, FileRights& fresh) {
  const std::string list = fresh.group == old.group ? old.access_list : std::string();
  if (list == fresh.access_list) return true;
  if (!system.SetAccessList(file, list) && !IsUnsupported(errno)) return false;
  return system.Rights(path, fresh);
}

// In another group the old members are others, and others become members: both get what both had.
// With an access list, what others had says nothing about those whom the list names.
std::uint32_t ModeFor(const FileRights& fresh, const FileRights& old) {
  std::uint32_t mode = old.mode;
  if (fresh.owner != old.owner) mode &= ~kSetUser;
  if (fresh.group == old.group) return mode;
  const std::uint32_t both = mode & (mode >> kGroupShift) & kOthers;
  const std::uint32_t shared = old.access_list.empty() ? both : 0;
  mode &= ~(kSetGroup | kOthers << kGroupShift | kOthers);
  return mode | shared << kGroupShift | shared;
}

}  // namespace

bool KeepRights(FileSystem& system, const FileRights& old, std::FILE* file,
                const std::string& path) {
  FileRights fresh;
  if (!system.Rights(path, fresh)) return false;
  if (!KeepOwner(system, old, file, path, fresh)) return false;
  if (!KeepAccessList(system, old, file, path, fresh)) return false;
  const std::uint32_t mode = ModeFor(fresh, old);
  if (mode == fresh.mode || system.SetMode(file, mode) || IsUnsupported(errno)) return true;
  // A file system that knows only some modes refuses the others, even for a file that has just been
  // made. No harm where that opens the file to nobody.
  return errno == EPERM && (fresh.mode & ~mode) == 0;
}

}  // namespace q40
