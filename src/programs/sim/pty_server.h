// The simulated radio behind a pseudo-terminal, for programs that want a device.
#pragma once

#include <csignal>
#include <string>

#include "sim/far_end.h"

namespace q40 {

class PtyServer {
 public:
  // `link`: path of a symbolic link to the device, or empty. An existing link is replaced, any
  // other file is left alone. The radio must outlive the server.
  PtyServer(FarEnd& radio, std::string link) : radio_(radio), link_(std::move(link)) {}
  // Closes the device and removes the link.
  ~PtyServer();
  PtyServer(const PtyServer&) = delete;
  PtyServer& operator=(const PtyServer&) = delete;

  // Makes the device. False and a reason in `why` when the system refuses.
  bool Start(std::string& why);
  [[nodiscard]] const std::string& device() const { return device_; }

  // Serves until `stop` becomes true, or the radio has nothing more to say. The signals that set it must be blocked by the caller;
  // `while_waiting` is the signal mask under which they arrive. Blocks while nothing happens.
  void Serve(const volatile std::sig_atomic_t& stop, const sigset_t& while_waiting);

 private:
  [[nodiscard]] bool Publish(std::string& why);
  void PlugInAgain();
  void Close();
  void Disconnect();
  void Receive();
  void Send();
  void ReleaseExclusiveMode() const;

  FarEnd& radio_;
  std::string link_;
  std::string device_;
  std::string published_;  // what the link leads to
  int master_ = -1;
  int slave_ = -1;        // held open, so that the device survives the programs that use it
  int closings_ = -1;     // tells when a program has closed the device
  std::string unsent_;    // the program does not read; nothing more is taken from it then
  std::size_t sent_ = 0;  // of unsent_
  std::optional<FarEnd::TimePoint> back_at_;
};

}  // namespace q40
