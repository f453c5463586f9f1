// A radio at a port, for the commands that talk to one.
#pragma once

#include <optional>
#include <string>

#include "link/write_texts.h"
#include "programs/ctl/commands.h"

namespace q40 {

// Runs sequences on a document and says how they end. One at a time.
class RadioSession final : private SequenceQuestions, private SequenceWatcher {
 public:
  // `device` is a path. Everything must outlive the session.
  RadioSession(CommandContext& context, const std::string& device, CloneDocument& document);

  // The identified model must be the document's own; otherwise the sequence ends there. For data
  // that belongs to one model and is only completed.
  void KeepModel() { keep_model_ = true; }

  // Each returns an exit code; the message has been said.
  int Identify();
  int Read(Half half);
  // `ways`: commands for a user whose write did not end well. What the radio did not keep, or does not
  // hold as it was known, goes to standard output.
  int Write(Half half, const WriteNet& net, const WayOut& ways);
  int Restore(const RadioCopy& copy, const WriteNet& net, const WayOut& ways);
  int Swap(int model, const std::vector<UnitSwap>& swaps, const WayOut& ways);
  int BackUp(RadioCopy& copy);
  // Blocks as text on standard output, up to the first that is not answered.
  int Dump(int first_block, int count);

  [[nodiscard]] const SequenceReport& report() const { return report_; }

 private:
  bool AskToSave() override { return true; }
  bool SelectModel(int model) override;
  void Begin(Sequence sequence) override;
  void ShowProgress(const SequenceProgress& progress) override;
  void End(const SequenceReport& report) override;

  int Conclude(const SequenceReport& report, const std::string& written = {});
  int ConcludeWrite(const WriteResult& result, const WayOut& ways);
  int ConcludeResult(const WriteResult& result);
  int ConcludeVerified(const WriteResult& result);
  int ConcludeUnknown(const WriteResult& result);
  [[nodiscard]] std::string ModelsText(const SequenceReport& report) const;
  [[nodiscard]] std::string Advice(const PortProblem& problem) const;

  CommandContext& context_;
  CloneDocument& document_;
  std::string device_;
  std::unique_ptr<RadioLine> line_;
  Link link_;
  Sequences sequences_;
  SequenceReport report_;
  bool keep_model_ = false;
};

// Adds the option -p to a subcommand.
void AddPortOption(CLI::App& command, std::string& port);
// The device of a port option, asked for first. No value: why, or that the trace must not be made, has
// been said, and the exit code is in the context.
std::optional<std::string> DeviceOrComplain(CommandContext& context, const std::string& port);

// Adds the option --only; HalfOf reads it.
void AddOnlyOption(CLI::App& command, std::string& only);
Half HalfOf(const std::string& only);

// Adds --backup; and --rest with --before, which needs it.
CLI::Option* AddBackupOption(CLI::App& command, std::optional<std::string>& path);
CLI::Option* AddRestOptions(CLI::App& command, bool& rest, std::optional<std::string>& before);

}  // namespace q40
