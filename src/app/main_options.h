// What the window is started with.
#pragma once

#include <chrono>
#include <string>

#include "app/com_port.h"

namespace q40 {

struct MainOptions {
  ComPort::Simulation simulation;
  std::string startup_path;    // clone file to open; may be empty
  std::string program_folder;  // of the file with the port number
  std::string user_folder;     // in its place when the program's folder cannot be written
  std::string backup_folder;   // of the backups before writing; made when it is needed
  std::string state_folder;    // of unsaved work; made when it is needed; empty: none is kept
  std::chrono::milliseconds start_pause{2000};
};

}  // namespace q40
