// The factory defaults of each model.
#pragma once

#include "document/clone_document.h"

namespace q40 {

// A document at start-up: empty tables, defaults of model 0, empty dialer memories.
CloneDocument FreshDocument();

// Resets a document to the defaults of its model: settings, template, special channels, no memory
// channel. The dialer memories, VersionA, the shown band and the change flags stay.
void ResetToDefaults(CloneDocument& document);

// Makes `model` (0..3) the document's model. False, and nothing happens, when it is already;
// otherwise the change flags are cleared and the document is reset to the model's defaults.
bool ChangeModel(CloneDocument& document, int model);

// The special channels of both bands as the model's defaults, PH and PL absent; the shown set
// follows. Part of ResetToDefaults; after Auto Select it runs on its own.
void LoadSpecialDefaults(CloneImage& image, int model);

}  // namespace q40
