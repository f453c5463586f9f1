#include "radio/memory_map.h"

namespace q40 {

std::string ChannelTitle(int n) {
  return n < kFirstDChannel ? std::to_string(n) : 'D' + std::to_string(n - kFirstDChannel);
}

}  // namespace q40
