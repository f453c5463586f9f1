// The port to the radio that the window owns: one of 14 serial ports, or the simulated radio.
#pragma once

#include <functional>
#include <memory>

#include <QObject>

#include "link/com_ports.h"
#include "link/port.h"

namespace q40 {

class SerialPort;
class TracedPort;

class ComPort : public QObject {
  Q_OBJECT

 public:
  struct Simulation {
    bool on = false;
    int baud = 9600;                                     // 0: as fast as it can
    std::vector<std::string> faults;                     // see sim/fault.h
    std::function<void(std::string_view)> on_command{};  // told of each command that the radio gets
  };

  ComPort(const Simulation& simulation, QObject* parent);
  ~ComPort() override;

  // 1..14. Setting it closes an open port; the next command opens it again.
  [[nodiscard]] int number() const { return number_; }
  void SetNumber(int number);

  [[nodiscard]] Port& port();
  // The same, which can keep a trace.
  [[nodiscard]] TracedPort& trace() { return *traced_; }
  // What is behind each of the numbers.
  [[nodiscard]] std::vector<ComPortState> States() const;
  // "/dev/ttyUSB0", or what stands in for it.
  [[nodiscard]] QString device() const;

 private:
  class SimulatedRadioLine;

  int number_ = 1;
  std::unique_ptr<SerialPort> serial_;
  std::unique_ptr<SimulatedRadioLine> simulated_;
  std::unique_ptr<TracedPort> traced_;  // over one of the two
};

}  // namespace q40
