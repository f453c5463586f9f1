// One exchange with the radio: a command line out, its echo and the answer back.
//
// The radio side returns everything that was sent, line end included, and then its answer, which
// ends with CR LF. Echo and answer are not told apart by parsing: an exchange is complete by length
// and last character, and the sequences read the answer at fixed positions.
//
//   sent               comes back
//   KX~F0200R CR LF    KX~F0200R CR LF, 64 digits, CR LF      32 bytes, 77 characters in all
//   KX~F0200R CR       KX~F0200R CR, CR LF, 32 digits, CR LF  16 bytes
//   KX~E CR LF LF      the doubled LF is part of the protocol
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "link/port.h"
#include "link/waiting.h"
#include "radio/memory_map.h"

namespace q40 {

inline constexpr std::chrono::milliseconds kCommandTimeout{2000};
inline constexpr std::chrono::milliseconds kBlockTimeout{500};
inline constexpr std::int16_t kPauseMs = 10;  // between two commands

// What another program has left on the line, or the cable says when it gets its power, is thrown away
// before the first command: until the line is quiet for this long, and for this long at the most.
inline constexpr std::chrono::milliseconds kQuietLine{20};
inline constexpr std::chrono::milliseconds kLongestDrain{200};

// What the deadline of a sequence grants beside the limits of its exchanges and pauses.
inline constexpr std::chrono::milliseconds kDeadlineMargin{5000};

// What TxCommand returns instead of a reply. A reply ends with LF, so none can be mistaken.
inline constexpr std::string_view kPortFailed = "False00";  // opening, writing or reading failed
inline constexpr std::string_view kNoReply = "False01";     // no complete reply within 2000 ms
inline constexpr std::string_view kStopped = "Stopped";     // not sent: the user stops the program

// What RxBlock returns instead of a reply.
inline constexpr std::string_view kBlockPortFailed = "ERROR00";
inline constexpr std::string_view kBlockNoReply = "ERROR01";   // fewer than 36 characters in 500 ms
inline constexpr std::string_view kBlockBadReply = "ERROR02";  // not framed by CR LF

// What TxBlock returns.
inline constexpr int kTxBlockDone = 0;
inline constexpr int kTxBlockRefused = 1;  // full length, but not the acknowledgement
inline constexpr int kTxBlockNoReply = 2;  // fewer than 46 characters in 500 ms
inline constexpr int kTxBlockPortFailed = 3;

class Link {
 public:
  // Everything must outlive the link.
  Link(Port& port, LinkTimers timers, EventPump& pump)
      : port_(port), timers_(timers), pump_(pump) {}

  // Before a sequence: opens the port if it is closed, and waits until the line is quiet when it has
  // just been opened or something lies there; a quiet open port costs no time. It stays open until
  // its owner closes it or it is lost. False: it is closed.
  bool OpenPort();
  [[nodiscard]] const Port& port() const { return port_; }
  [[nodiscard]] bool StopRequested() const { return pump_.StopRequested(); }

  // A whole sequence may take as long as its exchanges may take together. What is sent or waited for
  // behind that counts as not answered, whatever the timers of the exchanges say: a device that
  // never stops talking cannot keep the program. Without a start there is no such end.
  void StartDeadline(int exchanges);
  void StopDeadline();
  [[nodiscard]] bool DeadlineIsOver() const;

  // Sends a command (text and CR; LF is added) and returns everything that came back, echo
  // included, or a marker. Input from before the command is thrown away. Takes 2000 ms at the most.
  // Never opens the port: one that was lost in the middle of a sequence may have another radio at
  // its end by now. After a stop request nothing is sent; an exchange in flight is finished.
  std::string TxCommand(std::string_view command);
  // Whether the last command reached the port, be it in part. False when the port was lost before, or
  // a stop request held the command back.
  [[nodiscard]] bool WasSent() const { return was_sent_; }
  // Everything that came back to the last command, also when it was no complete reply.
  [[nodiscard]] const std::string& Received() const { return reply_; }

  // Sends the End command, after a stop request too, and pauses. The answer does not matter; on a
  // silent radio this takes 2010 ms.
  void TxEnd();

  void Wait(std::int16_t milliseconds);

  // Sends a 16-byte command (text and CR, nothing added). RxBlock returns the last 36 characters
  // (CR LF, 32 digits, CR LF) or a marker, TxBlock one of the numbers above. 500 ms at the most.
  std::string RxBlock(std::string_view command);
  int TxBlock(std::string_view command);

  // Sends a 16-byte read and returns whatever arrived until it looked complete or 500 ms were over;
  // nothing is checked. `on_pass` sees the growing reply. No value: the port is closed or failed.
  std::optional<std::string> ServiceRead(std::string_view command,
                                         const std::function<void(const std::string&)>& on_pass);

 private:
  using Complete = std::function<bool(const std::string& reply)>;
  using Pass = std::function<void(const std::string& reply)>;

  void Drain();
  std::string Exchange(std::string_view command);
  bool Send(std::string_view text);
  bool Collect(OneShotTimer& timer, std::chrono::milliseconds limit, const Complete& complete,
               const Pass& on_pass);

  Port& port_;
  LinkTimers timers_;
  EventPump& pump_;
  std::string reply_;
  bool has_deadline_ = false;
  bool was_sent_ = false;
};

// ---- The checked single-block exchange. It serves the transfer of the channel bitmap, which no
// command of the program starts.

enum class BlockOutcome : unsigned char { kDone, kPortError, kCommunicationError };

inline constexpr int kBlockSends = 10;  // sends of one command before it counts as failed

// One 16-byte block, read or written, with up to 10 sends. `digits`: 32 hexadecimal digits.
BlockOutcome ReadBlockChecked(Link& link, int block, std::string& digits);
BlockOutcome WriteBlockChecked(Link& link, int block, std::string_view digits);

// The channel bitmap: blocks 214 and 215, 64 digits. Stops at the first block that fails.
BlockOutcome ReadChannelBitmap(Link& link, std::string& digits);
BlockOutcome WriteChannelBitmap(Link& link, std::string_view digits);

// ---- Command texts. Addresses are multiples of 16.

std::string BlockText(int block);          // "20", "1FE": the number of a 16-byte block
std::string AddressText(Address address);  // "0200"
std::string ReadCommand(Address address);  // "KX~F0200R" CR
std::string WriteCommand(Address address, std::string_view digits);  // "KX~F0200W" digits CR

inline constexpr std::string_view kIdentifyCommand = "KX~WHO\r";
inline constexpr std::string_view kAnnounceCommand = "RXQ40\r";
inline constexpr std::string_view kEndCommand = "KX~E\r\n";

}  // namespace q40
