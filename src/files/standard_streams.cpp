#include "files/standard_streams.h"

#include <initializer_list>

#ifndef _WIN32
#include <fcntl.h>
#include <unistd.h>
#endif

namespace q40 {

void OpenStandardStreams() {
#ifndef _WIN32
  for (const int handle : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    // open() takes the lowest free number, and every lower one is open already.
    if (fcntl(handle, F_GETFD) < 0) open("/dev/null", O_RDWR);
  }
#endif
}

}  // namespace q40
