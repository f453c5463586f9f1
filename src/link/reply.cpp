#include "link/reply.h"

#include <algorithm>

#include "base/hex.h"
#include "radio/memory_map.h"

namespace q40 {
namespace {

constexpr std::string_view kLineEnd = "\r\n";
constexpr std::string_view kAcknowledged = "OK\r\n";
constexpr std::size_t kDataAt = 11;
constexpr std::size_t kPlacesNamed = 5;

}  // namespace

bool ReplyForm::Fits(std::string_view reply) const {
  return reply.size() == length && (refusal.empty() || reply.ends_with(kAcknowledged));
}

std::string_view DataOf(std::string_view read_reply) {
  return read_reply.substr(kDataAt, kUnitDigits);
}

BadReply JudgeReply(std::string_view command, const ReplyForm& form, std::string_view received,
                    bool timed_out) {
  const std::string echo = std::string(command) + '\n';
  if (received.empty()) return {"nothing came back within 2 s", std::string(kCheckTheCable)};
  if (received == echo) {
    return {
        "only the echo came back within 2 s, and no answer",
        "The cable returns what it gets. Check that the radio is on, and the plug all the way in "
        "the radio."};
  }
  // An answer that has the length of the missing rest.
  if (received.size() + echo.size() == form.length && received.ends_with(kLineEnd) &&
      !received.starts_with(echo)) {
    return {"the answer came without the echo of the command",
            "A cable for this radio returns everything that is sent: use such a one, and check its "
            "plugs."};
  }
  const std::string length = std::to_string(received.size());
  const std::string expected = std::to_string(form.length);
  std::string why = "an answer of " + length + " characters instead of " + expected;
  if (timed_out) {
    why = "no complete answer within 2 s, but " + length +
          (received.size() < form.length ? " of " + expected : "") + " characters";
  } else if (!form.refusal.empty()) {
    why = form.refusal;
  }
  return {why, std::string(kCheckTheCable)};
}

bool IsDamaged(std::string_view command, const ReplyForm& form, std::string_view reply) {
  const std::string echo = std::string(command) + '\n';
  if (!reply.starts_with(echo) || !reply.ends_with(kLineEnd)) return true;
  const std::string_view data = form.has_data ? DataOf(reply) : std::string_view();
  return !std::all_of(data.begin(), data.end(), IsHexDigit);
}

std::string DamageText(std::span<const std::string> places) {
  std::string text = std::to_string(places.size()) +
                     (places.size() == 1 ? " reply was damaged" : " replies were damaged");
  const std::size_t named = std::min(places.size(), kPlacesNamed);
  for (std::size_t i = 0; i < named; ++i) text += (i == 0 ? ": " : ", ") + places[i];
  if (named < places.size()) {
    text += " and " + std::to_string(places.size() - named) + " more";
  }
  return text;
}

}  // namespace q40
