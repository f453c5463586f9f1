// What a user's edits do to the document, and which change flag each sets. Every step tells one
// listener, once, what has changed.
#pragma once

#include <functional>
#include <string>

#include "document/clone_document.h"

namespace q40 {

struct DocumentChange {
  enum class What : unsigned char { kMemory, kSpecial, kSetting, kDial };
  What what = What::kSetting;
  // Rows that show something else now: memory channels, or rows of the shown special set.
  int first = 0;
  int last = 0;
  // Whether it is an edit, and not only another view of the same data.
  bool is_edit = true;
};

// n: memory channel 0..209; k: row 0..4 of the shown special set.
class EditCommands {
 public:
  using Listener = std::function<void(const DocumentChange&)>;
  // The document must outlive it.
  EditCommands(CloneDocument& document, Listener listener)
      : document_(document), listener_(std::move(listener)) {}

  void InsertMemory(int n);
  void DeleteMemory(int n);
  void ClearMemory(int n);
  void ClearAllMemory();
  // The edit dialog's OK. The channel is in use, or present, from now on.
  void SetMemory(int n, const ChannelRecord& record);
  void SetSpecial(int k, const ChannelRecord& record);
  // Empties PH or PL.
  void ClearLimit(int k);
  void ChooseBand(Band band);

  void SetSetting(const Setting& setting, int value);
  // A box that no byte stands for.
  void TouchLooseBox();
  void SetDialText(int index, const std::string& text);

 private:
  void TellMemory(int first, int last);
  void TellSpecial(int k);

  CloneDocument& document_;
  Listener listener_;
};

}  // namespace q40
