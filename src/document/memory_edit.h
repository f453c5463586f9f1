// Insert, delete and clear in the list of memory channels. n is the channel, 0..209.
//
// A cleared channel is empty in every cell; the template is only for a channel that is opened.
#pragma once

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

}  // namespace q40
