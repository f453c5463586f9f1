// What the program works on: the document, the file it came from, the port to the radio, and whether
// the radio is being talked to. Knows no widget.
#pragma once

#include <string>

#include <QObject>

#include "app/com_port.h"
#include "app/radio_texts.h"
#include "app/unfinished_work.h"
#include "document/clone_document.h"
#include "document/radio_content.h"
#include "files/port_number_file.h"
#include "link/link.h"
#include "serial/serial_port.h"

namespace q40 {

struct MainOptions;

class Session final : public QObject, private DocumentListener {
  Q_OBJECT

 public:
  // kTalking: a sequence or a service read is running.
  enum class Busy : unsigned char { kNo, kStarting, kTalking };

  Session(const MainOptions& options, QObject* parent);

  [[nodiscard]] CloneDocument& document() { return document_; }
  [[nodiscard]] const CloneDocument& document() const { return document_; }
  // Of the clone file last opened or saved; empty when the data has none.
  [[nodiscard]] const std::string& path() const { return path_; }
  void SetPath(const std::string& path);
  // All of the document is in that file now.
  void SetSaved(const std::string& path);

  [[nodiscard]] Busy busy() const { return busy_; }
  [[nodiscard]] bool IsBusy() const { return busy_ != Busy::kNo; }
  void SetBusy(Busy busy);

  [[nodiscard]] ComPort& port() { return *port_; }
  [[nodiscard]] Link& link() { return link_; }
  // Where the next start finds it.
  void KeepPortNumber() { port_file_.Write(port_->number()); }

  // How much of the document a read that broke off has brought.
  [[nodiscard]] PartialRead& part() { return part_; }

  // What the radio is known to hold: what was read from it or written to it in this run.
  [[nodiscard]] RadioContent& radio() { return radio_; }
  [[nodiscard]] UnfinishedWork& unfinished() { return unfinished_; }

  // Whatever talks to the radio ends before its next exchange. Nothing while nothing talks.
  void Stop();
  [[nodiscard]] bool StopRequested() const { return events_.StopRequested(); }

  // Asks whoever holds back an edit to hand it over; called before the document is saved, sent or
  // checked.
  void Settle() { emit settling(); }
  // Commands tell what they have done to the document.
  void TellReplaced();  // all of the document is another one
  void TellNewData() { emit newData(); }
  void TellFacts() { emit factsChanged(); }

 signals:
  void changed(const q40::DocumentChange& change);  // the document, by whomever
  void pathChanged();
  void saved();  // under path()
  void busyChanged();
  void settling();
  void replaced();
  void newData();       // what was found out about the previous data no longer holds
  void factsChanged();  // what the status bar tells of document and port

 private:
  void DocumentChanged(const DocumentChange& change) override { emit changed(change); }

  CloneDocument document_;
  std::string path_;
  PortNumberFile port_file_;
  ComPort* port_;
  EventLoop events_;
  Link link_;
  Busy busy_ = Busy::kNo;
  PartialRead part_;
  RadioContent radio_;
  UnfinishedWork unfinished_;
};

}  // namespace q40
