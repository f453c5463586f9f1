// The factory defaults of each model.
#pragma once

#include "document/clone_data.h"

namespace q40 {

// The data at start-up: empty tables, defaults of model 0, empty dialer memories.
CloneData FreshData();

// Resets data to the defaults of its model: settings, template, special channels, no memory
// channel. The dialer memories, VersionA and the shown band stay.
void ResetToDefaults(CloneData& document);

// Makes `model` (0..3) the data's model. False, and nothing happens, when it is already; otherwise
// the data is reset to the model's defaults.
bool ChangeModel(CloneData& document, int model);

// The special channels of both bands as the model's defaults, PH and PL absent; the shown set
// follows. Part of ResetToDefaults; after Auto Select it runs on its own.
void LoadSpecialDefaults(CloneImage& image, int model);

}  // namespace q40
