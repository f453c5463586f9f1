// A clone document in words: what show prints.
#pragma once

#include <string>

#include <nlohmann/json.hpp>

#include "image/document_cells.h"

namespace q40 {

// The document for people: settings, dialer, special channels, channels in use.
std::string DocumentReport(const CloneDocument& document);

nlohmann::ordered_json DocumentJson(const CloneDocument& document);

}  // namespace q40
