#include "programs/ctl/helper_program.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>
#include <utility>

#include "programs/exit_codes.h"

namespace q40 {
namespace {

using Clock = std::chrono::steady_clock;

// An open file, closed at the end; -1: none.
class Descriptor {
 public:
  explicit Descriptor(int number = -1) : number_(number) {}
  ~Descriptor() { Close(); }
  Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(number_, other.number_);
    return *this;
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  void Close() {
    if (number_ >= 0) close(std::exchange(number_, -1));
  }
  [[nodiscard]] int number() const { return number_; }
  [[nodiscard]] bool IsOpen() const { return number_ >= 0; }

 private:
  int number_;
};

struct Pipe {
  Descriptor from;
  Descriptor to;
};

[[noreturn]] void Fail(const char* what, int error) {
  throw std::system_error(error, std::generic_category(), what);
}

Pipe MakePipe() {
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) Fail("pipe", errno);
  return {Descriptor(ends[0]), Descriptor(ends[1])};
}

// A pipe would want somebody who fills it while the answer is taken.
Descriptor FileWith(std::string_view input) {
  Descriptor file(memfd_create("input", MFD_CLOEXEC));
  if (!file.IsOpen()) Fail("memory for the input", errno);
  for (std::size_t done = 0; done < input.size();) {
    const ssize_t taken = write(file.number(), input.data() + done, input.size() - done);
    if (taken < 0 && errno != EINTR) Fail("memory for the input", errno);
    if (taken > 0) done += static_cast<std::size_t>(taken);
  }
  if (lseek(file.number(), 0, SEEK_SET) != 0) Fail("memory for the input", errno);
  return file;
}

// Its process; 0, with the reason in `error`, when there is none.
pid_t Start(const std::vector<std::string>& command, std::array<int, 3> streams, int& error) {
  std::vector<char*> words;
  words.reserve(command.size() + 1);
  for (const std::string& word : command) words.push_back(const_cast<char*>(word.c_str()));
  words.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  for (int i = 0; i < 3; ++i) {
    posix_spawn_file_actions_adddup2(&actions, streams[static_cast<std::size_t>(i)], i);
  }
  pid_t process = 0;
  error = posix_spawn(&process, words[0], &actions, nullptr, words.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  return error == 0 ? process : 0;
}

// Takes what has come. At the end of it, the pipe is closed here too.
void Take(Descriptor& from, std::string& text) {
  std::array<char, 65536> piece{};
  const ssize_t count = read(from.number(), piece.data(), piece.size());
  if (count > 0) return void(text.append(piece.data(), static_cast<std::size_t>(count)));
  if (count == 0 || errno != EINTR) from.Close();
}

// Until both have ended. False: the time was over before.
bool TakeAll(std::array<Descriptor, 2> pipes, std::array<std::string*, 2> texts,
             Clock::time_point end) {
  while (pipes[0].IsOpen() || pipes[1].IsOpen()) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now()).count();
    if (left <= 0) return false;
    // A negative number is passed over.
    std::array<pollfd, 2> wanted{pollfd{pipes[0].number(), POLLIN, 0},
                                 pollfd{pipes[1].number(), POLLIN, 0}};
    if (poll(wanted.data(), wanted.size(), static_cast<int>(left)) < 0) continue;
    for (std::size_t i = 0; i < wanted.size(); ++i) {
      if (wanted[i].revents != 0) Take(pipes[i], *texts[i]);
    }
  }
  return true;
}

std::string LastLine(std::string text) {
  text.erase(std::find_if(text.rbegin(), text.rend(), [](char c) { return c != '\n'; }).base(),
             text.end());
  return text.substr(text.rfind('\n') + 1);
}

}  // namespace

HelperResult RunHelper(const std::vector<std::string>& command, std::string_view input,
                       std::chrono::milliseconds limit) {
  const Descriptor in = FileWith(input);
  Pipe out = MakePipe();
  Pipe err = MakePipe();
  int error = 0;
  const pid_t process = Start(command, {in.number(), out.to.number(), err.to.number()}, error);
  if (process == 0) {
    return {kExitInternal, {}, command[0] + ": " + std::generic_category().message(error)};
  }
  out.to.Close();
  err.to.Close();
  HelperResult result;
  std::string words;
  const bool finished = TakeAll({std::move(out.from), std::move(err.from)},
                                {&result.output, &words}, Clock::now() + limit);
  if (!finished) kill(process, SIGKILL);
  int status = 0;
  while (waitpid(process, &status, 0) < 0 && errno == EINTR) {
  }
  result.code = WIFEXITED(status) ? WEXITSTATUS(status) : static_cast<int>(kExitInternal);
  if (result.code != kExitDone) result.message = LastLine(words);
  if (!finished) result.message = command[0] + " did not finish in time";
  if (result.code != kExitDone && result.message.empty()) result.message = command[0] + " failed";
  return result;
}

}  // namespace q40
