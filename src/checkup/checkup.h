// The check-up of a document before it goes to a file or a radio.
//
// It only reports. Nothing is repaired, and nothing is kept from being saved or written.
#pragma once

#include "checkup/finding.h"
#include "document/document_units.h"

namespace q40 {

// What will not stay as it is, and what is probably a mistake, in the order of the places.
//
// What will not stay is not a list of known cases: the document is encoded and decoded, and compared
// with itself. Frequencies are compared with the limits of the document's model and version; the
// RX-Q20A has none, so that nothing is out of its bands. Channels that are not in use, and what the
// RPT rows do not carry, are passed over; so are the PH and PL of a new document, although their
// frequencies come back.
//
// document.settings must hold what the settings pages show.
Findings CheckUp(const CloneData& document);

// What units of a clone file, or of a radio, store and a document cannot hold: bytes of channels in use
// that are opened as another value, characters that no name has, settings that are repaired. Dialer
// units are passed over.
Findings CheckStored(std::span<const UnitData> units);

}  // namespace q40
