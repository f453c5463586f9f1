// Channel lists: import, export, import again. The input is the CSV text.
#include "files/channel_csv.h"

#include <algorithm>

#include "document/defaults.h"
#include "files/clone_file.h"
#include "target.h"

namespace q40::fuzz {
namespace {

void CheckImage(const CloneImage& image) {
  Check(image.ShownSpecialSet == SpecialStore(image, image.ShownBand),
        "the shown band is the stored one");
  CloneData document;
  document.image = image;
  Check(CloneFileText(document, document.model).has_value(), "what was imported can be saved");
}

}  // namespace

void Run(Input input) {
  const std::string_view text = input.Rest();
  static const CloneImage kFresh = FreshData().image;
  CloneImage image = kFresh;
  const ImportReport report = ImportChannels(text, image);
  if (report.unclosed_quote_line != 0) {
    Check(image == kFresh, "a text with an open quote changes nothing");
    return;
  }
  CheckImage(image);
  Check(report.notes.size() ==
            std::min<std::size_t>(static_cast<std::size_t>(report.note_count), kNotesListed),
        "every note is listed while there is room");
  Check(std::is_sorted(report.notes.begin(), report.notes.end(),
                       [](auto& a, auto& b) { return a.line < b.line; }),
        "notes stand in the order of their lines");

  // The texts that an export shows are final from the first import on. The cells behind them are so
  // one import later: a PH or PL that is absent is emptied only when a record names it.
  const std::string once = ExportChannels(image);
  CloneImage second = image;
  const ImportReport again = ImportChannels(once, second);
  Check(again.Whole(), "everything in an export is understood");
  Check(again.special_records == 2 * kSpecialChannelCount &&
            again.memory_records == static_cast<int>(std::count(
                                        second.ChannelInUse.begin(),
                                        second.ChannelInUse.begin() + kMemoryChannelCount, true)),
        "an export names every channel");
  Check(second.MemoryTable == image.MemoryTable && second.ChannelInUse == image.ChannelInUse,
        "an export imports back to the same memory channels");
  Check(ExportChannels(second) == once, "an export imports back to the same list");
  CloneImage third = second;
  ImportChannels(once, third);
  Check(third == second, "a second import of a list changes nothing");

  // The list alone carries everything that a memory channel has.
  CloneImage other = kFresh;
  ImportChannels(once, other);
  Check(other.MemoryTable == image.MemoryTable, "an empty document takes over the whole list");
}

}  // namespace q40::fuzz
