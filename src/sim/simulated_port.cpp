#include "sim/simulated_port.h"

namespace q40 {

bool SimulatedPort::Open() {
  // A line that hung up once is there again when somebody opens it.
  if (radio_.HungUp() && radio_.ComesBackAfter()) radio_.Reconnect();
  if (radio_.HungUp()) {
    problem_ = {PortProblem::Kind::kMissing, "the simulated radio is disconnected",
                "Start it again."};
    return false;
  }
  open_ = true;
  return true;
}

bool SimulatedPort::Lost() {
  open_ = false;
  problem_ = {PortProblem::Kind::kLost, "the simulated radio was disconnected",
              "Repeat the command."};
  return false;
}

void SimulatedPort::Arm() {
  if (const auto due = radio_.NextDue()) wake_at_(*due);
}

bool SimulatedPort::Write(std::string_view text) {
  if (!open_ || radio_.HungUp()) return Lost();
  radio_.Receive(text, now_());
  if (radio_.HungUp()) {
    wake_at_(now_());  // the hang-up is an event
  } else {
    Arm();
  }
  return true;
}

std::optional<std::string> SimulatedPort::ReadAvailable() {
  if (!open_) return std::nullopt;
  std::string arrived = radio_.Take(now_());
  if (radio_.HungUp()) {
    Lost();
    return std::nullopt;
  }
  Arm();
  return arrived;
}

}  // namespace q40
