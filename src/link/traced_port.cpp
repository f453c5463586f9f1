#include "link/traced_port.h"

#include <utility>

namespace q40 {

using Kind = TraceEvent::Kind;

void TracedPort::Start(Sink sink) {
  sink_ = std::move(sink);
  start_ = now_();
  has_title_ = false;
  open_ = port_.IsOpen();
  if (open_) Tell(Kind::kPort, kTraceOpen);
}

void TracedPort::Tell(Kind kind, std::string_view bytes) {
  if (!sink_ || bytes.empty()) return;
  if (!std::exchange(has_title_, true) && !sink_(std::string(kTraceTitle) + '\n')) return Stop();
  const auto at = std::chrono::duration_cast<std::chrono::milliseconds>(now_() - start_);
  if (!sink_(TraceLine({at, kind, std::string(bytes)}))) Stop();
}

void TracedPort::TellProblem(std::string_view what) {
  if (sink_) Tell(Kind::kPort, std::string(what) + ": " + port_.Problem().what);
}

// A port may also be lost while nobody uses it.
void TracedPort::NoticeLoss() {
  if (open_ && !port_.IsOpen()) TellProblem(kTraceLost);
  open_ = port_.IsOpen();
}

bool TracedPort::Open() {
  NoticeLoss();
  if (open_) return true;
  open_ = port_.Open();
  if (open_) {
    Tell(Kind::kPort, kTraceOpen);
  } else {
    TellProblem(kTraceNotOpened);
  }
  return open_;
}

void TracedPort::Close() {
  NoticeLoss();
  port_.Close();
  if (open_) Tell(Kind::kPort, kTraceClosed);
  open_ = false;
}

bool TracedPort::Write(std::string_view text) {
  NoticeLoss();
  if (open_) Tell(Kind::kSent, text);
  const bool sent = port_.Write(text);
  NoticeLoss();
  return sent;
}

std::optional<std::string> TracedPort::ReadAvailable() {
  auto arrived = port_.ReadAvailable();
  if (arrived) Tell(Kind::kArrived, *arrived);
  NoticeLoss();
  return arrived;
}

}  // namespace q40
