// The way to one radio: a port, and what to wait with.
#pragma once

#include <string>

#include "link/port.h"
#include "link/waiting.h"

namespace q40 {

class RadioLine {
 public:
  RadioLine() = default;
  virtual ~RadioLine() = default;
  RadioLine(const RadioLine&) = delete;
  RadioLine& operator=(const RadioLine&) = delete;

  virtual Port& port() = 0;
  virtual LinkTimers timers() = 0;
  virtual EventPump& pump() = 0;
};

}  // namespace q40
