// A port that writes down what goes through it, for the person who has to find out what a radio or a
// cable did.
#pragma once

#include <chrono>
#include <functional>

#include "link/port.h"
#include "link/trace_line.h"

namespace q40 {

// Passes everything on as it is. What becomes of the trace never changes what the port does.
class TracedPort final : public Port {
 public:
  using Now = std::function<std::chrono::steady_clock::time_point()>;
  // Takes a line with its end. False: no more can be taken; it is not asked again.
  using Sink = std::function<bool(std::string_view line)>;

  // The port must outlive it.
  TracedPort(Port& port, Now now) : port_(port), now_(std::move(now)) {}

  // A new trace, whose time starts now. Its title comes with the first event.
  void Start(Sink sink);
  void Stop() { sink_ = {}; }

  bool Open() override;
  [[nodiscard]] bool IsOpen() const override { return port_.IsOpen(); }
  void Close() override;
  bool Write(std::string_view text) override;
  std::optional<std::string> ReadAvailable() override;
  [[nodiscard]] PortProblem Problem() const override { return port_.Problem(); }

 private:
  void Tell(TraceEvent::Kind kind, std::string_view bytes);
  void TellProblem(std::string_view what);
  void NoticeLoss();

  Port& port_;
  Now now_;
  Sink sink_;
  std::chrono::steady_clock::time_point start_;
  bool has_title_ = false;
  bool open_ = false;  // as far as the trace tells
};

}  // namespace q40
