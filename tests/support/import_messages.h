// What an import or a paste has noted, as a user reads it.
#pragma once

#include <string>
#include <vector>

#include "files/channel_csv.h"

namespace q40::test {

inline std::vector<std::string> Messages(const ImportReport& report) {
  std::vector<std::string> messages;
  for (const ImportNote& note : report.notes) messages.push_back(note.Message());
  return messages;
}

}  // namespace q40::test
