// A radio for the sequences: it answers properly and keeps what is written to it, except where a test
// says otherwise.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "support/fake_host.h"
#include "support/fake_link.h"

namespace q40::test {

class Radio : public ScriptedLink {
 public:
  std::string identity = "RXQ40x0A.";
  std::map<std::string, std::string> data;     // by address; zeros otherwise
  std::map<std::string, std::string> answers;  // whole ones by address, instead of the proper one
  std::string deaf_to;  // an address whose writes it acknowledges, and does not keep
  CloneDocument document;
  CloneData& held = DataOf(document);  // what is in it
  FakeHost host{document};
  Sequences sequences{link, document, host, &host};

  Radio() {
    port.reply = [this](const std::string& sent) -> ScriptedPort::Reply {
      return {{sent}, {AnswerTo(sent), milliseconds(3)}};
    };
  }

  std::vector<std::string> Sent() const {
    std::vector<std::string> all;
    for (const auto& sent : port.sent) all.push_back(sent.bytes);
    return all;
  }
  // Pauses between an answer and the next command.
  std::vector<long> Pauses() const {
    std::vector<long> pauses;
    for (std::size_t i = 1; i < port.sent.size(); ++i)
      pauses.push_back(port.sent[i].at_ms - port.sent[i - 1].at_ms - 3);
    return pauses;
  }

 private:
  std::string AnswerTo(const std::string& sent) {
    if (sent == "KX~WHO\r\n") return identity + "\r\n";
    if (!sent.starts_with("KX~F")) return "OK\r\n";
    const std::string address = sent.substr(4, 4);
    if (const auto own = answers.find(address); own != answers.end()) return own->second;
    if (sent[8] == 'W') {
      if (address != deaf_to) data[address] = sent.substr(9, kUnitDigits);
      return "OK\r\n";
    }
    const auto found = data.find(address);
    return (found != data.end() ? found->second : std::string(64, '0')) + "\r\n";
  }
};

}  // namespace q40::test
