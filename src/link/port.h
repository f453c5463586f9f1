// A byte pipe to the radio: the real serial port, or the simulated radio.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace q40 {

inline constexpr int kBaudRate = 9600;  // 8 data bits, no parity, 1 stop bit, no flow control
inline constexpr int kBitsPerByte = 10;
inline constexpr int kInputBufferBytes = 1024;

struct PortProblem {
  enum class Kind : unsigned char {
    kNone,
    kMissing,       // no such device
    kNoPermission,  // it is there, but not for this user
    kBusy,          // another program has it
    kNotSerial,     // it is a file, a folder, or a device that is no serial line
    kLost,          // it was open, and the other end hung up
    kOther,
  };
  Kind kind = Kind::kNone;
  std::string what;    // what happened, one sentence without a full stop
  std::string remedy;  // what to try next, in sentences
};

// Not thread-safe: one owner, one thread. Nothing here blocks, and nothing throws.
class Port {
 public:
  Port() = default;
  virtual ~Port() = default;
  Port(const Port&) = delete;
  Port& operator=(const Port&) = delete;

  // Opens and configures the port; true when it is open afterwards. An open port stays open.
  virtual bool Open() = 0;
  [[nodiscard]] virtual bool IsOpen() const = 0;
  virtual void Close() = 0;

  // Sends all of a text, or queues it. False: the port is lost and closed.
  virtual bool Write(std::string_view text) = 0;
  // Everything that has arrived, possibly nothing. No value: the port is lost and closed.
  virtual std::optional<std::string> ReadAvailable() = 0;

  // Why the last failing operation failed.
  [[nodiscard]] virtual PortProblem Problem() const = 0;
};

}  // namespace q40
