// Short answers without delay. A USB adapter keeps what has come for up to 16 ms, in case more comes; a
// radio is read in 230 short answers. Many drivers can be told to hand over what they have.
#pragma once

#include <optional>
#include <utility>

namespace q40 {

// What a driver lets one ask of an open line.
class LatencyControl {
 public:
  LatencyControl() = default;
  virtual ~LatencyControl() = default;
  LatencyControl(const LatencyControl&) = delete;
  LatencyControl& operator=(const LatencyControl&) = delete;

  // No value: the driver offers none.
  virtual std::optional<bool> IsLow() = 0;
  // False: it does not let us, or the line is gone.
  virtual bool SetLow(bool low) = 0;
};

// Low latency while a line is ours. Whatever the driver answers, nothing fails.
class LowLatency {
 public:
  void Ask(LatencyControl& line) {
    const auto low = line.IsLow();
    changed_ = low && !*low && line.SetLow(true);
  }
  // Only what was changed, so that a user's own choice stays.
  void PutBack(LatencyControl& line) {
    if (std::exchange(changed_, false)) line.SetLow(false);
  }

 private:
  bool changed_ = false;
};

}  // namespace q40
