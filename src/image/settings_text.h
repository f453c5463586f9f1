// Settings in words, as their controls show them.
#pragma once

#include <string>
#include <string_view>

#include "app/tables/settings_items.h"
#include "image/settings_values.h"

namespace q40 {

// Text of a setting as its control shows it, without the blanks that align it. The control must be
// one of SettingsItems().
std::string SettingText(const SettingsValues& values, std::string_view control);

// "Tone Burst (Hz)": the caption without the blanks around it, and the unit.
std::string SettingCaption(const SettingsItem& item);

}  // namespace q40
