#include "app/com_port.h"

#include <QTimer>

#include "link/com_ports.h"
#include "link/traced_port.h"
#include "serial/serial_port.h"
#include "sim/demo_radio.h"
#include "sim/simulated_port.h"
#include "sim/simulated_radio.h"
#include "widgets/paths.h"

namespace q40 {

// The simulated radio with a timer that wakes the event loop when bytes have arrived. It keeps its
// memory until the program ends.
class ComPort::SimulatedRadioLine {
 public:
  explicit SimulatedRadioLine(const Simulation& simulation)
      : radio_(Options(simulation)),
        port_(
            radio_, [] { return std::chrono::steady_clock::now(); },
            [this](SimulatedPort::TimePoint due) { WakeAt(due); }) {
    StoreDocument(DemoDocument(), radio_.memory());
    wake_.setSingleShot(true);
    wake_.setTimerType(Qt::PreciseTimer);
  }
  SimulatedPort& port() { return port_; }

 private:
  static SimulatedRadio::Options Options(const Simulation& simulation) {
    SimulatedRadio::Options options;
    const CloneData document = DemoDocument();
    options.model = document.model;
    options.version = document.image.VersionA ? 'A' : '0';
    options.baud = simulation.baud;
    options.on_command = simulation.on_command;
    for (const std::string& text : simulation.faults) {
      std::string why;
      if (const auto fault = ParseFault(text, why)) options.faults.push_back(*fault);
    }
    return options;
  }

  void WakeAt(SimulatedPort::TimePoint due) {
    const auto wait = due - std::chrono::steady_clock::now();
    wake_.start(
        std::max(std::chrono::ceil<std::chrono::milliseconds>(wait), std::chrono::milliseconds(0)));
  }

  SimulatedRadio radio_;
  QTimer wake_;
  SimulatedPort port_;
};

ComPort::ComPort(const Simulation& simulation, QObject* parent) : QObject(parent) {
  Port* port = nullptr;
  if (simulation.on) {
    simulated_ = std::make_unique<SimulatedRadioLine>(simulation);
    port = &simulated_->port();
  } else {
    serial_ = std::make_unique<SerialPort>(ComDevice(number_));
    port = serial_.get();
  }
  traced_ = std::make_unique<TracedPort>(*port, std::chrono::steady_clock::now);
}

ComPort::~ComPort() = default;

Port& ComPort::port() { return *traced_; }

void ComPort::SetNumber(int number) {
  traced_->Close();
  number_ = number;
  if (serial_) serial_->SetDevice(ComDevice(number));
}

std::vector<ComPortState> ComPort::States() const {
  if (serial_) return ComPortStates(PresentPorts());
  std::vector<ComPortState> states;
  for (int number = 1; number <= kComPortCount; ++number) {
    states.push_back({number, device().toStdString(), true, {}});
  }
  return states;
}

QString ComPort::device() const {
  return serial_ ? Shown(serial_->device()) : tr("simulated radio");
}

}  // namespace q40
