#include "sim/fault.h"

#include <algorithm>
#include <charconv>

#include "base/hex.h"
#include "base/plain_text.h"

namespace q40 {
namespace {

struct KindRow {
  std::string_view name;
  FaultKind kind;
  int number;  // default of VALUE; -1: the kind takes no number
  std::string_view help;
};

constexpr KindRow kKinds[] = {
    {"silence", FaultKind::kSilence, -1, "nothing comes back"},
    {"echo-only", FaultKind::kEchoOnly, -1, "the echo comes, the answer does not"},
    {"no-echo", FaultKind::kNoEcho, -1, "the answer comes, the echo does not"},
    {"bad-echo", FaultKind::kBadEcho, -1, "one character of the echo is another"},
    {"short", FaultKind::kShort, -1, "an answer of one character too few"},
    {"long", FaultKind::kLong, -1, "an answer of one character too many"},
    {"non-hex", FaultKind::kNonHex, 0, "no digits in byte =N of the data"},
    {"ng", FaultKind::kNotGood, -1, R"("NG" instead of "OK")"},
    {"pieces", FaultKind::kPieces, 50, "the answer in pieces, =MS apart"},
    {"late", FaultKind::kLate, 2500, "the answer comes =MS later"},
    {"stray", FaultKind::kStray, 3, "=N foreign characters before the answer"},
    {"other-address", FaultKind::kOtherAddress, -1, "the data of the next unit"},
    {"not-stored", FaultKind::kNotStored, -1, "a write is acknowledged but not kept"},
    {"hang-up", FaultKind::kHangUp, 1000, "the line is closed; once: back after =MS"},
    {"wrong-identity", FaultKind::kWrongIdentity, -1, "=TEXT instead of the identity"},
};

constexpr int kLargestNumber = 60'000;  // a minute, or as many characters
constexpr std::string_view kOtherIdentity = "RXQ41-0A-";

bool ParseNumber(std::string_view text, int& number) {
  const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
  return result.ec == std::errc() && result.ptr == text.data() + text.size() && number >= 0 &&
         number <= kLargestNumber;
}

// The part of `text` after `separator`; both are cut off.
std::optional<std::string_view> CutBehind(std::string_view& text, char separator) {
  const auto at = text.find(separator);
  if (at == std::string_view::npos) return std::nullopt;
  const std::string_view behind = text.substr(at + 1);
  text = text.substr(0, at);
  return behind;
}

bool ParseWhere(std::string_view where, Fault& fault) {
  if (where.starts_with('#')) {
    return ParseNumber(where.substr(1), fault.exchange) && fault.exchange > 0;
  }
  fault.command = UpperCase(where);
  if (fault.command == "WHO" || fault.command == "RXQ40" || fault.command == "END") return true;
  constexpr std::size_t kAddressDigits = 4;
  if (where.size() != kAddressDigits || !std::all_of(where.begin(), where.end(), IsHexDigit)) {
    return false;
  }
  const int address = HexByteValue(where, 0) * 256 + HexByteValue(where, 2);
  return address < kMemorySize && address % kBlockSize == 0;
}

}  // namespace

std::optional<Fault> ParseFault(std::string_view text, std::string& why) {
  Fault fault;
  fault.stays = text.ends_with('+');
  if (fault.stays) text.remove_suffix(1);
  const auto where = CutBehind(text, '@');
  const auto value = CutBehind(text, '=');
  const auto* const row =
      std::find_if(std::begin(kKinds), std::end(kKinds), [&](auto& r) { return r.name == text; });
  if (row == std::end(kKinds)) {
    why = "unknown fault " + Quoted(text);
    return std::nullopt;
  }
  fault.kind = row->kind;
  fault.number = row->number;
  fault.text = kOtherIdentity;
  if (value && fault.kind == FaultKind::kWrongIdentity) {
    fault.text = *value;
  } else if (value && (row->number < 0 || !ParseNumber(*value, fault.number))) {
    why = Quoted(*value) + " is no value of the fault " + std::string(text);
    return std::nullopt;
  }
  if (where && !ParseWhere(*where, fault)) {
    why = Quoted(*where) + " is neither an address of the radio, WHO, RXQ40, END nor #NUMBER";
    return std::nullopt;
  }
  return fault;
}

std::string FaultHelp() {
  constexpr std::size_t kNameWidth = 16;
  std::string help;
  for (const KindRow& row : kKinds) {
    std::string name(row.name);
    name.resize(kNameWidth, ' ');
    help += "  " + name + std::string(row.help);
    if (row.number >= 0) help.append(" (").append(std::to_string(row.number)).append(")");
    help += '\n';
  }
  return help;
}

bool Happens(Fault& fault, int exchange, std::string_view command) {
  if (fault.happened) return fault.stays;
  const bool here = fault.command ? *fault.command == command : fault.exchange == exchange;
  fault.happened = here;
  return here;
}

}  // namespace q40
