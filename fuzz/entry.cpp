// Where the fuzzer, or replay.cpp, comes in.
#include "target.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  q40::fuzz::Run({data, size});
  return 0;
}
