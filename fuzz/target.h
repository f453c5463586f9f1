// What the fuzz targets share. A target is one file with Run(); it is linked with the fuzzer, and in
// every ordinary build with replay.cpp, which runs it on the stored inputs.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace q40::fuzz {

// Ends the program when a promise of the core does not hold: that is what the fuzzer looks for.
inline void Check(bool holds, const char* promise) {
  if (holds) return;
  std::fprintf(stderr, "broken promise: %s\n", promise);
  std::abort();
}

// Takes an input apart from its front. Behind its end every byte is 0 and every text is empty. The
// data must outlive it.
class Input {
 public:
  Input(const std::uint8_t* data, std::size_t size)
      : rest_(reinterpret_cast<const char*>(data), size) {}

  [[nodiscard]] bool Empty() const { return rest_.empty(); }
  // 0..255
  int Byte() {
    const std::string_view byte = Text(1);
    return byte.empty() ? 0 : static_cast<unsigned char>(byte.front());
  }
  // 0..top-1
  int Below(int top) { return Byte() % top; }
  bool Flag() { return Byte() % 2 != 0; }
  // The next `length` bytes, or as many as are left.
  std::string_view Text(std::size_t length) {
    const std::string_view text = rest_.substr(0, length);
    rest_.remove_prefix(text.size());
    return text;
  }
  // Up to the next line feed, which is taken as well.
  std::string_view Line() {
    const std::string_view line = Text(std::min(rest_.find('\n'), rest_.size()));
    Text(1);
    return line;
  }
  std::string_view Rest() { return Text(rest_.size()); }

 private:
  std::string_view rest_;
};

// What a target does with an input.
void Run(Input input);

}  // namespace q40::fuzz
