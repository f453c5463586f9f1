// How the notes of an import are made.
#pragma once

#include <string>
#include <string_view>

#include "files/channel_csv.h"

namespace q40 {

// Counts a note, and lists it by its line while there is room.
void AddNote(ImportReport& report, ImportNote note);

// Line of the record that set a channel, 0 when none did.
int& LineOf(ImportReport& report, const ListedChannel& channel);

// "stored as 145.0000; written was "145,7125""
std::string StoredAs(std::string_view stored, std::string_view written);

// Lines in the middle of an item that begin as records do: its quote was closed too late.
int RecordsInside(std::string_view item);

// Why a text in which no channel was found is not a channel list. `told`: whether that explains
// everything else that there is to say about it.
struct NoList {
  std::string why;
  bool told = false;
};
NoList WhyNoList(std::string_view text);

}  // namespace q40
