// card: the channel card of a clone file as a PDF. What paints is a program of its own, so that this one
// starts without the libraries for it.
#include <filesystem>
#include <memory>
#include <system_error>

#include "card/card_content.h"
#include "document/defaults.h"
#include "files/whole_file.h"
#include "programs/ctl/commands.h"
#include "programs/ctl/helper_program.h"
#include "programs/ctl/user_files.h"

namespace q40 {
namespace {

struct Arguments {
  std::string file;
  std::string pdf;
  std::string paper = "a4";
  bool pocket = false;
  bool special = false;
  bool force = false;
};

// The program that paints: beside this one in a build, in its own folder once both are installed.
// Empty: it is in neither.
std::string CardProgram() {
  std::error_code error;
  const std::filesystem::path self = std::filesystem::read_symlink("/proc/self/exe", error);
  for (const char* const folder : {".", CARD_PROGRAM_FOLDER}) {
    const auto path = (self.parent_path() / folder / "rxq40card").lexically_normal();
    if (std::filesystem::is_regular_file(path, error)) return path;
  }
  return {};
}

int RunCard(CommandContext& context, const Arguments& arguments) {
  Console& console = context.console;
  CloneData document = FreshData();
  std::string text;
  if (const int code = OpenOrComplain(context, arguments.file, document, text)) return code;
  // A slip of the hand between two names must not cost a clone file.
  if (IsCloneFile(arguments.pdf)) {
    return console.Error(
        kExitUsage, arguments.pdf + " is a clone file. Name another file for the channel card.");
  }
  const std::string name = std::filesystem::path(InputName(arguments.file)).filename();
  if (MakeCard(document, name, arguments.special).rows.empty()) {
    return console.Error({FileProblem::Kind::kBadData, InputName(arguments.file), 0,
                          std::string(kNoChannelInUse) + ". --special puts the special channels on "
                                                         "the card"});
  }
  Product product(context, arguments.pdf);
  if (const int code = product.Prepare(arguments.force)) return code;
  const std::string program = CardProgram();
  if (program.empty()) {
    return console.Error(kExitCannotWrite,
                         "rxq40card, which makes the card, is not installed. It comes with the "
                         "window: install rxq40.");
  }
  std::vector<std::string> command = {program};
  if (arguments.paper == "letter") command.emplace_back("--letter");
  if (arguments.pocket) command.emplace_back("--pocket");
  if (arguments.special) command.emplace_back("--special");
  command.insert(command.end(), {"--", name});
  const HelperResult made = RunHelper(command, text);
  if (made.code != kExitDone) return console.Error(made.code, made.message);
  return product.Store(made.output);
}

}  // namespace

void AddCard(CLI::App& app, CommandContext& context) {
  auto* command = app.add_subcommand("card", "Makes a channel card for the pocket, as a PDF");
  auto arguments = std::make_shared<Arguments>();
  command->add_option("FILE", arguments->file, kClonePathHelp)->required();
  command->add_option("PDF", arguments->pdf, "PDF file, - for standard output")->required();
  command->add_option("--paper", arguments->paper, "a4, or letter")
      ->transform(CLI::IsMember({"a4", "letter"}, CLI::ignore_case))
      ->type_name("PAPER");
  command->add_flag("--pocket", arguments->pocket,
                    "fold the sheet three times and cut it once: eight pages of a booklet");
  command->add_flag("--special", arguments->special, "the special channels too");
  command->add_flag("--force", arguments->force, "replace an existing file; never a clone file");
  command->footer("Example: rxq40ctl card --pocket radio.Q40 card.pdf");
  command->callback([&context, arguments] { context.exit_code = RunCard(context, *arguments); });
}

}  // namespace q40
