// rxq40card: a clone file on standard input, its channel card as a PDF on standard output. Started by
// rxq40ctl, which has looked at the file already, and puts its own name before what is said here.
#include <csignal>
#include <cstdio>
#include <exception>

#include <CLI/CLI.hpp>
#include <QGuiApplication>
#include <QHashFunctions>

#include "base/plain_text.h"
#include "card_paint/card_pdf.h"
#include "document/defaults.h"
#include "files/clone_file.h"
#include "files/standard_streams.h"
#include "files/whole_file.h"
#include "programs/exit_codes.h"
#include "programs/usage_error.h"
#include "version.h"

namespace q40 {
namespace {

int Complain(int code, const std::string& message) {
  std::fprintf(stderr, "%s\n", Printable(message).c_str());
  return code;
}

int Make(const std::string& name, const CardOptions& options) {
  CloneData document = FreshData();
  std::string text;
  if (const auto problem = ReadInput(kStandardStream, kLongestCloneFile, text)) {
    return Complain(kExitDataError, problem->Message());
  }
  if (const auto result = OpenCloneText(text, name, document); result.problem) {
    return Complain(kExitDataError, result.problem->Message());
  }
  const CardPages pages(MakeCard(document, name, options.special), options);
  if (!pages.IsReadable()) {
    return Complain(kExitCannotWrite,
                    "there is no font to write the card with. Install one, fonts-dejavu-core for "
                    "example.");
  }
  const auto pdf = CardPdf(pages, std::string("rxq40 ") + kVersion);
  if (!pdf) return Complain(kExitCannotWrite, "the card could not be painted");
  const bool taken = std::fwrite(pdf->data(), 1, pdf->size(), stdout) == pdf->size();
  if (std::fflush(stdout) == 0 && taken) return kExitDone;
  return Complain(kExitCannotWrite, "standard output takes no more");
}

int Run(int argc, char** argv) {
  CLI::App app(
      "Makes a channel card (PDF) of a clone file, from standard input to standard output.");
  std::string name;
  CardOptions options;
  bool letter = false;
  app.name("rxq40card");
  app.add_option("NAME", name, "what the card calls the file")->required();
  app.add_flag("--letter", letter, "for paper of that size, not A4");
  app.add_flag("--pocket", options.pocket, "for folding");
  app.add_flag("--special", options.special, "with the special channels");
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    if (error.get_exit_code() == 0) return app.exit(error);
    return Complain(kExitUsage, UsageError(app, error));
  }
  options.paper = letter ? CardPaper::kLetter : CardPaper::kA4;
  // Wherever it runs, there is no display to look for.
  qputenv("QT_QPA_PLATFORM", "offscreen");
  if (WantedTime()) {
    // The same bytes in every zone of time; and the toolkit writes fonts in the order of their hashes.
    qputenv("TZ", "UTC");
    QHashSeed::setDeterministicGlobalSeed();
  }
  int no_arguments = 1;
  const QGuiApplication application(no_arguments, argv);
  return Make(name, options);
}

}  // namespace
}  // namespace q40

int main(int argc, char** argv) {
  q40::OpenStandardStreams();
  std::signal(SIGPIPE, SIG_IGN);
  std::signal(SIGXFSZ, SIG_IGN);
  try {
    return q40::Run(argc, argv);
  } catch (const std::exception& error) {
    return q40::Complain(q40::kExitInternal, error.what());
  }
}
