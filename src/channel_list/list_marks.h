// What the check-up says of the cells of the list: what the radio will not keep, or can hardly do.
#pragma once

#include <map>
#include <tuple>

#include <QString>

#include "document/channel_cells.h"
#include "document/clone_document.h"

namespace q40 {

class ListMarks {
 public:
  // The document must outlive it.
  explicit ListMarks(const CloneDocument& document) : document_(document) {}

  // The document has changed. What is said is made anew when somebody asks for it.
  void Forget() { known_ = false; }
  // The check-up's words for a cell, a line each; mostly empty.
  [[nodiscard]] QString At(const ChannelPlace& place, Field field);

 private:
  using Key = std::tuple<ChannelKind, Band, int, std::string>;  // with the field's name
  void Look();

  const CloneDocument& document_;
  bool known_ = false;
  std::map<Key, QString> words_;
};

}  // namespace q40
