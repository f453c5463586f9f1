#include "serial/device_guard.h"

#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <grp.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

#include "serial/lock_file.h"

namespace q40 {
namespace {

using Kind = PortProblem::Kind;

constexpr const char* kChooseDevice = "Choose the device of the cable, /dev/ttyUSB0 for example.";

PortProblem Missing(const std::string& device) {
  return {Kind::kMissing, device + " does not exist", "Plug in the cable, or choose another port."};
}

PortProblem Busy(const std::string& device, const std::optional<LockFile>& lock) {
  const bool named = lock && lock->state == LockFile::State::kHeld;
  const std::string who =
      named ? " (" + lock->owner + "; its lock file is " + lock->path + ")" : "";
  return {Kind::kBusy, device + " is in use by another program",
          "Close the other program" + who + " and try again."};
}

PortProblem NotSerial(const std::string& device, const std::string& what) {
  return {Kind::kNotSerial, device + " is " + what + ", not a serial port", kChooseDevice};
}

// What would give this user the device: its group ("dialout" on Debian), where the group may use it
// at all. Nobody should be told to join the group of the administrator.
PortProblem Forbidden(const std::string& device) {
  const std::string what = "no permission to use " + device;
  struct stat status {};
  if (stat(device.c_str(), &status) != 0) {
    return {Kind::kNoPermission, what, "A folder on its path is closed to you."};
  }
  constexpr mode_t kGroupMayUse = S_IRGRP | S_IWGRP;
  const group* entry = getgrgid(status.st_gid);
  if (entry == nullptr || status.st_gid == 0 || (status.st_mode & kGroupMayUse) != kGroupMayUse) {
    return {Kind::kNoPermission, what, "Only its owner may use it. Ask the administrator."};
  }
  const std::string name = entry->gr_name;
  return {Kind::kNoPermission, what,
          "Its group is \"" + name + "\". Join it: sudo usermod -aG " + name +
              " $USER, then log out and in again."};
}

PortProblem OpenProblem(const std::string& device, int error) {
  switch (error) {
    case ENOENT:
    case ENODEV:
    case ENXIO:
    case ENOTDIR: return Missing(device);
    case EACCES:
    case EPERM: return Forbidden(device);
    case EBUSY:
    case EWOULDBLOCK: return Busy(device, FindLockFile(device));
    default: return CannotOpen(device, std::generic_category().message(error));
  }
}

// What is not even a device must not be opened: a pipe would block or be drained.
std::optional<PortProblem> CheckKind(const std::string& device) {
  std::error_code error;
  switch (std::filesystem::status(device, error).type()) {
    case std::filesystem::file_type::character: return std::nullopt;
    case std::filesystem::file_type::directory: return NotSerial(device, "a folder");
    case std::filesystem::file_type::regular: return NotSerial(device, "a file");
    case std::filesystem::file_type::fifo: return NotSerial(device, "a pipe");
    case std::filesystem::file_type::block: return NotSerial(device, "a disk");
    case std::filesystem::file_type::socket: return NotSerial(device, "a socket");
    case std::filesystem::file_type::not_found: return Missing(device);
    default: return OpenProblem(device, error.value());
  }
}

bool IsExclusive(int handle) {
  int exclusive = 0;
  return ioctl(handle, TIOCGEXCL, &exclusive) == 0 && exclusive != 0;
}

}  // namespace

std::optional<PortProblem> DeviceGuard::Take(const std::string& device) {
  if (auto problem = CheckKind(device)) return problem;
  handle_ = open(device.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
  if (handle_ < 0) return OpenProblem(device, errno);
  const auto lock = FindLockFile(device);
  const bool held = lock && lock->state == LockFile::State::kHeld;
  std::optional<PortProblem> problem;
  if (isatty(handle_) == 0) {
    problem = NotSerial(device, "a device of another kind");
  } else if (flock(handle_, LOCK_EX | LOCK_NB) != 0) {
    problem = OpenProblem(device, errno);
  } else if (IsExclusive(handle_) || held) {
    problem = Busy(device, lock);  // the system lets the administrator open it nevertheless
  }
  if (problem) Release();
  return problem;
}

void DeviceGuard::Release() {
  if (handle_ >= 0) close(handle_);
  handle_ = -1;
}

bool DeviceGuard::HungUp() const {
  pollfd state{handle_, 0, 0};
  return poll(&state, 1, 0) > 0 && (state.revents & (POLLHUP | POLLERR | POLLNVAL)) != 0;
}

PortProblem LockProblem(const std::string& device, const std::string& reason) {
  const auto lock = FindLockFile(device);
  if (!lock) {
    return {Kind::kOther, device + " cannot be locked: " + reason,
            "Lock files are kept in /run/lock; this user must be able to write there."};
  }
  const std::string remove = "sudo rm " + lock->path;
  switch (lock->state) {
    case LockFile::State::kHeld: return Busy(device, lock);
    case LockFile::State::kLeft:
      return {Kind::kBusy, device + " is still locked by a program that is gone",
              "Remove its lock file: " + remove};
    case LockFile::State::kNew:
      return {Kind::kBusy, device + " is being locked by another program",
              "Its lock file " + lock->path +
                  " is new and names none yet: try again in half a minute."};
    default:
      return {Kind::kBusy, device + " is locked by a file that names no program",
              "If no program uses the port, remove the file: " + remove};
  }
}

PortProblem CannotOpen(const std::string& device, const std::string& reason) {
  return {Kind::kOther, device + " cannot be opened: " + reason, kChooseDevice};
}

}  // namespace q40
