// The memory of a radio, 8 KiB, and its relation to a clone document.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "document/clone_data.h"

namespace q40 {

class RadioMemory {
 public:
  // Erased: every byte 0xFF.
  RadioMemory() { bytes_.fill(0xFF); }

  // `size` bytes from `address` as upper-case digits; no value past the end of the memory.
  [[nodiscard]] std::optional<std::string> Read(Address address, int size) const;
  // Stores digits (two a byte). False, and nothing is stored, past the end of the memory or when a
  // character is no digit.
  bool Write(Address address, std::string_view digits);

  [[nodiscard]] std::string_view raw() const {
    return {reinterpret_cast<const char*>(bytes_.data()), bytes_.size()};
  }
  // All 8 KiB. False for any other size.
  bool SetRaw(std::string_view raw);

 private:
  std::array<std::uint8_t, kMemorySize> bytes_{};
};

// Stores everything that a document holds, as writing all of it to the radio would, but with the
// RPT frequencies that the document has.
void StoreDocument(CloneData document, RadioMemory& memory);

// What reading all of the memory into a fresh document of that model gives. No value when a channel
// cannot be decoded; `why` then names it.
std::optional<CloneData> DocumentOf(const RadioMemory& memory, int model, bool version_a,
                                    std::string& why);

}  // namespace q40
