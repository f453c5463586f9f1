// A clone document in words, and results as JSON.
#pragma once

#include <string>

#include <nlohmann/json.hpp>

#include "document/document_cells.h"

namespace q40 {

// The document for people: settings, dialer, special channels, channels in use.
std::string DocumentReport(const CloneData& document);

// JSON as every command prints it: ASCII only, so that no text in it steers a terminal. Bytes that are no
// UTF-8 become U+FFFD.
std::string JsonText(const nlohmann::ordered_json& json);

}  // namespace q40
