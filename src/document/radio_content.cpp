#include "document/radio_content.h"

#include <algorithm>

#include "base/hex.h"
#include "document/document_units.h"

namespace q40 {
namespace {

bool Contains(const std::vector<std::string>& held, const std::string& digits) {
  return std::any_of(held.begin(), held.end(),
                     [&](const std::string& text) { return UpperCase(text) == UpperCase(digits); });
}

// The document as it would be if it had just been read from the radio; a unit of which nothing is
// known is the document's own. `unreadable`: units that no document can hold.
CloneData AsRead(const RadioContent& radio, const CloneData& document,
                 std::vector<Unit>& unreadable) {
  CloneData data = document;
  for (const Unit unit : UnitsOf(Half::kBoth)) {
    const auto& held = radio.At(unit);
    if (!held.empty() && LoadUnit({unit, held.front()}, data)) unreadable.push_back(unit);
  }
  EncodeSettings(data.settings, data.image);
  return data;
}

}  // namespace

void RadioContent::SetModel(int model) {
  if (model == model_) return;
  Forget();
  model_ = model;
}

void RadioContent::SetHeld(const UnitData& data) { HeldAt(data.unit) = {data.digits}; }

void RadioContent::SetPerhapsHeld(const UnitData& data) {
  auto& held = HeldAt(data.unit);
  if (!held.empty() && !Contains(held, data.digits)) held.push_back(data.digits);
}

bool RadioContent::Knows(Half half) const {
  const auto units = UnitsOf(half);
  return std::none_of(units.begin(), units.end(), [&](Unit unit) { return At(unit).empty(); });
}

RadioContent ContentOf(const RadioCopy& copy) {
  RadioContent content;
  content.SetModel(copy.model);
  for (const UnitData& data : copy.units) content.SetHeld(data);
  return content;
}

bool UnitSwap::IsKnown(const std::string& digits) const {
  if (known.empty() || Contains(known, digits)) return true;  // decoding takes longer
  return std::any_of(known.begin(), known.end(), [&](const std::string& text) {
    return SameValues({target.unit, text}, {target.unit, digits});
  });
}

std::vector<UnitSwap> ChangedUnits(const RadioContent& radio, const CloneData& document) {
  CloneData wanted = document;
  EncodeSettings(wanted.settings, wanted.image);
  const CloneData written = AsWritten(document);
  std::vector<Unit> unreadable;
  const CloneData read = AsRead(radio, wanted, unreadable);
  std::vector<UnitSwap> swaps;
  for (const Unit unit : UnitsOf(Half::kBoth)) {
    const auto& held = radio.At(unit);
    if (held.empty()) continue;
    UnitData target{unit, DigitsOf(wanted, unit)};
    // The second is what the radio has when a write command has sent the document.
    const bool same = Contains(held, target.digits) || Contains(held, DigitsOf(written, unit));
    if (held.size() == 1 && same) continue;
    const bool changed = held.size() > 1 || target.digits != DigitsOf(read, unit) ||
                         std::find(unreadable.begin(), unreadable.end(), unit) != unreadable.end();
    if (changed) swaps.push_back({std::move(target), held});
  }
  return swaps;
}

std::vector<UnitSwap> RestOf(std::vector<UnitSwap> swaps) {
  for (UnitSwap& swap : swaps) {
    if (!swap.known.empty()) swap.known.push_back(swap.target.digits);
  }
  return swaps;
}

std::vector<UnitSwap> RestOf(const std::vector<UnitData>& targets, const RadioContent& radio) {
  std::vector<UnitSwap> swaps;
  swaps.reserve(targets.size());
  for (const UnitData& target : targets) swaps.push_back({target, radio.At(target.unit)});
  return RestOf(std::move(swaps));
}

}  // namespace q40
