// A simulated radio and the program's end of the cable to it, without time.
#pragma once

#include <utility>

#include "sim/simulated_port.h"
#include "sim/simulated_radio.h"
#include "support/fake_host.h"
#include "support/fake_link.h"

namespace q40::test {

inline SimulatedRadio::Options WithFaults(const std::vector<std::string>& faults) {
  SimulatedRadio::Options options;
  std::string why;
  for (const std::string& text : faults) options.faults.push_back(ParseFault(text, why).value());
  return options;
}

// The radio and the time must outlive the cable, which stays where it is.
class SimulatedCable {
 public:
  SimulatedCable(SimulatedRadio& radio, FakeTime& time)
      : port(
            radio, [&time] { return time.clock.now; },
            [this](TimePoint at) { wake_ = std::min(wake_.value_or(at), at); }) {
    time.pump.next_arrival = [this] { return std::exchange(wake_, std::nullopt); };
  }
  SimulatedPort port;

 private:
  std::optional<TimePoint> wake_;
};

struct SimulatedBench : FakeTime {
  explicit SimulatedBench(SimulatedRadio::Options options) : radio(std::move(options)) {}

  SimulatedRadio radio;
  SimulatedCable cable{radio, *this};
  CloneDocument document;
  CloneData& held = DataOf(document);  // what is in it
  Link link{cable.port, Timers(), pump};
  FakeHost host{document};
  Sequences sequences{link, document, host, &host};
};

}  // namespace q40::test
