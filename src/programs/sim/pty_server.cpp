#include "programs/sim/pty_server.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <poll.h>
#include <sys/inotify.h>
#include <sys/ioctl.h>
#include <system_error>
#include <termios.h>
#include <unistd.h>

namespace q40 {
namespace fs = std::filesystem;
namespace {

using Clock = std::chrono::steady_clock;

bool Failed(std::string& why, const std::string& what) {
  why = what + ": " + std::generic_category().message(errno);
  return false;
}

void MakeRaw(int terminal) {
  termios mode{};
  if (tcgetattr(terminal, &mode) != 0) return;
  cfmakeraw(&mode);
  tcsetattr(terminal, TCSANOW, &mode);
}

timespec Until(Clock::time_point due) {
  const auto wait = std::max(due - Clock::now(), Clock::duration::zero());
  const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(wait);
  const auto rest = std::chrono::duration_cast<std::chrono::nanoseconds>(wait - seconds);
  return {seconds.count(), rest.count()};
}

}  // namespace

PtyServer::~PtyServer() {
  std::error_code error;
  if (!link_.empty() && fs::read_symlink(link_, error) == device_) fs::remove(link_, error);
  Close();
}

bool PtyServer::Start(std::string& why) {
  master_ = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
  if (master_ < 0 || grantpt(master_) != 0 || unlockpt(master_) != 0) {
    return Failed(why, "no pseudo-terminal");
  }
  std::array<char, 128> name{};
  if (ptsname_r(master_, name.data(), name.size()) != 0) return Failed(why, "no pseudo-terminal");
  device_ = name.data();
  slave_ = open(device_.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
  if (slave_ < 0) return Failed(why, device_);
  MakeRaw(slave_);
  fcntl(master_, F_SETFL, O_NONBLOCK);
  closings_ = inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
  if (closings_ >= 0) inotify_add_watch(closings_, device_.c_str(), IN_CLOSE);
  return Publish(why);
}

bool PtyServer::Publish(std::string& why) {
  if (link_.empty()) return true;
  std::error_code error;
  if (fs::exists(fs::symlink_status(link_, error))) {
    const fs::path old = fs::read_symlink(link_, error);
    if (error || !old.string().starts_with("/dev/pts/")) {
      why = link_ + ": exists and is not a link to a pseudo-terminal";
      return false;
    }
    if (old != published_ && fs::exists(old, error)) {
      why = link_ + ": leads to " + old.string() +
            ", which is in use. Stop the other simulator, or remove the link";
      return false;
    }
  }
  // Beside it and renamed: whoever follows the link finds one device or the other.
  const std::string fresh = link_ + "." + std::to_string(getpid()) + ".tmp";
  fs::create_symlink(device_, fresh, error);
  if (!error) fs::rename(fresh, link_, error);
  if (error) {
    why = link_ + ": " + error.message();
  } else {
    published_ = device_;
  }
  return !error;
}

void PtyServer::Close() {
  for (int* handle : {&slave_, &master_, &closings_}) {
    if (*handle >= 0) close(*handle);
    *handle = -1;
  }
  unsent_.clear();
  sent_ = 0;
}

// The cable is pulled out. A fault that happens once plugs it in again later, as a new device.
void PtyServer::Disconnect() {
  back_at_.reset();
  if (const auto after = radio_.ComesBackAfter()) back_at_ = Clock::now() + *after;
  Close();
}

// A program that died with the device in exclusive mode must not lock out the next one.
void PtyServer::ReleaseExclusiveMode() const {
  std::array<char, 4096> events{};
  while (read(closings_, events.data(), events.size()) > 0) continue;
  ioctl(slave_, TIOCNXCL);
}

void PtyServer::Receive() {
  std::array<char, 4096> piece{};
  const ssize_t got = read(master_, piece.data(), piece.size());
  if (got > 0) radio_.Receive({piece.data(), static_cast<std::size_t>(got)}, Clock::now());
}

void PtyServer::Send() {
  unsent_ += radio_.Take(Clock::now());
  if (unsent_.empty()) return;
  const ssize_t sent = write(master_, unsent_.data() + sent_, unsent_.size() - sent_);
  if (sent > 0) sent_ += static_cast<std::size_t>(sent);
  if (sent_ < unsent_.size()) return;
  unsent_.clear();
  sent_ = 0;
}

void PtyServer::PlugInAgain() {
  if (!back_at_ || Clock::now() < *back_at_) return;
  back_at_.reset();
  radio_.Reconnect();
  std::string why;
  if (!Start(why)) std::fprintf(stderr, "rxq40sim: %s\n", why.c_str());
}

void PtyServer::Serve(const volatile std::sig_atomic_t& stop, const sigset_t& while_waiting) {
  while (stop == 0 && !radio_.IsOver()) {
    std::optional<Clock::time_point> due = master_ >= 0 ? radio_.NextDue() : back_at_;
    const timespec wait = Until(due.value_or(Clock::now()));
    const short wanted = unsent_.empty() ? POLLIN : POLLOUT;
    std::array<pollfd, 2> handles = {{{master_, wanted, 0}, {closings_, POLLIN, 0}}};
    const int ready = ppoll(handles.data(), handles.size(), due ? &wait : nullptr, &while_waiting);
    if (ready < 0) continue;  // a signal; `stop` tells whether it is the one

    if (master_ < 0) {
      PlugInAgain();
      continue;
    }
    if ((handles[1].revents & POLLIN) != 0) ReleaseExclusiveMode();
    if ((handles[0].revents & POLLIN) != 0) Receive();
    // A command that ends in CR alone is answered, or hung up on, only when its answer is due.
    if (!radio_.HungUp()) Send();
    if (radio_.HungUp()) Disconnect();
  }
}

}  // namespace q40
