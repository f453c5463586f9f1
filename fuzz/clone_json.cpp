// A clone file as JSON, and a JSON text taken into a clone file.
//
// Input: patches of a clone file, three bytes each (line, column, character), up to one that begins with 255; the
// rest is the JSON text.
#include "document/defaults.h"
#include "programs/ctl/clone_apply.h"
#include "programs/ctl/document_text.h"
#include "sim/demo_radio.h"
#include "target.h"

namespace q40::fuzz {
namespace {

OpenedClone CloneOf(const CloneData& data) { return {SavedLines(data), data}; }

// Places that patches reach: the settings, the special channels, the dialer and the first channels.
constexpr int kPatchedLines = 60;

std::optional<OpenedClone> Patched(const OpenedClone& clone, Input& input) {
  OpenedClone patched = clone;
  for (int line = input.Byte(); line != 255 && !input.Empty(); line = input.Byte()) {
    const auto first = static_cast<std::size_t>(1 + line % kPatchedLines) * kCloneLineLength;
    const std::size_t at = first + static_cast<std::size_t>(input.Below(kCloneLineLength));
    const char character = static_cast<char>(input.Byte());
    if (character != '\r' && character != '\n') patched.lines.text[at] = character;
  }
  patched.data = FreshData();
  if (OpenCloneText(CloneTextOf(patched.lines), {}, patched.data).problem) return std::nullopt;
  return patched;
}

Applied Apply(const OpenedClone& clone, const JsonReading& reading) {
  Check(!reading.problem, "what is printed, or was read before, can be read");
  return ApplyJson(clone, reading.entries);
}

}  // namespace

void Run(Input input) {
  static const OpenedClone kDemo = CloneOf(DemoDocument());
  static const OpenedClone kFresh = CloneOf(FreshData());
  const auto clone = Patched(kDemo, input);
  if (!clone) return;
  const JsonReading whole = ReadJson(JsonText(DocumentJson(*clone)), {});
  for (const OpenedClone& target : {kFresh, kDemo, *clone}) {
    const Applied applied = Apply(target, whole);
    Check(applied.problems.empty() && applied.notes.empty(), "every value of a document fits");
    Check(applied.text == CloneTextOf(clone->lines), "a document makes its file of any other");
  }
  const JsonReading some = ReadJson(input.Rest(), {});
  if (some.problem) return;
  const Applied once = Apply(*clone, some);
  if (!once.problems.empty()) return;
  CloneData data = FreshData();
  Check(!OpenCloneText(once.text, {}, data).problem, "the file afterwards can be opened");
  const Applied twice = Apply(OpenedCloneOf(once.text, std::move(data)), some);
  Check(twice.problems.empty() && twice.text == once.text, "a second time changes nothing");
}

}  // namespace q40::fuzz
