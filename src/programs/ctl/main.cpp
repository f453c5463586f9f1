// rxq40ctl: everything that the window does with radio and files, from the command line.
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <exception>

#include "base/plain_text.h"
#include "files/standard_streams.h"
#include "programs/ctl/commands.h"
#include "serial/serial_port.h"

namespace q40 {
namespace {

// A serial device, and the signals that stop what runs on it.
class SerialLine final : public RadioLine {
 public:
  explicit SerialLine(const std::string& device) : port_(device) { loop_.StopOnSignals(); }
  Port& port() override { return port_; }
  LinkTimers timers() override { return loop_.Timers(); }
  EventPump& pump() override { return loop_; }

 private:
  CommandLineApplication application_;
  SerialPort port_;
  EventLoop loop_;
};

// The window's, which takes it from the toolkit.
std::string UserFolder() {
  const char* config = std::getenv("XDG_CONFIG_HOME");
  if (config != nullptr && *config == '/') return std::string(config) + "/rxq40";
  const char* home = std::getenv("HOME");
  return home != nullptr && *home != '\0' ? std::string(home) + "/.config/rxq40" : std::string();
}

}  // namespace
}  // namespace q40

int main(int argc, char** argv) {
  q40::OpenStandardStreams();
  // A full disk and a closed pipe are errors of a call here, not the end of the program.
  std::signal(SIGPIPE, SIG_IGN);
  std::signal(SIGXFSZ, SIG_IGN);
  try {
    q40::CommandContext context{
        .console = q40::Console(stdout, stderr),
        .line_to =
            [](const std::string& device) { return std::make_unique<q40::SerialLine>(device); },
        .present_ports = q40::PresentPorts};
    context.user_folder = q40::UserFolder();
    return q40::RunCommandLine(argc, argv, context);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "rxq40ctl: %s\n", q40::Printable(error.what()).c_str());
    return q40::kExitInternal;
  }
}
