#include "radio/channel_fields.h"

#include <algorithm>

namespace q40 {
namespace {

const Word* FindNumber(Field field, int number) {
  const auto words = WordsOf(field);
  const auto found =
      std::find_if(words.begin(), words.end(), [&](const Word& w) { return w.number == number; });
  return found == words.end() ? nullptr : &*found;
}

}  // namespace

std::string_view CodeText(Field field, int number) {
  if (RowOf(field).text != nullptr) return RowOf(field).text(number);
  const auto words = WordsOf(field);
  if (words.empty()) return {};
  const Word* word = FindNumber(field, number);
  return word != nullptr ? word->text : words.front().text;
}

int KnownCode(Field field, int number) { return FindNumber(field, number) != nullptr ? number : 0; }

int CodeOfWord(Field field, std::string_view text) {
  const auto words = WordsOf(field);
  const auto found =
      std::find_if(words.begin(), words.end(), [&](const Word& w) { return w.text == text; });
  return found == words.end() ? 0 : found->number;
}

void SetCode(ChannelRecord& record, ChannelKind kind, Field field, int number) {
  record.Set(kind, field, number, CodeText(field, number));
}

}  // namespace q40
