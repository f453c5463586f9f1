// The characters of a list, however they are stored.
#pragma once

#include <string>
#include <string_view>

#include "lists/foreign_list.h"

namespace q40 {

struct ListText {
  std::string text;  // UTF-8, without a byte order mark
  ListEncoding encoding = ListEncoding::kUtf8;
};

// A byte order mark says it, or zeros at every second place; what is no UTF-8 is Latin-1. What `wanted`
// says counts instead, and bytes that are none of it become U+FFFD.
ListText DecodeList(std::string_view bytes, ListEncoding wanted);

}  // namespace q40
