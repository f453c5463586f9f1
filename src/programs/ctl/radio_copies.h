// Copies of radios, as the commands take them from files and keep them in files.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "document/radio_content.h"
#include "programs/ctl/commands.h"

namespace q40 {

// Reads a copy, or any clone file as one, also from a pipe or "-"; kExitDone, or the code of the error
// that was said.
int CopyOrComplain(CommandContext& context, const std::string& path, RadioCopy& copy);

// kExitDone, or kExitWrongModel (said) when the two files are of radios of different models.
int CheckSameModel(CommandContext& context, const std::string& a, int model_a, const std::string& b,
                   int model_b);

// What the radio held before, as `path` tells, of a radio of `model`; nothing is known without a path.
// kExitDone, or the code of the error that was said.
int ContentOrComplain(CommandContext& context, const std::optional<std::string>& path,
                      const std::string& file, int model, RadioContent& content);

// kExitDone when a backup can be made at `path`, or none is wanted; else the code of the error that was
// said. An older backup is never replaced: it may be the one that is needed.
int CheckBackup(CommandContext& context, const std::optional<std::string>& path);
// Keeps a copy there, for WriteNet. The context must outlive it.
std::function<bool(const RadioCopy& radio)> KeepIn(CommandContext& context, std::string path);

}  // namespace q40
