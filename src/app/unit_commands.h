// The writes that send single units: what has changed, the rest of a write that broke off, and what a
// backup holds. All of them are compared before or after, digit by digit.
#pragma once

#include <string>

#include <QObject>

#include "document/radio_content.h"

namespace q40 {

class Prompts;
class RadioCommands;
class Session;

class UnitCommands final : public QObject {
  Q_OBJECT

 public:
  // All three must outlive it.
  UnitCommands(Session& session, Prompts& prompts, RadioCommands& radio, QObject* parent = nullptr);

  // Writes the units that differ between what the radio is known to hold and the document, when the
  // radio still holds them as they are known. With nothing known the user is asked what to do.
  void WriteChanges();
  // Goes on with the write that has not ended. There must be one.
  void WriteRest();
  // Lets it go, after a question.
  void ForgetRest();
  // Writes all that a backup holds into the radio, after a question.
  void Restore(const std::string& path);

  // After the start: tells of a write that an earlier run has not ended.
  void FindRest();

 signals:
  // Worth a window of its own.
  void told(const QString& text, const QStringList& differences);

 private:
  [[nodiscard]] bool MayCompare();
  void Swap(int model, const std::vector<UnitSwap>& swaps, const QString& aside);

  Session& session_;
  Prompts& prompts_;
  RadioCommands& radio_;
};

}  // namespace q40
