// Values of a clone as JSON, typed: what a control or a cell shows, not what its byte holds.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <nlohmann/json.hpp>

#include "base/decimal.h"
#include "radio/channel_fields.h"
#include "radio/settings_table.h"

namespace q40 {

using Json = nlohmann::ordered_json;

// The values that a setting or a coded field can have. Made of its row in the table: "Off" and "On" are a
// switch; a text that is a number, with or without Hz, is that number; every other one is a word.
class Choices {
 public:
  static const Choices& Of(Field field);
  static Choices Of(const Setting& setting);

  // Of a number that the row knows; null for any other.
  [[nodiscard]] Json ValueOf(int code) const;
  [[nodiscard]] std::optional<int> CodeOf(const Json& value) const;
  // Whether some value is of the same type.
  [[nodiscard]] bool HasTypeOf(const Json& value) const;
  // "a number", "true or false", "a number or a text"
  [[nodiscard]] std::string TypeText() const;
  // ""Lo", "Mid", "Hi"", or the first and the last of many: "67 to 250.3"
  [[nodiscard]] std::string ValuesText() const;
  // "is none of "Lo", "Mid", "Hi"; did you mean "Hi"?"
  [[nodiscard]] std::string WhyNot(const Json& value) const;

 private:
  static Choices MadeOf(Field field);
  struct Choice {
    int code;
    Json value;
  };
  std::vector<Choice> choices_;
};

// MHz, whole ones without a point.
Json MhzJson(Units100Hz frequency);
// No value for a number that is no multiple of 100 Hz from 0 to 9999.9999 MHz.
std::optional<Units100Hz> MhzOf(const Json& value);

// A file is bytes: each is one character, U+0080 to U+00FF those that are no ASCII.
Json BytesJson(std::string_view bytes);
// No value for a text with other characters.
std::optional<std::string> BytesOf(const Json& text);

// For messages: a text in quotes and cut, anything else as it is written.
std::string ValueText(const Json& value);

}  // namespace q40
