// Standard input, output and error of a program, and the paths that name streams which are already
// open.
#pragma once

#include <cstdio>
#include <optional>
#include <string>

namespace q40 {

// A program may be started with some of them closed. The next file it opens would then get their
// number, and messages would be written into it. Opens those that are closed on the null device,
// the wrong way round: using one is an error, as with a closed one. Call it first in main.
void OpenStandardStreams();

// The file that a path stands for when it is a symbolic link, also one whose target does not exist
// yet; otherwise the path itself. The links in /proc name open streams, and are not followed.
std::string Resolved(const std::string& path);
// Whether a resolved path lies in /proc, by whatever way, as "/dev/fd/1" does: no file's name there
// can be given to another file.
bool IsInProc(const std::string& resolved);

enum class StreamUse : unsigned char { kRead, kWrite };

// Standard input or output, as commands name it.
inline constexpr const char* kStandardStream = "-";

// The number of the stream of this program that a path names: 0 for "/dev/stdin", 63 for
// "/dev/fd/63", 0 or 1 for "-". No value for any other path.
std::optional<int> StreamNumber(const std::string& path, StreamUse use);
// Whether a path is a pipe, by whatever name.
bool IsPipe(const std::string& path);

// A file of its own on an open stream, which stays open when the caller closes the file. Null, with
// the reason in errno, when the stream is not open for this use (EBADF).
std::FILE* OpenStream(int number, StreamUse use);

}  // namespace q40
