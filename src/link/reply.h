// What comes back from the radio: the form that each reply must have, and what to say about one
// that has another form. A reply counts by its length, and an acknowledgement by its end;
// everything else about it is only worth reporting.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace q40 {

// The form of a whole reply, echo included.
struct ReplyForm {
  std::size_t length;
  // What is said of a reply without the OK at its end; empty where none is needed.
  std::string_view refusal;
  bool has_data = false;  // 64 digits after the echo

  [[nodiscard]] bool Fits(std::string_view reply) const;
};
inline constexpr ReplyForm kIdentifyReply{19, {}};
inline constexpr ReplyForm kAnnounceReply{11, "the radio does not answer OK"};
inline constexpr ReplyForm kReadReply{77, {}, true};
inline constexpr ReplyForm kWriteReply{79, "the radio does not acknowledge the write"};

// The 64 digits of a reply to a read.
std::string_view DataOf(std::string_view read_reply);

// Why a command got no reply of its form, and what to try next, in sentences.
struct BadReply {
  std::string why;  // "nothing came back within 2 s"
  std::string remedy;
};
inline constexpr std::string_view kCheckTheCable =
    "Check that the radio is on, the cable is in, and the port is the cable's.";

// `command` without its LF; `received`: all that came back, perhaps nothing; `timed_out`: it was not
// even complete.
BadReply JudgeReply(std::string_view command, const ReplyForm& form, std::string_view received,
                    bool timed_out);

// Whether a reply that has its form is damaged all the same: its echo is not the command, its data
// are no hexadecimal digits, or it does not end with CR LF.
bool IsDamaged(std::string_view command, const ReplyForm& form, std::string_view reply);

// "3 replies were damaged: memory channel 5, memory channel 7, settings area 1". Names a few of many.
std::string DamageText(std::span<const std::string> places);

}  // namespace q40
