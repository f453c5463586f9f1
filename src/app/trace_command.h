// A trace of the line in a file, from one choice of its menu entry to the next.
#pragma once

#include <memory>
#include <string>

#include <QObject>

#include "link/trace_file.h"

namespace q40 {

class Prompts;
class Session;

class TraceCommand final : public QObject {
  Q_OBJECT

 public:
  // Both must outlive it. A trace ends with it, too.
  TraceCommand(Session& session, Prompts& prompts, QObject* parent = nullptr);
  ~TraceCommand() override;

  // Asks for a file and starts, or closes the file of the trace that is being kept.
  void Toggle();

 signals:
  void keptChanged(bool kept);

 private:
  void Begin();
  void End();
  void EndIfBroken();

  Session& session_;
  Prompts& prompts_;
  std::string path_;
  std::unique_ptr<TraceFile> file_;
};

}  // namespace q40
