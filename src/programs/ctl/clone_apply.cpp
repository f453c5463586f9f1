#include "programs/ctl/clone_apply.h"

#include <map>
#include <set>

#include "base/hex.h"
#include "document/defaults.h"
#include "programs/ctl/clone_edit.h"
#include "radio/settings_codec.h"

namespace q40 {
namespace {

constexpr std::size_t kByteDigits = 2;

// ---- what is stored as it is

void Put(std::string_view text, char* at) { std::copy(text.begin(), text.end(), at); }

char* ByteIn(CloneLines& lines, const CloneItem& item) {
  return DigitsIn(lines, item.unit) + kByteDigits * item.index;
}

// All bits of a byte but the one that a control has.
void PutOtherBits(std::string_view digits, char* at) {
  constexpr int kBit6 = 4;  // of the high digit
  const int high = (HexDigitValue(digits[0]) & ~kBit6) | (HexDigitValue(*at) & kBit6);
  Put(std::string{HexByteText(high)[1], digits[1]}, at);
}

// The model and the bytes that the text names.
void StoreBytes(const NamedValues& values, OpenedClone& clone) {
  CloneLines& lines = clone.lines;
  CloneData& data = clone.data;
  for (const auto& [item, value] : values) {
    const std::string bytes = value->is_string() ? BytesOf(*value).value_or("") : std::string();
    switch (item->kind) {
      case ItemKind::kModel: data.model = FindModel(bytes).value_or(data.model); break;
      case ItemKind::kVersion: data.image.VersionA = bytes == "A"; break;
      case ItemKind::kCarriedByte: Put(bytes, ByteIn(lines, *item)); break;
      case ItemKind::kOtherBits: PutOtherBits(bytes, ByteIn(lines, *item)); break;
      case ItemKind::kStoredData: Put(bytes, DigitsIn(lines, item->unit)); break;
      case ItemKind::kOddDialText:
        Put(DialLine(bytes), lines.text.data() + (kFirstDialLine + item->index) * kCloneLineLength);
        break;
      default: break;
    }
  }
  // Over the bits that they share with others.
  for (const auto& [item, value] : values) {
    if (item->kind == ItemKind::kOddByte) Put(*BytesOf(*value), ByteIn(lines, *item));
  }
  Put(HeaderLine(data.model, VersionOf(data.image)), lines.text.data());
}

// ---- the file afterwards

// Takes into `lines` what has changed from one way of saving to another, and leaves every other byte.
void Merge(std::string_view before, std::string_view after, char* lines) {
  for (std::size_t i = 0; i + 1 < before.size(); i += kByteDigits) {
    const std::string_view changed = after.substr(i, kByteDigits);
    if (before.substr(i, kByteDigits) != changed) Put(changed, lines + i);
  }
}

using Byte = std::pair<Unit, std::size_t>;
constexpr Byte kStartChannel = {Unit::Settings(0), kStartChannelByte};

std::string_view DigitsOfByte(const CloneLines& lines, const Byte& byte) {
  return DigitsIn(lines, byte.first).substr(kByteDigits * byte.second, kByteDigits);
}

// A channel that was set is stored as Save does it; where the text says how it is stored, only what was
// changed of that.
void MergeUnits(const OpenedClone& work, const NamedValues& values, const Edits& edits,
                const CloneLines& after, CloneLines& lines) {
  const CloneLines before = SavedLines(work.data);
  std::set<Unit> stored;
  for (const auto& [item, value] : values) {
    if (item->kind == ItemKind::kStoredData && InUse(work.data.image, PlaceOf(item->unit)))
      stored.insert(item->unit);
  }
  for (const Unit unit : UnitsOf(Half::kBoth)) {
    if (unit.kind() == Unit::Kind::kDialer) continue;
    if (edits.channels.contains(unit) && !stored.contains(unit)) {
      Put(DigitsIn(after, unit), DigitsIn(lines, unit));
    } else {
      Merge(DigitsIn(before, unit), DigitsIn(after, unit), DigitsIn(lines, unit));
    }
  }
}

// So is a byte of a setting, and the start channel, which every save makes anew.
void MergeBytes(const NamedValues& values, const Edits& edits, const CloneLines& after,
                CloneLines& lines) {
  std::map<Byte, std::string_view> as_saved;
  if (edits.applied > 0) as_saved[kStartChannel] = DigitsOfByte(after, kStartChannel);
  for (const std::size_t index : edits.settings) {
    const Setting& setting = Settings()[index];
    const int offset = setting.line % 2 * kBlockSize + setting.byte;
    const Byte byte = {Unit::Settings(setting.line / 2), static_cast<std::size_t>(offset)};
    as_saved[byte] = DigitsOfByte(after, byte);
  }
  for (const auto& [item, value] : values) {
    if (item->kind == ItemKind::kOddByte) as_saved.erase({item->unit, item->index});
  }
  for (const auto& [byte, digits] : as_saved)
    Put(digits, DigitsIn(lines, byte.first) + kByteDigits * byte.second);
}

// The file with what has changed between the data of `work` and `edited`.
CloneLines Merged(const OpenedClone& work, const NamedValues& values, const Edits& edits,
                  const CloneData& edited) {
  const CloneLines after = SavedLines(edited);
  CloneLines lines = work.lines;
  MergeUnits(work, values, edits, after, lines);
  MergeBytes(values, edits, after, lines);
  // What is named is meant, whatever follows from the rest.
  for (const auto& [item, value] : values) {
    if (item->kind == ItemKind::kOddByte && Byte(item->unit, item->index) == kStartChannel)
      Put(DigitsOfByte(work.lines, kStartChannel), ByteIn(lines, *item));
  }
  for (std::size_t i = kFirstDialLine; i < kFirstDialLine + kDialCount; ++i)
    Put(after.Line(i), lines.text.data() + i * kCloneLineLength);
  return lines;
}

// What is read back of the file is not what was set.
void TellLosses(const NamedValues& values, const CloneData& set, const CloneData& kept,
                std::vector<std::string>& notes) {
  for (const Named& named : values) {
    const Json wanted = ValueOf(set, *named.item);
    const Json read = ValueOf(kept, *named.item);
    if (wanted == read) continue;
    notes.push_back(named.Where() + ": " + ValueText(wanted) + " is read back as " +
                    ValueText(read));
  }
}

}  // namespace

Applied ApplyJson(const OpenedClone& clone, const std::vector<JsonEntry>& entries) {
  Applied result;
  const NamedValues values = Resolved(entries, result.problems);
  if (!result.problems.empty()) return result;

  const auto opened = [&result](const CloneLines& lines) {
    CloneData data = FreshData();
    const OpenResult open = OpenCloneText(CloneTextOf(lines), {}, data);
    if (open.problem) result.problems.push_back(open.problem->what);
    result.odd_digit = open.odd_digit;
    return data;
  };
  OpenedClone work = clone;
  StoreBytes(values, work);
  work.data = opened(work.lines);
  CloneData edited = work.data;
  Edits edits = EditValues(values, edited);
  const CloneLines lines = Merged(work, values, edits, edited);
  TellLosses(values, edited, opened(lines), edits.notes);
  result.notes = std::move(edits.notes);
  result.applied = edits.applied;
  result.text = CloneTextOf(lines);
  return result;
}

}  // namespace q40
