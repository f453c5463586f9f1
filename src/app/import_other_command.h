// The command Import Other List: asks for a file, has its columns told, and fills channels of the document.
#pragma once

#include <string>

class QWidget;

namespace q40 {

class ListCommands;
class Prompts;
class Session;

struct ImportOtherParts {
  Session& session;
  Prompts& prompts;
  ListCommands& lists;      // which the import is told to
  std::string user_folder;  // in which mappings are kept
};

// One step of undo, or nothing. An edit as any other: the document keeps its file, and counts as
// changed.
void ImportOther(const ImportOtherParts& at, QWidget& window);

}  // namespace q40
