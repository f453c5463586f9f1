// The option -p: which device is meant.
#include "link/com_ports.h"
#include "programs/ctl/radio_session.h"
#include "programs/ctl/trace_option.h"

namespace q40 {
namespace {

constexpr std::string_view kAuto = "auto";

// "/dev/ttyUSB0 (FT232R USB UART, FTDI)"
std::string NameOf(const PresentPort& port) {
  return port.description.empty() ? port.device : port.device + " (" + port.description + ')';
}

// The only adapter. Whether a radio is behind it shows when it is talked to; none of several is tried.
std::optional<std::string> OnlyAdapter(CommandContext& context) {
  Console& console = context.console;
  const auto adapters = Adapters(context.present_ports());
  if (adapters.size() == 1) {
    console.Note("Port: " + NameOf(adapters[0]));
    return adapters[0].device;
  }
  if (adapters.empty()) {
    context.exit_code = console.Error(
        kExitPortError, kPortErrorText + std::string(": no adapter is plugged in. Plug in the "
                                                     "cable, or name its port."));
    return std::nullopt;
  }
  std::string text =
      std::to_string(adapters.size()) + " adapters are plugged in. Choose one with -p: ";
  for (const PresentPort& port : adapters) {
    text += (&port == &adapters.front() ? "" : ", ") + NameOf(port);
  }
  context.exit_code = console.Error(kExitUsage, text);
  return std::nullopt;
}

}  // namespace

void AddPortOption(CLI::App& command, std::string& port) {
  command
      .add_option("-p,--port", port,
                  "COM port 1 to 14, the path of a device, or auto: the only adapter")
      ->required()
      ->type_name("PORT");
}

std::optional<std::string> DeviceOrComplain(CommandContext& context, const std::string& port) {
  context.exit_code = CheckTrace(context);
  if (context.exit_code != kExitDone) return std::nullopt;
  if (port == kAuto) return OnlyAdapter(context);
  auto device = DeviceOf(port);
  if (!device) {
    context.exit_code =
        context.console.Error(kExitUsage, "\"" + port + "\" is no port: " + PortAdvice(port));
  }
  return device;
}

}  // namespace q40
