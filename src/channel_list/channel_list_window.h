// The channel list: all channels of the document in two tables, edited in place, beside the main window.
#pragma once

#include <QMainWindow>

#include "channel_list/channel_table.h"
#include "channel_list/list_marks.h"

class QCheckBox;
class QLabel;
class QLineEdit;
class QMenu;
class QSplitter;

namespace q40 {

class RowCommands;
struct ImportReport;

class ChannelListWindow final : public QMainWindow {
  Q_OBJECT

 public:
  // The document must outlive the window.
  ChannelListWindow(CloneDocument& document, QWidget* owner);

  ~ChannelListWindow() override;

  // The document has changed, by whomever.
  void Show(const DocumentChange& change);
  // While locked nothing can be edited: the radio is being talked to.
  void SetLocked(bool locked);
  // Hands over what is being typed.
  void Settle();
  // Actions of the main window that are to be had here too: Undo, Redo.
  void Share(const QList<QAction*>& actions);

  // Columns, sizes and check marks, to be kept between runs. What is no state restores nothing.
  [[nodiscard]] QByteArray State() const;
  void Restore(const QByteArray& state);

 signals:
  // A paste that has not understood everything.
  void noted(const QString& account, const q40::ImportReport& report,
             const q40::CloneImage& before);
  void hidden();

 protected:
  void hideEvent(QHideEvent* event) override;

 private:
  void LayOut();
  void MakeMenus();
  void MakeViewMenu();
  void MakeFind();
  QAction* AddAction(QMenu& menu, const char* name, const QString& caption, const QString& keys,
                     std::function<void()> run);
  void FillColumns(QMenu& menu);
  [[nodiscard]] ChannelTable& Active() const;
  void Narrow(const QString& text);
  void FindNext(bool backward);
  void ShowAll();
  void NextPart(bool backward);
  void Say(const QString& text);
  void ShowCell();

  CloneDocument& document_;
  ListMarks marks_;
  ChannelTable* memory_;
  ChannelTable* special_;
  RowCommands* commands_;
  QLineEdit* find_;
  QCheckBox* hide_empty_;
  QLabel* status_;
  QSplitter* parts_;
  QMenu* edit_menu_ = nullptr;
  std::vector<QAction*> memory_only_;
  bool locked_ = false;
};

}  // namespace q40
