// What the programs tell the shell. rxq40ctl uses all of these, rxq40sim some.
#pragma once

namespace q40 {

enum ExitCode : int {
  kExitDone = 0,
  kExitDifferent = 1,           // diff found differences
  kExitFindings = 1,            // lint found something
  kExitUsage = 2,               // the command line is wrong
  kExitPortError = 3,           // "COM Port Error"
  kExitCommunicationError = 4,  // "Communication Error"
  kExitWrongModel = 5,          // "Model is not correct"
  kExitDataError = 6,           // "Data Error": a file is not what it must be, or cannot be read
  kExitCannotWrite = 7,         // a file, or standard output, could not be written
  kExitNotKept = 8,             // the radio did not keep what was written
  kExitImportedInPart = 9,      // imported or applied, but not all was understood, or is kept
  kExitNotAsKnown = 10,         // the radio holds something else than it was known to
  kExitInternal = 70,           // the program failed: out of memory
  kExitInterrupted = 130,       // by a signal
};

inline constexpr const char* kExitCodeHelp =
    "Exit codes:\n"
    "  0  done                            5    Model is not correct\n"
    "  1  diff or lint found something    6    Data Error: a file is wrong or unreadable\n"
    "  2  wrong usage                     7    a file or standard output takes no more\n"
    "  3  COM Port Error                  8    the radio did not keep what was written\n"
    "  4  Communication Error             9    imported or applied, but not all of it\n"
    "  10 the radio is not as it was known   70 internal error\n"
    "  130  interrupted\n";

}  // namespace q40
