// The channel card: asked about, saved as a PDF, printed.
#pragma once

class QWidget;

namespace q40 {

class CardPages;
class Prompts;
class Session;

class CardCommand {
 public:
  // All must outlive it.
  CardCommand(Session& session, Prompts& prompts, QWidget& owner)
      : session_(session), prompts_(prompts), owner_(owner) {}

  // Until the card is where it should be, or the user has enough of it.
  void Run();

 private:
  // False: cancelled, or failed.
  bool Save(const CardPages& pages);
  bool Print(const CardPages& pages);
  bool Failed(const char* what);

  Session& session_;
  Prompts& prompts_;
  QWidget& owner_;
};

}  // namespace q40
