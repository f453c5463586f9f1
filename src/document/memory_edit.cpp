#include "document/memory_edit.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "base/digits.h"

namespace q40 {
namespace {

constexpr std::size_t kLast = kMemoryChannelCount - 1;
constexpr int kFieldsThatDeleteClears = 9;  // Frequency to Power

void Copy(CloneImage& image, std::size_t from, std::size_t to) {
  image.MemoryTable[to] = image.MemoryTable[from];
  image.ChannelInUse[to] = image.ChannelInUse[from];
}

struct Slot {
  ChannelRecord record;
  bool in_use = false;
};

// At place i then stands what is at order[i] now.
void Arrange(CloneImage& image, const std::vector<int>& places, const std::vector<int>& order) {
  std::vector<Slot> slots;
  slots.reserve(order.size());
  for (const int from : order) {
    const auto row = static_cast<std::size_t>(from);
    slots.push_back({image.MemoryTable[row], image.ChannelInUse[row]});
  }
  for (std::size_t i = 0; i < places.size(); ++i) {
    const auto row = static_cast<std::size_t>(places[i]);
    image.MemoryTable[row] = std::move(slots[i].record);
    image.ChannelInUse[row] = slots[i].in_use;
  }
}

std::vector<int> AllPlaces() {
  std::vector<int> places(kMemoryChannelCount);
  std::iota(places.begin(), places.end(), 0);
  return places;
}

bool InUse(const CloneImage& image, int n) {
  return image.ChannelInUse[static_cast<std::size_t>(n)];
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

// ---- many at once

std::vector<int> WouldFallOff(const CloneImage& image, int n, int count) {
  std::vector<int> falling;
  for (int row = std::max(n, kMemoryChannelCount - count); row < kMemoryChannelCount; ++row) {
    if (InUse(image, row)) falling.push_back(row);
  }
  return falling;
}

void InsertMemoryChannels(CloneImage& image, int n, int count) {
  for (int i = 0; i < count; ++i) InsertMemoryChannel(image, n);
}

void DeleteMemoryChannels(CloneImage& image, MemoryRows rows) {
  int gone = 0;  // above the row, each of which has moved it up
  for (const int row : rows) DeleteMemoryChannel(image, row - gone++);
}

int DuplicateMemoryChannels(CloneImage& image, MemoryRows rows) {
  const int first = rows.back() + 1;
  const int room = std::min(static_cast<int>(rows.size()), kMemoryChannelCount - first);
  InsertMemoryChannels(image, first, room);
  int to = first;
  for (const int row : rows.first(static_cast<std::size_t>(room))) {
    Copy(image, static_cast<std::size_t>(row), static_cast<std::size_t>(to));
    ++to;
  }
  return first;
}

int MoveMemoryChannels(CloneImage& image, MemoryRows rows, int to) {
  const std::vector<int> places = AllPlaces();
  std::vector<int> order;
  std::copy_if(places.begin(), places.end(), std::back_inserter(order),
               [&](int n) { return !std::binary_search(rows.begin(), rows.end(), n); });
  const auto at = std::lower_bound(order.begin(), order.end(), to);
  const auto first = static_cast<int>(at - order.begin());
  order.insert(at, rows.begin(), rows.end());
  Arrange(image, places, order);
  return first;
}

void SortMemoryChannels(CloneImage& image, MemoryRows rows, Field field, bool descending) {
  constexpr auto kKind = ChannelKind::kMemory;
  const std::vector<int> places(rows.begin(), rows.end());
  std::vector<int> order = places;
  const auto key = [&](int n) {
    const ChannelRecord& record = image.MemoryTable[static_cast<std::size_t>(n)];
    const bool text = field == Field::kName;
    return std::pair(text ? 0 : record.Number(kKind, field),
                     text ? record.Text(kKind, field) : std::string());
  };
  std::stable_sort(order.begin(), order.end(), [&](int a, int b) {
    if (!InUse(image, a) || !InUse(image, b)) return InUse(image, a) && !InUse(image, b);
    return descending ? key(b) < key(a) : key(a) < key(b);
  });
  Arrange(image, places, order);
}

void CloseMemoryGaps(CloneImage& image, MemoryRows rows) {
  const std::vector<int> places(rows.begin(), rows.end());
  std::vector<int> order = places;
  std::stable_partition(order.begin(), order.end(), [&](int n) { return InUse(image, n); });
  Arrange(image, places, order);
}

std::string NumberedName(std::string_view name, int add) {
  std::size_t start = name.size();
  while (start > 0 && IsDigit(name[start - 1])) --start;
  const std::string_view digits = name.substr(start);
  int number = 1;
  if (!digits.empty()) number = static_cast<int>(LeadingNumber(digits) / kNumberScale);
  std::string counted = std::to_string(number + add);
  if (counted.size() < digits.size()) counted.insert(0, digits.size() - counted.size(), '0');
  return std::string(name.substr(0, start)) + counted;
}

}  // namespace q40
