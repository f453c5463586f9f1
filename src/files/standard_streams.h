// Standard input, output and error of a program.
#pragma once

namespace q40 {

// A program may be started with some of them closed. The next file it opens would then get their
// number, and messages would be written into it. Opens those that are closed on the null device.
// First thing in main.
void OpenStandardStreams();

}  // namespace q40
