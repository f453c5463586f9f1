// Grabs what the real window on a simulated radio has to show, for the pictures of the documents.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include <QAbstractButton>
#include <QAction>
#include <QPalette>
#include <QTemporaryDir>

#include "app/frm_main.h"

namespace q40 {

inline constexpr int kSettleMs = 150;  // for repaints and for what a click sets off

// To standard error; a run with a complaint has failed.
void Complain(const QString& what);
int Failures();

QPalette DarkPalette();
QPalette ContrastPalette();

// Runs a command that shows a dialog; `use` works in the dialog, which is closed afterwards.
void InDialog(const std::function<void()>& command, const std::function<void(QWidget&)>& use);

// One window after the other, and the pictures that are taken of it: FOLDER/NAME SUFFIX.png.
class PhotoSession {
 public:
  PhotoSession(QString folder, QString suffix);
  ~PhotoSession();
  PhotoSession(const PhotoSession&) = delete;
  PhotoSession& operator=(const PhotoSession&) = delete;

  void Start(ComPort::Simulation simulation, const std::string& file);
  [[nodiscard]] std::string settings_folder() const { return settings_.path().toStdString(); }
  [[nodiscard]] std::string state_folder() const {
    return settings_.filePath("state").toStdString();
  }
  [[nodiscard]] frmMain& window() { return *window_; }
  template <class Widget>
  Widget& Find(const char* name) {
    auto* found = window_->findChild<Widget*>(QLatin1String(name));
    if (found == nullptr) qFatal("no %s", name);
    return *found;
  }
  void Trigger(const char* action) { Find<QAction>(action).trigger(); }
  void Click(const char* button) { Find<QAbstractButton>(button).click(); }
  void ShowPage(int page);
  void SelectRow(const char* grid, int row);

  // Of the window where no other is named.
  void Take(const char* name, QWidget* widget = nullptr);
  // As much of the window as a menu needs.
  void TakeTopLeft(const char* name, QSize size);
  void TakeDialog(const char* name, const std::function<void()>& command);
  void TakeMenu(const char* name, const QString& title);
  void Store(const char* name, const QImage& image);

  // Forgets the changes, so that closing asks nothing.
  void Stop();

 private:
  QString folder_;
  QString suffix_;
  QTemporaryDir settings_;
  std::unique_ptr<frmMain> window_;
};

}  // namespace q40
