// What a radio holds, digit by digit, as far as it is known: from reading it and from what it has
// acknowledged. And what of a document it does not hold yet.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "document/clone_data.h"
#include "radio/unit.h"

namespace q40 {

class RadioContent {
 public:
  // The radio is of this model. What was known of one of another model is forgotten.
  void SetModel(int model);
  // It holds this.
  void SetHeld(const UnitData& data);
  // It holds this, or what it was known to hold. Nothing is known of it when that was not known.
  void SetPerhapsHeld(const UnitData& data);
  void Forget() { *this = {}; }

  // -1: no radio is known.
  [[nodiscard]] int model() const { return model_; }
  // What it may hold in a unit, 64 digits each: usually one text. Empty: not known.
  [[nodiscard]] const std::vector<std::string>& At(Unit unit) const {
    return held_[static_cast<std::size_t>(unit.place())];
  }
  // Whether every unit of a half is known.
  [[nodiscard]] bool Knows(Half half) const;

 private:
  std::vector<std::string>& HeldAt(Unit unit) {
    return held_[static_cast<std::size_t>(unit.place())];
  }

  int model_ = -1;
  std::array<std::vector<std::string>, kUnitCount> held_;
};

// The content of a copy or of a clone file.
RadioContent ContentOf(const RadioCopy& copy);

// A unit that is to be written, and what the radio may hold there until then.
struct UnitSwap {
  UnitData target;
  std::vector<std::string> known;  // empty: anything

  // Whether `digits` are, or mean, something that is known.
  [[nodiscard]] bool IsKnown(const std::string& digits) const;
};

// The units whose values in the document are others than in the radio, in the order of the wire. One
// of which nothing is known is none of them. RPT gets the frequency that the document holds; one that
// has the write commands' own is as it should be.
std::vector<UnitSwap> ChangedUnits(const RadioContent& radio, const CloneData& document);

// To go on with units some of which may have been written already: each may hold what is known, or what
// it is to hold.
std::vector<UnitSwap> RestOf(const std::vector<UnitData>& targets, const RadioContent& radio);
std::vector<UnitSwap> RestOf(std::vector<UnitSwap> swaps);

}  // namespace q40
