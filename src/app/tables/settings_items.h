// The controls of the settings pages: captions and list items, in the order in which the pages show
// them. Leading blanks are part of the texts; they right-align the numbers.
#pragma once

#include <span>
#include <string_view>

namespace q40 {

enum class SettingsGroup : unsigned char { kGeneral, kDtmf, kAccess };

struct SettingsItem {
  std::string_view control;  // name of the control, as in image/settings_codec.h
  std::string_view caption;  // its label, or the caption of a check box
  std::string_view unit;     // "(sec)", or empty
  SettingsGroup group = SettingsGroup::kGeneral;
  std::span<const std::string_view> items{};  // of a list; empty for check boxes and sliders
};

// Every list, check box and slider that has a byte in the radio.
std::span<const SettingsItem> SettingsItems();

// The row of a control; the control must exist.
const SettingsItem& SettingsItemOf(std::string_view control);

}  // namespace q40
