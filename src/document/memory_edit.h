// Insert, delete and clear in the list of memory channels. n is the channel, 0..209.
//
// A cleared channel is empty in every cell; the template is only for a channel that is opened.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "document/clone_image.h"

namespace q40 {

// Makes room at n: n and everything after it moves one place back. What was in D9 is dropped.
void InsertMemoryChannel(CloneImage& image, int n);

// Closes the gap at n: everything after it moves one place forward. D9 becomes unused, but keeps
// its cells from MID on (intended): nothing shows them, they are carried along.
void DeleteMemoryChannel(CloneImage& image, int n);

void ClearMemoryChannel(CloneImage& image, int n);
void ClearAllMemoryChannels(CloneImage& image);

// Empties PH or PL (row 3 or 4) of the shown band, in the shown set and in its store.
void ClearShownLimit(CloneImage& image, int k);

// ---- many at once. rows: channels 0..209, each once, ascending.

using MemoryRows = std::span<const int>;

// The channels in use that InsertMemoryChannels(image, n, count) would drop.
std::vector<int> WouldFallOff(const CloneImage& image, int n, int count);
void InsertMemoryChannels(CloneImage& image, int n, int count);
void DeleteMemoryChannels(CloneImage& image, MemoryRows rows);
// Copies stand right behind the last of the rows; the place of the first copy.
int DuplicateMemoryChannels(CloneImage& image, MemoryRows rows);
// The rows, in their order, end up before the channel that is at `to` now (0..210).
// Returns the place of the first of them.
int MoveMemoryChannels(CloneImage& image, MemoryRows rows, int to);
// Within the places of the rows, by a field; empty channels come last, equal ones keep their order.
void SortMemoryChannels(CloneImage& image, MemoryRows rows, Field field, bool descending);
// Within the places of the rows: channels in use first, in their order.
void CloseMemoryGaps(CloneImage& image, MemoryRows rows);

// A name with the number at its end counted on: "A007" and 2 is "A009", "HOME" and 1 is "HOME2".
std::string NumberedName(std::string_view name, int add);

}  // namespace q40
