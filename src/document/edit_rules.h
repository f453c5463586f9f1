// The rules of the channel edit dialog: which keys a field takes, and how bad input is repaired.
// Nothing here reports an error; what does not fit is replaced silently.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "document/clone_image.h"

namespace q40 {

inline constexpr char kBackspace = '\b';

// ---- keys. Each gives the character that a typed one becomes; no value: the key is dropped.

// "0" to "9" and Backspace.
std::optional<char> FrequencyKey(char key);
// Of the upper-case letters only A to D, of the lower-case ones all, as upper case. Intended: every
// letter can be typed in lower case.
std::optional<char> NameKey(char key);
// "0" to "9", A to D in either case, "*", "#" and Backspace.
std::optional<char> DialKey(char key);

// The characters of a pasted text that DialKey takes, as it makes them.
std::string DialCharacters(std::string_view text);

// The digits of a text.
std::string Digits(std::string_view text);

// A frequency or an offset as other programs write it: the first digits of a text that a point or a
// comma joins to further ones, "145.6125 MHz", "-0,6", "*438.725.000". No value: there are none.
struct PastedFrequency {
  std::string mhz;       // as many digits as there are
  std::string fraction;  // the same
};
std::optional<PastedFrequency> WholeFrequency(std::string_view text);

// What is typed or pasted after the point, without the point that somebody may put first.
std::string_view WithoutPoint(std::string_view text);

// Counts the keys typed into an MHz field and says when the cursor should jump to the fraction:
// after three keys for the frequency, after two for the offset. Dropped keys count as well
// (intended). One counter serves both fields.
class KeyCounter {
 public:
  // A key was typed; `dropped` when FrequencyKey refused it. True: jump now.
  bool Typed(char key, bool dropped, int jump_after);
  // On showing the dialog and when the frequency gets the focus.
  void Reset();
  // On leaving the offset.
  void ForgetTyping() { typing_ = false; }

 private:
  bool typing_ = false;
  int count_ = 0;
};

// ---- repairs

// A fraction as the radio can tune it.
struct TunedFraction {
  std::string digits;  // four digits
  int step;            // index of the step that goes with it: 0 (5 kHz) or 2 (12.5 kHz)
};
// The nearest lower multiple of 5 kHz or 12.5 kHz; 5 kHz wins where both fit. `text` is what
// follows the point: "5" is 0.5000 MHz, digits after the fourth are cut off.
TunedFraction TuneFraction(std::string_view text);

// The same for a whole frequency: the integer part stays.
struct TunedFrequency {
  std::string text;  // "###.0000"
  int step;
};
TunedFrequency TuneFrequency(std::string_view text);

// What stands before and after the point of a frequency text, without the star of a skipped
// channel.
std::string WholeMhz(std::string_view frequency_text);
std::string FractionDigits(std::string_view frequency_text);

// The MHz field of a special channel when it is left: what was typed when it lies in the range of
// the shown band, otherwise the MHz of `current_text`.
std::string CheckedSpecialMhz(std::string_view typed, Band band, int model, int range,
                              std::string_view current_text);
// The same for a memory channel, which may lie in either band. An unused channel has no MHz to go
// back to and gets 145, 435 or 445 by model and side of the UHF lower limit.
std::string CheckedMemoryMhz(std::string_view typed, int model, int range, bool in_use,
                             std::string_view current_text);

// Caption of a memory channel in the dialog. Intended: 199 is "CHD-1", one before "CHD0".
std::string DialogCaption(int n);

}  // namespace q40
