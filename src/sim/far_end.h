// What is at the far end of a line: a radio, or what plays one.
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

namespace q40 {

class FarEnd {
 public:
  using TimePoint = std::chrono::steady_clock::time_point;

  virtual ~FarEnd() = default;

  // Bytes from the program.
  virtual void Receive(std::string_view bytes, TimePoint now) = 0;
  // Bytes to the program that have left the wire by `now`.
  virtual std::string Take(TimePoint now) = 0;
  // When Take should be called next; no value while there is nothing to come.
  [[nodiscard]] virtual std::optional<TimePoint> NextDue() const = 0;

  // The line is dead until Reconnect.
  [[nodiscard]] virtual bool HungUp() const = 0;
  // When a line that hung up is back; no value: never.
  [[nodiscard]] virtual std::optional<std::chrono::milliseconds> ComesBackAfter() const = 0;
  virtual void Reconnect() = 0;

  // Whether it has nothing more to say, whatever it gets.
  [[nodiscard]] virtual bool IsOver() const { return false; }

 protected:
  FarEnd() = default;
  FarEnd(const FarEnd&) = default;
  FarEnd(FarEnd&&) = default;
  FarEnd& operator=(const FarEnd&) = default;
  FarEnd& operator=(FarEnd&&) = default;
};

}  // namespace q40
