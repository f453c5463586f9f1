// The option --trace of the commands that talk to a radio.
#pragma once

#include "programs/ctl/commands.h"

namespace q40 {

// Adds it to each command of the app that has a port.
void AddTraceOptions(CLI::App& app, CommandContext& context);

// kExitDone, or the code of the error that was said: the trace must not be made. Makes nothing.
int CheckTrace(CommandContext& context);

// The way to the radio at a device, with the trace that the user wants. Whatever became of a trace that
// could not be written to its end is said when the line goes, and changes nothing else.
std::unique_ptr<RadioLine> LineTo(CommandContext& context, const std::string& device);

}  // namespace q40
