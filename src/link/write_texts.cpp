#include "link/write_texts.h"

#include <algorithm>

#include "base/hex.h"
#include "document/clone_image.h"

namespace q40 {
namespace {

// "settings and channels 0 to 41"
std::string AcknowledgedText(std::size_t settings, std::size_t channels, bool all_settings,
                             const SequenceReport& write) {
  std::string text;
  if (settings > 0) {
    text = all_settings ? "settings" : "settings up to " + write.acknowledged.back().unit.Name();
  }
  if (channels > 0) {
    if (settings > 0) text += " and ";
    text += channels == 1 ? "channel 0"
                          : "channels 0 to " + ChannelTitle(static_cast<int>(channels) - 1);
  }
  return text;
}

std::string SomeUnitsWrittenText(const SequenceReport& write) {
  std::string text = UnitsText(write.acknowledged);
  if (!text.empty()) text += " written";
  if (write.in_flight) {
    if (!text.empty()) text += ", ";
    text += write.in_flight->Name() + " perhaps (sent, but not acknowledged)";
  }
  return text.empty() ? "nothing was written" : text + ", the rest as before";
}

std::string Sentence(std::string text) {
  text[0] = UpperCase(text[0]);
  return text + '.';
}

}  // namespace

std::string WrittenText(const SequenceReport& write, Half half) {
  const std::size_t planned = UnitsOf(half).size();
  const std::size_t settings_planned = half == Half::kMemory ? 0 : kSettingsUnits;
  std::size_t done = write.acknowledged.size();
  if (done == 0 && !write.in_flight) return "nothing was written";

  const std::size_t settings = std::min(done, settings_planned);
  std::string text =
      AcknowledgedText(settings, done - settings, settings == settings_planned, write);
  if (!text.empty()) text += " written";
  if (write.in_flight) {
    if (!text.empty()) text += ", ";
    text += write.in_flight->Name() + " perhaps (sent, but not acknowledged)";
    ++done;
  }
  if (done >= planned) return text;
  if (done <= settings_planned) return text + ", the rest as before";
  const int next = static_cast<int>(done - settings_planned);
  return text + ", " + ChannelTitle(next) + " onwards as before";
}

std::string UnitsText(const std::vector<UnitData>& units) {
  std::string names;
  std::string channels;
  int last = 0;
  for (std::size_t i = 0; i < units.size(); ++i) {
    const Unit unit = units[i].unit;
    if (unit.kind() != Unit::Kind::kMemory) {
      names += (names.empty() ? "" : ", ") + unit.Name();
      continue;
    }
    const int first = unit.index();
    while (i + 1 < units.size() && units[i + 1].unit.place() == units[i].unit.place() + 1) ++i;
    last = units[i].unit.index();
    channels += (channels.empty() ? "" : ", ") + ChannelTitle(first);
    if (last > first) channels += " to " + ChannelTitle(last);
  }
  if (channels.empty()) return names;
  if (!names.empty()) names += ", ";
  const bool one = channels == ChannelTitle(last);
  return names + (one ? "channel " : "channels ") + channels;
}

std::string FewUnitsText(const std::vector<UnitData>& units) {
  constexpr std::size_t kMany = 20;
  return units.size() > kMany ? std::to_string(units.size()) + " blocks" : UnitsText(units);
}

std::vector<std::string> WayTexts(const WriteResult& result, const WayOut& ways) {
  std::vector<std::string> texts;
  if (!result.TouchedRadio() && !ways.has_a_part) return texts;
  if (!ways.go_on.empty()) texts.push_back("To go on: " + ways.go_on);
  if ((result.backup_kept || ways.has_a_part) && !ways.restore.empty()) {
    texts.push_back("To bring the backup back: " + ways.restore);
  }
  return texts;
}

std::string AftermathText(const WriteResult& result, const WayOut& ways) {
  using Stage = WriteResult::Stage;
  if (result.stage == Stage::kBackup) return "The backup was not made, so nothing was written.";
  std::string text = "Everything was written, but not verified.";
  if (result.stage == Stage::kCompare) text = "Nothing was written.";
  if (result.stage == Stage::kWrite) {
    text = Sentence(result.half ? WrittenText(result.write, *result.half)
                                : SomeUnitsWrittenText(result.write));
  }
  for (const std::string& way : WayTexts(result, ways)) text += ' ' + way;
  return text;
}

}  // namespace q40
