#include <memory>

#include "base/plain_text.h"
#include "document/defaults.h"
#include "programs/ctl/commands.h"
#include "programs/ctl/document_text.h"
#include "programs/ctl/radio_session.h"

namespace q40 {
namespace {

struct Arguments {
  std::string port;
  bool json = false;
};

int Run(CommandContext& context, const Arguments& arguments) {
  const auto device = DeviceOrComplain(context, arguments.port);
  if (!device) return context.exit_code;
  CloneDocument document;
  RadioSession session(context, *device, document);
  if (const int code = session.Identify(); code != kExitDone) return code;
  const SequenceReport& report = session.report();
  const std::string model(ModelName(report.radio_model));
  const std::string version = Printable(std::string(1, report.version_letter));
  if (!arguments.json) return Print(context, model + " version " + version + '\n');
  const nlohmann::ordered_json json = {{"model", model}, {"version", version}};
  return Print(context, JsonText(json));
}

}  // namespace

void AddIdentify(CLI::App& app, CommandContext& context) {
  auto* command = app.add_subcommand("identify", "Tells the model and the version of the radio");
  auto arguments = std::make_shared<Arguments>();
  AddPortOption(*command, arguments->port);
  command->add_flag("--json", arguments->json, "as JSON");
  command->footer("Example: rxq40ctl identify -p 1");
  command->callback([&context, arguments] { context.exit_code = Run(context, *arguments); });
}

}  // namespace q40
