#include "document/memory_edit.h"

#include <algorithm>

namespace q40 {
namespace {

constexpr std::size_t kLast = kMemoryChannelCount - 1;
constexpr int kFieldsThatDeleteClears = 9;  // Frequency to Power

void Copy(CloneImage& image, std::size_t from, std::size_t to) {
  image.MemoryTable[to] = image.MemoryTable[from];
  image.ChannelInUse[to] = image.ChannelInUse[from];
}

}  // namespace

void InsertMemoryChannel(CloneImage& image, int n) {
  for (std::size_t i = kLast; i > static_cast<std::size_t>(n); --i) Copy(image, i - 1, i);
  ClearMemoryChannel(image, n);
}

void DeleteMemoryChannel(CloneImage& image, int n) {
  for (auto i = static_cast<std::size_t>(n); i < kLast; ++i) Copy(image, i + 1, i);
  ChannelRecord& last = image.MemoryTable[kLast];
  std::fill_n(last.cellText.begin(), kFieldsThatDeleteClears, std::string());
  std::fill_n(last.value.begin(), kFieldsThatDeleteClears, 0);
  image.ChannelInUse[kLast] = false;
}

void ClearMemoryChannel(CloneImage& image, int n) {
  image.MemoryTable[static_cast<std::size_t>(n)] = {};
  image.ChannelInUse[static_cast<std::size_t>(n)] = false;
}

void ClearAllMemoryChannels(CloneImage& image) {
  for (int n = 0; n < kMemoryChannelCount; ++n) ClearMemoryChannel(image, n);
}

void ClearShownLimit(CloneImage& image, int k) {
  if (k != kPhRow && k != kPlRow) return;
  image.ShownSpecialSet[static_cast<std::size_t>(k)] = {};
  image.ShownPresent[static_cast<std::size_t>(k - kPhRow)] = false;
  StoreShownRow(image, k);
}

}  // namespace q40
