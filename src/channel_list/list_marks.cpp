#include "channel_list/list_marks.h"

#include "checkup/checkup.h"
#include "radio/channel_fields.h"

namespace q40 {

QString ListMarks::At(const ChannelPlace& place, Field field) {
  if (!known_) Look();
  const auto found =
      words_.find({place.kind, place.band, place.index, std::string(FieldName(field))});
  return found == words_.end() ? QString() : found->second;
}

// Hints, of names that stand twice, are no marks: half a list would have them.
void ListMarks::Look() {
  known_ = true;
  words_.clear();
  for (const Finding& finding : CheckUp(document_.data())) {
    const bool memory = finding.place.where == Place::Where::kMemory;
    const bool special = finding.place.where == Place::Where::kSpecial;
    if ((!memory && !special) || RowOf(finding.kind).severity == Severity::kHint) continue;
    QString& words = words_[{memory ? ChannelKind::kMemory : ChannelKind::kSpecial,
                             finding.place.band, finding.place.index, finding.field}];
    if (!words.isEmpty()) words += QLatin1Char('\n');
    words += QString::fromStdString(finding.text);
  }
}

}  // namespace q40
