// The command lines in the documents print what stands behind them.
#include <filesystem>
#include <memory>

#include "support/document_lines.h"
#include "support/process.h"

namespace q40 {
namespace {

using namespace test;

// "console", "console no-port" (nothing is plugged in) or "console ARGUMENTS" (of the simulated
// radio). Lines that begin with "$ " are commands; behind them stands what they print.
class Consoles : public ::testing::TestWithParam<const char*> {
 protected:
  // What a command prints, without the lines that only tell of progress.
  Lines Output(const std::string& command, const std::string& device) {
    const std::string ctl = Program("rxq40ctl");
    const auto result = test::Run(
        {"/bin/sh", "-c", "cd '" + folder_.path() + "'; exec 2>&1; " + command},
        {{{"PATH", ctl.substr(0, ctl.rfind('/')) + ":/usr/bin:/bin"}, {"RXQ40_COM1", device}}});
    Lines lines = LinesOf(result.out);
    std::erase_if(lines, [](const std::string& line) {
      return line == "Identifying" || line.starts_with("Reading ") || line.starts_with("Writing ");
    });
    return lines;
  }

  void Expect(const Fence& fence) {
    Lines arguments = Words(fence.kind, ' ');
    arguments.erase(arguments.begin());
    std::unique_ptr<SimulatorProcess> radio;
    if (arguments != Lines{"no-port"}) {
      if (arguments.empty() || arguments[0] != "--model") {
        arguments.insert(arguments.end(), {"--load", folder_ / "radio.Q40"});
      }
      radio = std::make_unique<SimulatorProcess>(arguments);
      ASSERT_FALSE(radio->device().empty()) << fence.kind;
    }
    Lines printed;
    for (const std::string& line : fence.lines) {
      if (!line.starts_with("$ ")) continue;
      printed.push_back(line);
      const Lines output = Output(line.substr(2), radio ? radio->device() : "");
      printed.insert(printed.end(), output.begin(), output.end());
    }
    EXPECT_EQ(printed, fence.lines);
  }

  TempFolder folder_;
};

TEST_P(Consoles, PrintWhatIsShown) {
  for (const char* name : {"radio.Q40", "channels.csv"})
    std::filesystem::copy(kExamples + name, folder_ / name);
  Store(folder_ / "changes.csv", Joined(FenceLines("docs/csv.md", "text csv-import")));
  for (const Fence& fence : Fences(GetParam(), "")) {
    constexpr std::string_view kFile = "text file=";
    if (fence.kind.starts_with(kFile))
      Store(folder_ / fence.kind.substr(kFile.size()), Joined(fence.lines));
  }
  for (const Fence& fence : Fences(GetParam(), "console")) Expect(fence);
}

INSTANTIATE_TEST_SUITE_P(Documents, Consoles,
                         ::testing::Values("README.md", "docs/clone-file.md", "docs/csv.md",
                                           "docs/json.md", "docs/lists.md", "docs/protocol.md"));

}  // namespace
}  // namespace q40
