#include "support/process.h"

#include <array>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace q40::test {
namespace {

using Clock = std::chrono::steady_clock;

[[noreturn]] void Exec(const std::vector<std::string>& command, const ProcessOptions& options) {
  for (const auto& [name, value] : options.environment) setenv(name.c_str(), value.c_str(), 1);
  // What was started in the background or with nohup ignores some, and so would its children.
  for (const int signal : {SIGINT, SIGHUP, SIGTERM}) std::signal(signal, SIG_DFL);
  if (options.ignore_hangup) std::signal(SIGHUP, SIG_IGN);
  constexpr uid_t kNobody = 65534;
  if (options.as_nobody && (setgid(kNobody) != 0 || setuid(kNobody) != 0)) _exit(126);
  std::vector<char*> argv;
  argv.reserve(command.size() + 1);
  for (const std::string& word : command) argv.push_back(const_cast<char*>(word.c_str()));
  argv.push_back(nullptr);
  execv(argv[0], argv.data());
  _exit(127);
}

struct Pipe {
  int read_end = -1;
  int write_end = -1;
  Pipe() {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) == 0) {
      read_end = ends[0];
      write_end = ends[1];
    }
  }
};

int CodeOf(int status) { return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status); }

}  // namespace

std::string Program(const std::string& name) { return std::string(PROGRAM_FOLDER) + "/" + name; }

ProcessResult Run(const std::vector<std::string>& command, const ProcessOptions& options) {
  Pipe out;
  Pipe err;
  const auto start = Clock::now();
  const pid_t pid = fork();
  if (pid == 0) {
    dup2(open("/dev/null", O_RDONLY), STDIN_FILENO);
    dup2(out.write_end, STDOUT_FILENO);
    dup2(err.write_end, STDERR_FILENO);
    Exec(command, options);
  }
  close(out.write_end);
  close(err.write_end);

  ProcessResult result;
  std::array<pollfd, 2> handles = {{{out.read_end, POLLIN, 0}, {err.read_end, POLLIN, 0}}};
  bool signalled = options.signal == 0;
  while (handles[0].fd >= 0 || handles[1].fd >= 0) {
    const auto elapsed = Clock::now() - start;
    if (!signalled && elapsed >= options.signal_after) {
      kill(pid, options.signal);
      signalled = true;
    }
    if (elapsed > options.limit) kill(pid, SIGKILL);
    constexpr int kPollMs = 10;
    if (poll(handles.data(), handles.size(), kPollMs) <= 0) continue;
    for (std::size_t i = 0; i < handles.size(); ++i) {
      if (handles[i].revents == 0) continue;
      std::array<char, 65536> piece{};
      const ssize_t got = read(handles[i].fd, piece.data(), piece.size());
      if (got > 0) {
        (i == 0 ? result.out : result.err).append(piece.data(), static_cast<std::size_t>(got));
      } else {
        close(handles[i].fd);
        handles[i].fd = -1;
      }
    }
  }
  int status = 0;
  rusage usage{};
  wait4(pid, &status, 0, &usage);
  result.code = CodeOf(status);
  result.seconds = std::chrono::duration<double>(Clock::now() - start).count();
  const auto seconds = [](const timeval& t) {
    return static_cast<double>(t.tv_sec) + static_cast<double>(t.tv_usec) * 1e-6;
  };
  result.peak_kib = usage.ru_maxrss;
  result.cpu_seconds = seconds(usage.ru_utime) + seconds(usage.ru_stime);
  return result;
}

Background::Background(const std::vector<std::string>& command,
                       const std::map<std::string, std::string>& environment,
                       std::string* first_line) {
  Pipe out;
  pid_ = fork();
  if (pid_ == 0) {
    const int nothing = open("/dev/null", O_RDWR);
    for (const int handle : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) dup2(nothing, handle);
    if (first_line != nullptr) dup2(out.write_end, STDOUT_FILENO);
    ProcessOptions options;
    options.environment = environment;
    Exec(command, options);
  }
  close(out.write_end);
  char c = 0;
  while (first_line != nullptr && read(out.read_end, &c, 1) == 1 && c != '\n') *first_line += c;
  close(out.read_end);
}

int Background::Stop(int signal) {
  if (!IsRunning()) return code_;
  kill(pid_, signal != 0 ? signal : SIGTERM);
  int status = 0;
  waitpid(pid_, &status, 0);
  pid_ = -1;
  return code_ = CodeOf(status);
}

bool Background::IsRunning() {
  if (pid_ < 0) return false;
  int status = 0;
  if (waitpid(pid_, &status, WNOHANG) == 0) return true;
  code_ = CodeOf(status);
  pid_ = -1;
  return false;
}

int Background::Wait(std::chrono::milliseconds limit) {
  const auto end = Clock::now() + limit;
  while (IsRunning()) {
    if (Clock::now() >= end) return -1;
    usleep(10'000);
  }
  return code_;
}

}  // namespace q40::test
