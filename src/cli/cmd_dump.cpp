#include <charconv>
#include <memory>

#include "cli/commands.h"
#include "cli/radio_session.h"
#include "image/defaults.h"

namespace q40 {
namespace {

constexpr int kBlocks = kMemorySize / kBlockSize;
constexpr int kServiceDumpBlocks = 256;

struct Arguments {
  std::string port;
  std::string first = "0";
  int count = kServiceDumpBlocks;
};

int Run(CommandContext& context, const Arguments& arguments) {
  const auto device = DeviceOrComplain(context, arguments.port);
  if (!device) return context.exit_code;
  int first = 0;
  const char* end = arguments.first.data() + arguments.first.size();
  const auto parsed = std::from_chars(arguments.first.data(), end, first, 16);
  if (parsed.ec != std::errc() || parsed.ptr != end || first < 0 || first >= kBlocks) {
    return context.console.Error(kExitUsage, "--first is a block number from 0 to 1FF");
  }
  CloneDocument document = FreshDocument();
  RadioSession session(context, *device, document);
  return session.Dump(first, std::min(arguments.count, kBlocks - first));
}

}  // namespace

void AddDump(CLI::App& app, CommandContext& context) {
  auto* command = app.add_subcommand("dump", "Prints raw 16-byte blocks of the radio's memory");
  auto arguments = std::make_shared<Arguments>();
  AddPortOption(*command, arguments->port);
  command->add_option("--first", arguments->first, "first block in hexadecimal, 0 to 1FF (0)")
      ->type_name("HEX");
  command->add_option("--count", arguments->count, "number of blocks (256)")
      ->type_name("N")
      ->check(CLI::Range(1, kBlocks));
  command->footer(
      "A line is the block number, a tab and 32 digits. Block b lies at address 16 * b.\n"
      "Example, memory channel 0: rxq40ctl dump -p 1 --first 20 --count 2");
  command->callback([&context, arguments] { context.exit_code = Run(context, *arguments); });
}

}  // namespace q40
