// What commands ask their user and tell them. The window answers with boxes, file dialogs and its
// status bar; a test answers by itself.
#pragma once

#include <string>

#include <QString>

#include "base/file_problem.h"

namespace q40 {

class Prompts {
 public:
  enum class Answer : unsigned char { kYes, kNo, kCancel };
  enum class FileDialog : unsigned char {
    kOpen,
    kSaveAs,
    kImport,
    kExport,
    kCompare,
    kTrace,
    kCard,
    kImportOther,
  };

  Prompts() = default;
  virtual ~Prompts() = default;
  Prompts(const Prompts&) = delete;
  Prompts& operator=(const Prompts&) = delete;

  // "Save changes to settings?"
  virtual Answer AskToSave() = 0;
  // The path of a file to read, or to write with all that goes with it: the suffix, and the question
  // whether a file that exists may be replaced. Empty: cancelled. `path` of the present file and the
  // model of its data make the name that is offered.
  virtual std::string AskPath(FileDialog kind, const std::string& path, int model) = 0;

  // What to do when changes are to be written and `why`, in sentences, nothing is known of the radio.
  enum class Instead : unsigned char { kNothing, kBackUp, kWriteAll };
  virtual Instead AskInstead(const QString& why) = 0;
  // OK or Cancel before something is destroyed.
  virtual bool Confirm(const char* title, const QString& text) = 0;

  // A box with the title "ERROR".
  virtual void ShowError(const QString& text) = 0;
  // A box about a recent file that is gone.
  virtual void ShowGone(const QString& text) = 0;
  // What came of a command that has succeeded, and of one that has not.
  virtual void Note(const QString& text) = 0;
  virtual void NoteFailure(const QString& text) = 0;

  // A file that could not be read or written: why, then the box with its few words.
  void DataError(const FileProblem& problem);
};

// Not when somebody's rights hide it.
[[nodiscard]] bool IsGone(const std::string& path);

}  // namespace q40
