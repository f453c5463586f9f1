// Which page is in front: the tabs, the service page over them, and the way to a place of the document.
#pragma once

#include <array>
#include <vector>

#include <QObject>

#include "link/sequences.h"
#include "radio/models.h"

class QFrame;
class QTabWidget;

namespace q40 {

class ChannelGrid;
class MainPages;
struct Place;

class Navigation final : public QObject {
  Q_OBJECT

 public:
  // Lays the pages out in `window`; they must outlive it.
  Navigation(const MainPages& pages, QWidget& window);

  enum Tab : int { kSettings1Tab, kSettings2Tab, kMemoryTab };
  [[nodiscard]] QTabWidget& tabs() { return *tabs_; }
  [[nodiscard]] std::vector<QWidget*> Frames() const;
  // What the user looks at.
  [[nodiscard]] QWidget* Front() const;

  // Shows the page of a tab, also when it is the current one and the service page lies over it.
  void SwitchTab(int tab);
  void ShowService();
  // Lays the service page over the current one, which keeps its size.
  void PlaceService();
  // Brings the page to the front that shows what a sequence moves.
  void ShowPageOf(Sequence sequence);
  void GoTo(const Place& place);

 signals:
  // Another page is in front; whether it has channels that can be opened.
  void pageShown(bool has_channels);
  // A place lies in the band that is not shown.
  void bandWanted(q40::Band band);

 private:
  void GoToRow(Tab tab, ChannelGrid& grid, int row);
  void GoToControl(const QString& name);
  void ScrollTo(QWidget& control);

  const MainPages& pages_;
  QWidget& window_;
  QTabWidget* tabs_;
  std::array<QFrame*, 4> frames_{};
};

}  // namespace q40
