#include "programs/ctl/trace_option.h"

#include <cerrno>
#include <filesystem>
#include <system_error>

#include "files/clone_file.h"
#include "files/standard_streams.h"
#include "link/trace_file.h"
#include "link/traced_port.h"
#include "programs/ctl/user_files.h"

namespace q40 {
namespace {

std::FILE* OpenTrace(const TraceChoice& choice) {
  if (const auto number = StreamNumber(choice.path, StreamUse::kWrite)) {
    return OpenStream(*number, StreamUse::kWrite);
  }
  // A file that has appeared since is as precious as one that was there.
  const bool may_replace = choice.may_replace || IsPipe(choice.path);
  return std::fopen(choice.path.c_str(), may_replace ? "wb" : "wbx");
}

class TracedLine final : public RadioLine {
 public:
  TracedLine(CommandContext& context, std::unique_ptr<RadioLine> line)
      : context_(context),
        choice_(*context.trace),
        line_(std::move(line)),
        file_([this] { return OpenTrace(choice_); }),
        port_(line_->port(), context.now) {
    if (IsPipe(choice_.path)) file_.Open();  // which waits for the reader, before the radio is met
    port_.Start([this](std::string_view text) { return file_.Take(text); });
  }
  ~TracedLine() override {
    port_.Close();
    // A reader that goes away early is no error.
    if (file_.error() == 0 || file_.error() == EPIPE) return;
    context_.console.Error(kExitDone, choice_.path + ": " +
                                          std::generic_category().message(file_.error()) +
                                          ". The trace is not whole; the radio was not disturbed.");
  }
  TracedLine(const TracedLine&) = delete;
  TracedLine& operator=(const TracedLine&) = delete;

  Port& port() override { return port_; }
  LinkTimers timers() override { return line_->timers(); }
  EventPump& pump() override { return line_->pump(); }

 private:
  CommandContext& context_;
  TraceChoice choice_;
  std::unique_ptr<RadioLine> line_;
  TraceFile file_;
  TracedPort port_;
};

}  // namespace

void AddTraceOptions(CLI::App& app, CommandContext& context) {
  for (CLI::App* command : app.get_subcommands({})) {
    if (command->get_option_no_throw("--port") == nullptr) continue;
    CLI::Option* force = command->get_option_no_throw("--force");
    const bool has_own = force != nullptr;
    if (!has_own) {
      force = command->add_flag("--force")->description("replace an existing trace");
    }
    auto* trace = command->add_option_function<std::string>(
        "--trace",
        [&context, command, force](const std::string& path) {
          const CLI::Option* file = command->get_option_no_throw("FILE");
          const bool named = file != nullptr && file->count() > 0;
          context.trace = TraceChoice{path, named ? file->results().front() : std::string(),
                                      force->count() > 0};
        },
        "keep what goes over the line, as text, in this new file");
    trace->type_name("FILE.trace");
    if (!has_own) force->needs(trace);
  }
}

int CheckTrace(CommandContext& context) {
  if (!context.trace) return kExitDone;
  const auto& [path, file, may_replace] = *context.trace;
  Product product(context, path);
  if (product.IsStream()) return kExitDone;
  if (IsCloneFile(path)) {
    return context.console.Error(kExitUsage,
                                 path + " is a clone file. Name another file for the trace.");
  }
  if (std::filesystem::path(path).lexically_normal() ==
      std::filesystem::path(file).lexically_normal()) {
    return context.console.Error(kExitUsage,
                                 path + " is the clone file. Name another file for the trace.");
  }
  return product.Prepare(may_replace);
}

std::unique_ptr<RadioLine> LineTo(CommandContext& context, const std::string& device) {
  auto line = context.line_to(device);
  if (!context.trace) return line;
  return std::make_unique<TracedLine>(context, std::move(line));
}

}  // namespace q40
