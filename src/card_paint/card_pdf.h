// A channel card as a PDF, its fonts in it and its texts selectable.
#pragma once

#include <optional>
#include <string>

#include "card_paint/card_pages.h"

namespace q40 {

// The whole file, of WantedTime() if there is one. No value when it could not be made.
std::optional<std::string> CardPdf(const CardPages& pages, const std::string& creator);

}  // namespace q40
