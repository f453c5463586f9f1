// Replies of any kind into every sequence, in fake time.
//
// Input: what to run, how the host answers, what the document holds; then see fuzzed_port.h. Those that
// move single units take which ones from the same input.
#include "document/defaults.h"
#include "files/clone_file.h"
#include "fuzzed_port.h"
#include "link/safe_write.h"
#include "link/unit_sequences.h"
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
// Those that move units as they are.
enum NetCall : std::size_t { kBackUp, kRestore, kSwap, kVerify, kNetCalls };

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

// `repeats`: what is not written is asked for once more.
void CheckSent(const std::vector<Exchange>& exchanges, int model, bool stopped, bool repeats) {
  char radio_model = '\0';
  bool repeated = false;
  for (std::size_t i = 0; i < exchanges.size(); ++i) {
    const bool again = i > 0 && exchanges[i].sent == exchanges[i - 1].sent;
    Check(!again || exchanges[i].Is("KX~E") || (repeats && !repeated && !exchanges[i].Is('W')),
          "nothing is sent twice, but a read once more");
    repeated = again;
    const bool ends = stopped && i + 1 == exchanges.size() && exchanges[i].Is("KX~E");
    Check(i == 0 || again || ends || IsProper(exchanges[i - 1]),
          "nothing is sent behind a bad reply, but the End command behind a stop request");
    if (i > 0 && exchanges[i - 1].Is("KX~WHO")) radio_model = exchanges[i - 1].reply[14];
    Check(!exchanges[i].Is('W') || radio_model - '0' == model,
          "nothing is written to a radio of another model");
    constexpr int kDigitsAt = 9;  // "KX~F0200W"
    const std::string& sent = exchanges[i].sent;
    Check(
        !exchanges[i].Is('W') || std::all_of(sent.begin() + kDigitsAt, sent.end() - 2, IsHexDigit),
        "nothing but digits is written");
  }
}

// What a write says of itself, which may be followed by other sequences.
void CheckWritten(const SequenceReport& report, const std::vector<Exchange>& exchanges) {
  std::vector<Address> acknowledged;
  for (const Exchange& exchange : exchanges) {
    if (exchange.Is('W') && IsProper(exchange)) acknowledged.push_back(exchange.At());
  }
  std::vector<Address> reported;
  for (const UnitData& data : report.acknowledged) reported.push_back(data.unit.address());
  Check(reported == acknowledged, "the report names what was acknowledged");
  const auto open = std::find_if(exchanges.begin(), exchanges.end(),
                                 [](const Exchange& e) { return e.Is('W') && !IsProper(e); });
  Check(report.in_flight == (open != exchanges.end() ? Unit::At(open->At()) : std::nullopt),
        "the report names the unit that may have been stored");
}

void CheckReport(const SequenceReport& report, const Call& call, const FuzzedPort& port,
                 bool stopped) {
  const auto& exchanges = port.exchanges();
  CheckWritten(report, exchanges);
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

// ---- units as they are

// Digits for a unit, mostly all the same ones that the radio answers with; some are none.
std::string Digits(Input& input) {
  constexpr std::string_view kDigits = "000FfAz";
  std::string digits(kUnitDigits, kDigits[static_cast<std::size_t>(input.Below(7))]);
  return digits;
}

std::vector<UnitSwap> Swaps(Input& input) {
  std::vector<UnitSwap> swaps;
  for (int place = input.Below(100), count = 1 + input.Below(4); count > 0; --count) {
    UnitSwap swap{{Unit::AtPlace(place), Digits(input)}, {}};
    for (int known = input.Below(3); known > 0; --known) swap.known.push_back(Digits(input));
    swaps.push_back(std::move(swap));
    place += 1 + input.Below(25);
  }
  return swaps;
}

// What a command did, and what it was asked for.
struct NetResult {
  WriteResult write;
  bool done = false;
};

NetResult RunNet(NetCall call, Input& input, int model, Link& link, test::FakeHost& host) {
  NetResult result;
  RadioCopy copy{model, '0', {}};
  for (const Unit unit : UnitsOf(Half::kBoth)) copy.units.push_back({unit, Digits(input)});
  std::vector<UnitData> found;
  switch (call) {
    case kBackUp:
      result.write.last = UnitSequences(link, host).BackUp(model, copy);
      found = copy.units;
      break;
    case kRestore: result.write = RestoreRadio(link, host, copy, {}); break;
    case kSwap: result.write = SwapUnits(link, host, model, Swaps(input)); break;
    default:
      result.write.last =
          UnitSequences(link, host)
              .Read(Sequence::kVerify, model, {copy.units[3], copy.units[99]}, found);
  }
  result.done = result.write.last.outcome == Outcome::kDone;
  if (call == kBackUp && result.done) {
    Check(found.size() == kUnitCount && !FirstBadUnit(found), "a backup is whole");
  }
  return result;
}

void CheckNet(const NetResult& result, const FuzzedPort& port, bool stopped) {
  const WriteResult& write = result.write;
  const auto& exchanges = port.exchanges();
  CheckWritten(write.write, exchanges);
  Check(result.done == write.last.why.empty(), "what fails says why");
  Check(write.last.outcome != Outcome::kInterrupted || stopped, "only a stop request interrupts");
  Check((write.last.outcome == Outcome::kNotAsKnown) == !write.unlike.empty() &&
            (write.unlike.empty() || (!write.differences.empty() && !write.TouchedRadio())),
        "what is not as known is told, and left alone");
  const bool lost = !port.losses().empty() && port.losses().back() == exchanges.size();
  Check(!result.done || lost || (!exchanges.empty() && exchanges.back().Is("KX~E")),
        "a sequence that is done has ended");
}

}  // namespace

void Run(Input input) {
  testing::GTEST_FLAG(break_on_failure) = true;  // a wait without an end
  constexpr std::size_t kPlain = std::size(kCalls);
  const auto number = static_cast<std::size_t>(input.Below(static_cast<int>(kPlain + kNetCalls)));
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
  const bool is_net = number >= kPlain;
  bool writing = is_net;
  if (is_net) {
    const auto call = static_cast<NetCall>(number - kPlain);
    const NetResult result = RunNet(call, input, before.model, link, host);
    CheckNet(result, port, time.pump.stop);
  } else {
    const Call& call = kCalls[number];
    writing = call.direction == 'W';
    const SequenceReport report = (sequences.*call.run)();
    CheckReport(report, call, port, time.pump.stop);
  }
  CheckTime(time, port.exchanges().size());
  CheckSent(port.exchanges(), document.model(), time.pump.stop, is_net);
  CheckDocument(document.data(), before, writing);
  Check(host.begins == static_cast<int>(host.ends.size()), "every begin has its end");
}

}  // namespace q40::fuzz
