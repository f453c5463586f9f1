// The value lists of a channel: tuning steps, CTCSS tones, DCS codes, MID levels. The radio, the
// image and the clone file store indexes into these lists, never the texts.
#pragma once

#include <optional>
#include <span>
#include <string_view>

namespace q40 {

std::span<const std::string_view> StepTexts();  // 7:   "5KHz" .. "30KHz"
std::span<const std::string_view> ToneTexts();  // 39:  "67.0Hz" .. "250.3Hz", ascending
std::span<const std::string_view> DcsTexts();   // 104: "023" .. "754", three octal digits
std::span<const std::string_view> MidTexts();   // 11:  "00" .. "10"

// Text of an index; empty for one outside the list.
std::string_view StepText(int index);
std::string_view ToneText(int index);
std::string_view DcsText(int index);
std::string_view MidText(int index);

// Place of a text in a list, if it stands there exactly.
std::optional<int> FindText(std::span<const std::string_view> list, std::string_view text);

}  // namespace q40
