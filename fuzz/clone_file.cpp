// Clone files: open, save, open again.
//
// An input that begins with "K" is a file as it stands. Any other is a list of places in a good
// file that are written over (two bytes offset, one byte length, the characters), because a file
// with a line too long or too short is refused before its content is looked at.
#include "files/clone_file.h"

#include <tuple>

#include "document/defaults.h"
#include "radio/models.h"
#include "target.h"

namespace q40::fuzz {
namespace {

const std::string kPath = "input.Q40";

// A document that is being edited, so that whatever a refused file changes is seen.
CloneData EditedDocument() {
  CloneData document = FreshData();
  document.dial[3] = "123A";
  document.settings.Slider1 = 7;
  document.image.VersionA = true;
  return document;
}

std::string GoodText() {
  CloneData document = FreshData();
  ChangeModel(document, 1);
  return CloneFileText(document, document.model).value();
}

std::string TextOf(Input input) {
  if (const std::string_view raw = Input(input).Rest(); raw.starts_with('K'))
    return std::string(raw);
  static const std::string kGood = GoodText();
  std::string text = kGood;
  while (!input.Empty()) {
    const auto high = static_cast<std::size_t>(input.Byte());
    const auto at = (high * 256 + static_cast<std::size_t>(input.Byte())) % text.size();
    const std::string_view patch = input.Text(static_cast<std::size_t>(input.Byte()));
    text.replace(at, patch.size(), patch);
  }
  return text;
}

bool Same(const CloneData& a, const CloneData& b) { return a == b; }

// Lines or header are at fault: nothing has changed. End line or a channel: the model and the
// version of the header are selected, nothing else.
void CheckRefused(std::string_view text, const CloneData& document) {
  CloneData expected = EditedDocument();
  CloneLines lines;
  if (!SplitCloneText(text, kPath, lines)) {
    if (const auto header = FindHeaderLine(lines.Line(0))) {
      ChangeModel(expected, header->model);
      expected.image.VersionA = header->version == kVersionA;
    }
  }
  Check(Same(document, expected), "a refused file leaves the document as it was");
}

CloneData Reopened(std::string_view text, const CloneData& saved) {
  CloneData document = EditedDocument();
  const OpenResult result = OpenCloneText(text, kPath, document);
  Check(!result.problem, "what was saved can be opened");
  constexpr int kLastSettingsLine = 5;  // bytes without a control keep whatever they hold
  Check(!result.odd_digit || result.odd_digit->line <= kLastSettingsLine,
        "channels are saved as digits");
  Check(document.model == saved.model && document.image.VersionA == saved.image.VersionA &&
            document.dial == saved.dial && document.settings == saved.settings,
        "a save keeps model, version, dialer texts and settings");
  return document;
}

// What the codec narrows (step, Split, tone mode) it narrows when it reads, so the numbers survive. All
// but one: an offset in digits that are no decimal ones ("453A.443E") may be read as 10 MHz or more,
// and loses its leading digits when it is read again.
void CheckChannels(const CloneImage& read, const CloneImage& again) {
  constexpr auto kOffsetColumn = static_cast<std::size_t>(Field::kShiftFrequency);
  for (std::size_t n = 0; n < kMemoryChannelCount; ++n) {
    auto expected = read.MemoryTable[n].value;
    Units100Hz& offset = expected[kOffsetColumn];
    if (offset < 1000 * kUnitsPerMhz) offset %= 10 * kUnitsPerMhz;
    Check(again.MemoryTable[n].value == expected, "the numbers of a channel come back");
  }
  Check(read.ChannelInUse == again.ChannelInUse, "in use stays in use");
}

std::string Saved(const CloneData& document) {
  const auto text = CloneFileText(document, document.model);
  Check(text.has_value(), "what was opened can be saved");
  Check(text->size() == kLongestCloneFile, "a saved file has 456 lines of 32 characters");
  return *text;
}

}  // namespace

void Run(Input input) {
  const std::string text = TextOf(input);
  CloneData opened = EditedDocument();
  if (OpenCloneText(text, kPath, opened).problem) return CheckRefused(text, opened);
  const auto in_range = [&](const Setting& setting) {
    const int value = opened.settings.*setting.value;
    return value >= 0 && value <= setting.top;
  };
  Check(std::ranges::all_of(Settings(), in_range), "no setting lies outside its range");
  const std::string once = Saved(opened);
  const CloneData second = Reopened(once, opened);
  const std::string twice = Saved(second);
  CheckChannels(opened.image, second.image);
  // So the two files need not be alike; from the second on they are.
  const CloneData third = Reopened(twice, opened);
  Check(Saved(third) == twice, "a file that was saved twice stays as it is");
  Check(Same(second, third), "a document that was saved and opened stays as it is");
}

}  // namespace q40::fuzz
