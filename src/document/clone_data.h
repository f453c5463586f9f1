// Everything that one clone file holds: a plain value.
#pragma once

#include "document/clone_image.h"
#include "radio/dial_text.h"
#include "radio/settings_table.h"

namespace q40 {

struct CloneData {
  CloneImage image;
  // What the settings pages show. Reaches image.SettingsLine when EncodeSettings runs, before a
  // write or a save.
  SettingsValues settings;
  DialTexts dial;
  int model = 0;  // 0..3

  bool operator==(const CloneData&) const = default;
};

}  // namespace q40
