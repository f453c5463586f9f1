#include "image/settings_text.h"

#include "image/decimal.h"
#include "image/settings_codec.h"

namespace q40 {

std::string SettingText(const SettingsValues& values, std::string_view control) {
  const SettingsField& field = SettingsFieldOf(control);
  const SettingsItem& item = SettingsItemOf(control);
  const int value = values.*field.value;
  if (!item.items.empty()) {
    const auto index = static_cast<std::size_t>(value);
    return std::string(index < item.items.size() ? Trimmed(item.items[index]) : "");
  }
  if (field.rule == SettingRule::kRange) return std::to_string(value);
  return value != 0 ? "on" : "off";
}

std::string SettingCaption(const SettingsItem& item) {
  std::string caption(Trimmed(item.caption));
  if (!item.unit.empty()) caption += ' ' + std::string(item.unit);
  return caption;
}

}  // namespace q40
