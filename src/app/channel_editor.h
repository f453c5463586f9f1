// Opens the edit dialog on a channel and hands over what it makes of it.
#pragma once

class QWidget;

namespace q40 {

class CloneDocument;
class dlgModify;
class MainPages;

class ChannelEditor {
 public:
  // The dialog belongs to `window`. The others must outlive the editor.
  ChannelEditor(const MainPages& pages, CloneDocument& document, QWidget& window);

  void OpenMemory(int n);
  void OpenSpecial(int k);
  // The current row of the page behind a tab, if it has channels.
  void OpenCurrent(int tab);

 private:
  const MainPages& pages_;
  CloneDocument& document_;
  dlgModify* dialog_;
};

}  // namespace q40
