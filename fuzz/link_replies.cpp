// Replies of any kind into every sequence, in fake time.
//
// Input: what to run, how the host answers, what the document holds; then see fuzzed_port.h.
#include "document/defaults.h"
#include "files/clone_file.h"
#include "fuzzed_port.h"
#include "link/sequences.h"
#include "support/fake_host.h"

namespace q40::fuzz {
namespace {

struct Call {
  SequenceReport (Sequences::*run)();
  char direction;     // 'R' reads, 'W' writes
  std::size_t units;  // that are moved when all goes well
  bool has_end;       // the End command comes last
};
constexpr Call kCalls[] = {
    {&Sequences::Identify, 'R', 0, false},     {&Sequences::AutoSelect, 'R', 0, false},
    {&Sequences::ReadSettings, 'R', 17, true}, {&Sequences::ReadMemory, 'R', 210, true},
    {&Sequences::ReadAll, 'R', 227, true},     {&Sequences::WriteSettings, 'W', 17, true},
    {&Sequences::WriteMemory, 'W', 210, true}, {&Sequences::WriteAll, 'W', 227, true},
};
// The form that a reply must have for the sequence to go on. What an End brings does not matter.
bool IsProper(const Exchange& exchange) {
  const std::string& reply = exchange.reply;
  const bool acknowledged = reply.ends_with("OK\r\n");
  if (exchange.Is("KX~E")) return true;
  if (exchange.Is("RXQ40")) return reply.size() == 11 && acknowledged;
  if (exchange.Is('R')) return reply.size() == 77;
  if (exchange.Is('W')) return reply.size() == 79 && acknowledged;
  return exchange.Is("KX~WHO") && reply.size() == 19 && reply.substr(8, 5) == "RXQ40" &&
         reply[14] >= '0' && reply[14] <= '2';
}

// Every exchange has its two seconds and a pause, none has more.
void CheckTime(const test::FakeTime& time, std::size_t exchanges) {
  const auto limit = kCommandTimeout + milliseconds(2 * kPauseMs);
  Check(time.clock.Ms() <= static_cast<long>(exchanges + 1) * limit.count(),
        "no exchange takes longer than its timer");
}

void CheckSent(const std::vector<Exchange>& exchanges, const CloneData& document) {
  char radio_model = '\0';
  for (std::size_t i = 0; i < exchanges.size(); ++i) {
    Check(i == 0 || IsProper(exchanges[i - 1]), "nothing is sent behind a bad reply");
    if (i > 0 && exchanges[i - 1].Is("KX~WHO")) radio_model = exchanges[i - 1].reply[14];
    Check(!exchanges[i].Is('W') || radio_model - '0' == document.model,
          "nothing is written to a radio of another model");
    constexpr int kDigitsAt = 9;  // "KX~F0200W"
    const std::string& sent = exchanges[i].sent;
    Check(
        !exchanges[i].Is('W') || std::all_of(sent.begin() + kDigitsAt, sent.end() - 2, IsHexDigit),
        "nothing but digits is written");
  }
}

void CheckReport(const SequenceReport& report, const Call& call, const FuzzedPort& port,
                 bool stopped) {
  const auto& exchanges = port.exchanges();
  std::vector<Address> acknowledged;
  for (const Exchange& exchange : exchanges) {
    if (exchange.Is('W') && IsProper(exchange)) acknowledged.push_back(exchange.At());
  }
  std::vector<Address> reported;
  for (const UnitData& data : report.acknowledged) reported.push_back(data.unit.address());
  Check(reported == acknowledged, "the report names what was acknowledged");
  const bool open_end =
      !exchanges.empty() && exchanges.back().Is('W') && !IsProper(exchanges.back());
  Check(report.in_flight == (open_end ? Unit::At(exchanges.back().At()) : std::nullopt),
        "the report names the unit that may have been stored");

  constexpr std::size_t kLongestNote = 300;
  Check(report.note.size() < kLongestNote && report.note.empty() == report.damaged.empty(),
        "the note is a line");
  const bool done = report.outcome == Outcome::kDone;
  const auto moved = std::count_if(exchanges.begin(), exchanges.end(), [&](const Exchange& e) {
    return e.Is(call.direction) && IsProper(e);
  });
  Check(done == report.why.empty(), "what fails says why");
  Check(!done || moved == static_cast<std::ptrdiff_t>(call.units),
        "what is done has moved every unit");
  Check(report.outcome != Outcome::kInterrupted || stopped, "only a stop request interrupts");

  // A port that is lost behind the last unit takes the End command with it; that does not matter, as
  // the answer to it does not.
  const bool lost = !port.losses().empty() && port.losses().back() == exchanges.size();
  Check(!done || !call.has_end || lost || (!exchanges.empty() && exchanges.back().Is("KX~E")),
        "a sequence that is done has ended");
  Check(!lost || done || stopped || report.outcome == Outcome::kPortError,
        "a lost port is a port error");
  for (const std::size_t sent : port.losses()) {
    Check(sent == exchanges.size() || exchanges[sent].Is("KX~WHO") || exchanges[sent].Is("RXQ40"),
          "behind a lost port only a new sequence is sent");
  }
}

void CheckDocument(CloneData document, const CloneData& before, bool writing) {
  Check(document.image.ShownSpecialSet == SpecialStore(document.image, document.image.ShownBand),
        "the shown band is the stored one");
  if (writing) {
    Check(document.image.MemoryTable == before.image.MemoryTable &&
              document.image.VhfSpecialSet == before.image.VhfSpecialSet &&
              document.image.UhfSpecialSet == before.image.UhfSpecialSet &&
              document.image.ChannelInUse == before.image.ChannelInUse &&
              document.settings == before.settings && document.dial == before.dial,
          "writing leaves the data as it is");
  }
  Check(CloneFileText(document, document.model).has_value(), "what was read can be saved");
}

}  // namespace

void Run(Input input) {
  testing::GTEST_FLAG(break_on_failure) = true;  // a wait without an end
  const Call& call = kCalls[input.Below(static_cast<int>(std::size(kCalls)))];
  CloneDocument document;
  test::FakeHost host(document);
  host.answer_save = input.Byte() != 1;
  host.answer_select = input.Byte() != 1;
  document.ChangeModel(input.Below(kModelCount));
  const bool settings_changed = input.Flag();
  test::SetChanged(document, settings_changed, input.Flag());
  test::DataOf(document).dial[0] = "12#";
  const CloneData before = document.data();

  test::FakeTime time;
  FuzzedPort port(input, time);
  Link link(port, time.Timers(), time.pump);
  Sequences sequences(link, document, host, &host);
  const SequenceReport report = (sequences.*call.run)();

  CheckTime(time, port.exchanges().size());
  CheckSent(port.exchanges(), document.data());
  CheckReport(report, call, port, time.pump.stop);
  CheckDocument(document.data(), before, call.direction == 'W');
  Check(host.begins == static_cast<int>(host.ends.size()), "every begin has its end");
}

}  // namespace q40::fuzz
