// The real serial port, and the event loop that waits for it. The only part of the core's
// neighbourhood that is bound to Qt; its header is not.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "link/com_ports.h"
#include "link/port.h"
#include "link/waiting.h"

class QObject;

namespace q40 {

// A serial device at 9600 baud 8N1, no flow control, DTR on and RTS off. Pseudo-terminals and
// symbolic links will do. Taken exclusively: by lock file, by the device's own exclusive mode and
// by flock, so that no other program talks to the radio in between.
//
// A cable that is pulled out closes the port within half a second, whether somebody waits for it or
// not; the next Open tries again. Must be used on a thread with a running or pumped Qt event loop.
class SerialPort final : public Port {
 public:
  explicit SerialPort(std::string device);
  ~SerialPort() override;

  // Takes effect with the next Open; an open port is closed.
  void SetDevice(std::string device);
  [[nodiscard]] const std::string& device() const;

  bool Open() override;
  [[nodiscard]] bool IsOpen() const override;
  void Close() override;
  bool Write(std::string_view text) override;
  std::optional<std::string> ReadAvailable() override;
  [[nodiscard]] PortProblem Problem() const override;

 private:
  class Device;
  std::unique_ptr<Device> device_;
};

// The link's timers and its event pump over the Qt event loop of the thread. The timers are named
// "Timer1" to "Timer3" and belong to `owner` when there is one.
class EventLoop final : public EventPump {
 public:
  explicit EventLoop(QObject* owner = nullptr);
  ~EventLoop() override;

  [[nodiscard]] LinkTimers Timers();
  void WaitForEvents() override;
  [[nodiscard]] bool StopRequested() const override;

  // The window's own request, from inside the loop: the running sequence ends before its next exchange.
  void EndSequence() { stop_wanted_ = true; }
  void ForgetStop() { stop_wanted_ = false; }

  // From now on the first interrupt or termination signal stops the running sequence instead of the
  // program. One loop at a time; call it once, in the command-line tool.
  void StopOnSignals();

 private:
  class Parts;
  std::unique_ptr<Parts> parts_;
  bool stop_wanted_ = false;
};

// A command-line program has no Qt application of its own; this one lives as long as the object.
// Must be created before any port or event loop.
class CommandLineApplication {
 public:
  CommandLineApplication();
  ~CommandLineApplication();
  CommandLineApplication(const CommandLineApplication&) = delete;
  CommandLineApplication& operator=(const CommandLineApplication&) = delete;

 private:
  class Application;
  std::unique_ptr<Application> application_;
};

// What is plugged in now.
std::vector<PresentPort> PresentPorts();

}  // namespace q40
