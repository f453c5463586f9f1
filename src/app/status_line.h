// The status bar: what is going on, what came of it, and the standing facts at its right end.
//
// A text stays for as long as it is news:
//   Doing    while something is being done; then the previous account comes back
//   Hint     for a moment, over what is being done
//   Result   until the next action
//   Failure  until a command succeeds
// The hint of a menu entry lies over the text only while the entry is highlighted. What does not fit
// is cut with dots; the tool tip shows the whole text and the context menu copies it.
#pragma once

#include <QStatusBar>

class QLabel;
class QProgressBar;
class QPushButton;
class QTimer;

namespace q40 {

class StatusLine final : public QStatusBar {
  Q_OBJECT

 public:
  explicit StatusLine(QWidget* parent);

  void Doing(const QString& text);
  void Idle();
  void Hint(const QString& text);
  void Result(const QString& text);
  void Failure(const QString& text);
  // The user does something else: a result has been seen.
  void Action();
  // The account that stands there, or comes back when nothing is being done.
  [[nodiscard]] const QString& account() const { return account_; }

  struct Facts {
    QString model;
    QString port;
    QString data;
    QString about_data;  // tool tip of the last one
  };
  void ShowFacts(const Facts& facts);
  [[nodiscard]] QString port() const;

  // A button that ends what is going on.
  void ShowStop(bool shown);

  // A bar for work that the page in front does not show. A total of 0 takes it away.
  void ShowWork(int done, int total);

 signals:
  void stopWanted();

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  enum class Kind : unsigned char { kResult, kFailure };
  void SetAccount(const QString& text, Kind kind);
  void ShowText();
  void MakeRoom();

  QLabel* text_;
  QProgressBar* work_;
  QPushButton* stop_;
  QLabel* model_;
  QLabel* port_;
  QLabel* data_;
  QTimer* hint_ends_;
  QString account_;
  Kind kind_ = Kind::kResult;
  QString doing_;
  QString hint_;
};

}  // namespace q40
