#include <charconv>
#include <memory>

#include "document/defaults.h"
#include "programs/ctl/commands.h"
#include "programs/ctl/radio_session.h"

namespace q40 {
namespace {

constexpr int kBlocks = kMemorySize / kBlockSize;
constexpr int kServiceDumpBlocks = 256;

struct Arguments {
  std::string port;
  std::string first = "0";
  std::optional<int> count;
};

// A block number, with or without "0x" before it.
std::optional<int> BlockNumber(std::string_view text) {
  if (text.starts_with("0x") || text.starts_with("0X")) text.remove_prefix(2);
  int block = 0;
  const auto parsed = std::from_chars(text.data(), text.data() + text.size(), block, 16);
  if (parsed.ec != std::errc() || parsed.ptr != text.data() + text.size()) return std::nullopt;
  return block >= 0 && block < kBlocks ? std::optional(block) : std::nullopt;
}

int Run(CommandContext& context, const Arguments& arguments) {
  const auto device = DeviceOrComplain(context, arguments.port);
  if (!device) return context.exit_code;
  const auto first = BlockNumber(arguments.first);
  if (!first) {
    return context.console.Error(kExitUsage,
                                 "dump: --first is a block number from 0 to 1FF. See "
                                 "rxq40ctl dump --help.");
  }
  if (arguments.count.value_or(1) < 1) {
    return context.console.Error(
        kExitUsage, "dump: --count is a number from 1 to 512. See rxq40ctl dump --help.");
  }
  const int left = kBlocks - *first;
  if (arguments.count && *arguments.count > left) {
    return context.console.Error(kExitUsage, "dump: the memory ends with block 1FF. Use --count " +
                                                 std::to_string(left) + " at most.");
  }
  CloneDocument document;
  RadioSession session(context, *device, document);
  return session.Dump(*first, arguments.count.value_or(std::min(kServiceDumpBlocks, left)));
}

}  // namespace

void AddDump(CLI::App& app, CommandContext& context) {
  auto* command = app.add_subcommand("dump", "Prints raw 16-byte blocks of the radio's memory");
  auto arguments = std::make_shared<Arguments>();
  AddPortOption(*command, arguments->port);
  command->add_option("--first", arguments->first, "first block in hexadecimal, 0 to 1FF (0)")
      ->type_name("HEX");
  command->add_option("--count", arguments->count, "number of blocks (256, or up to the last)")
      ->type_name("N");
  command->footer(
      "A line is the block number, a tab and 32 digits. Block b lies at address 16 * b.\n"
      "Example, memory channel 0: rxq40ctl dump -p 1 --first 20 --count 2");
  command->callback([&context, arguments] { context.exit_code = Run(context, *arguments); });
}

}  // namespace q40
