// A document as it comes back from where it is stored.
#pragma once

#include "document/clone_data.h"

namespace q40 {

// The document after its data went through the codecs: settings, special channels with the presence
// of PH and PL, dialer memories as the radio gets them, and the memory channels in use. The bytes
// are the same for a clone file and for the radio, the dialer memories apart. What is not in use
// stays as it is in `document`.
CloneData ReadBack(const CloneData& document);

}  // namespace q40
