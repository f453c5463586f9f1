// The 227 units of 32 bytes in which settings and channels move, and the one name by which the program
// speaks of them.
//
//   place on the wire   unit                                   address
//   0, 1                settings areas 1, 2                    0x0020, 0x0040
//   2-6                 VHF VFO, CALL, RPT, PH, PL             0x00C0 0x0180 0x01A0 0x0120 0x0100
//   7-11                UHF VFO, CALL, RPT, PH, PL             0x00E0 0x01C0 0x01E0 0x0160 0x0140
//   12-16               dialer memories, two a unit            0x1D00 + 0x20 * pair
//   17-226              memory channels 0 to 209               0x0200 + 0x20 * n
#pragma once

#include <array>
#include <compare>
#include <optional>
#include <string>
#include <vector>

#include "radio/memory_map.h"

namespace q40 {

inline constexpr int kSettingsUnits = 17;  // the settings half: settings, special channels, dialer
inline constexpr int kUnitCount = kSettingsUnits + kMemoryChannelCount;

class Unit {
 public:
  enum class Kind : unsigned char { kSettings, kSpecial, kDialer, kMemory };

  static constexpr Unit Settings(int area) { return Unit(area); }  // 0, 1
  static constexpr Unit Special(Band band, int k) {                // k: kVfoRow .. kPlRow
    return Unit(FirstSpecial(band) + k);
  }
  static constexpr Unit Dialer(int pair) { return Unit(kFirstDialer + pair); }  // 0..4
  static constexpr Unit Memory(int n) { return Unit(kSettingsUnits + n); }      // 0..209
  static constexpr Unit AtPlace(int place) { return Unit(place); }              // 0..226, see above
  // The unit that starts at an address; none for any other address.
  static std::optional<Unit> At(Address address);

  [[nodiscard]] constexpr int place() const { return place_; }  // on the wire, 0..226
  [[nodiscard]] constexpr Kind kind() const {
    if (place_ >= kSettingsUnits) return Kind::kMemory;
    if (place_ >= kFirstDialer) return Kind::kDialer;
    return place_ >= kFirstSpecial ? Kind::kSpecial : Kind::kSettings;
  }
  // Of a special channel.
  [[nodiscard]] constexpr Band band() const {
    return place_ < FirstSpecial(Band::kUhf) ? Band::kVhf : Band::kUhf;
  }
  // Within its kind: settings area, row of the special set, pair of dialer memories, channel.
  [[nodiscard]] constexpr int index() const {
    switch (kind()) {
      case Kind::kMemory: return place_ - kSettingsUnits;
      case Kind::kDialer: return place_ - kFirstDialer;
      case Kind::kSpecial: return place_ - FirstSpecial(band());
      default: return place_;
    }
  }
  [[nodiscard]] constexpr Address address() const {
    switch (kind()) {
      case Kind::kMemory: return static_cast<Address>(0x0200 + kUnitSize * index());
      case Kind::kDialer: return static_cast<Address>(0x1D00 + kUnitSize * index());
      case Kind::kSpecial: return kSpecialAddress[static_cast<std::size_t>(place_ - kFirstSpecial)];
      default: return static_cast<Address>(kSettingsStart + kUnitSize * index());
    }
  }
  // "settings area 1", "VHF special channel CALL", "auto-dialer memories M1 and M2", "memory channel D3"
  [[nodiscard]] std::string Name() const;

  // The first byte of the settings areas, from which their bytes are counted.
  static constexpr Address kSettingsStart = 0x0020;

  // In the order of the wire. clang-tidy takes the 0 of the comparisons for a pointer.
  auto operator<=>(const Unit&) const = default;  // NOLINT(modernize-use-nullptr)

 private:
  static constexpr int kFirstSpecial = kSettingsUnitCount;
  static constexpr int kFirstDialer = kFirstSpecial + 2 * kSpecialChannelCount;
  static constexpr int FirstSpecial(Band band) {
    return band == Band::kVhf ? kFirstSpecial : kFirstSpecial + kSpecialChannelCount;
  }
  // VFO, CALL, RPT, PH, PL of VHF, then of UHF: not in the order of the addresses.
  static constexpr std::array<Address, kSpecialChannelCount * kBands.size()> kSpecialAddress = {
      0x00C0, 0x0180, 0x01A0, 0x0120, 0x0100, 0x00E0, 0x01C0, 0x01E0, 0x0160, 0x0140};
  explicit constexpr Unit(int place) : place_(place) {}

  int place_;
};

// Which half of a document a command moves.
enum class Half : unsigned char { kBoth, kSettings, kMemory };

// The units of a half, in the order of the wire.
std::vector<Unit> UnitsOf(Half half);

// What one exchange moves: a unit and its 64 digits.
struct UnitData {
  Unit unit;
  std::string digits;
};

// All that a radio holds, as it came over the cable.
struct RadioCopy {
  int model = 0;                // 0..2, by the identification
  char version_letter = '0';    // "A" or another one
  std::vector<UnitData> units;  // 227, in the order of the wire
};

}  // namespace q40
