// rxq40: the window.
#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QFile>
#include <QIcon>
#include <QStandardPaths>

#include "app/end_signals.h"
#include "app/frm_main.h"
#include "app/journal_keeper.h"
#include "base/plain_text.h"
#include "files/standard_streams.h"
#include "programs/nearest.h"
#include "programs/startup_path.h"
#include "version.h"
#include "widgets/readable_style.h"

namespace {

// `--help` and `--version` must work without a display, so they are answered before Qt looks for
// one.
QCommandLineParser& Parser() {
  static QCommandLineParser parser;
  static const bool made = [] {
    parser.setApplicationDescription(
        QStringLiteral("Clone utility of the Korvex RX-Q40 radios.\n"
                       "Example: rxq40 --simulate radio.Q40"));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addOption(
        {QStringLiteral("simulate"), QStringLiteral("put a simulated radio behind every port")});
    parser.addPositionalArgument(QStringLiteral("FILE"), QStringLiteral("clone file to open"),
                                 QStringLiteral("[FILE]"));
    return true;
  }();
  static_cast<void>(made);
  return parser;
}

int AnswerWithoutWindow(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  Parser().process(application);  // prints and exits
  return 0;
}

bool WantsNoWindow(int argc, char** argv) {
  for (int i = 1; i < argc; ++i) {
    const std::string_view word = argv[i];
    if (word == "--help" || word == "--help-all" || word == "-h" || word == "--version" ||
        word == "-v")
      return true;
  }
  return false;
}

// The bytes of an argument, of which the parser knows the text only.
std::string Argument(char** argv, const QString& text) {
  while (*argv != nullptr && QString::fromLocal8Bit(*argv) != text) ++argv;
  return *argv != nullptr ? *argv : text.toStdString();
}

// A folder of the user's, with the bytes of the environment that it comes from.
std::string Folder(QStandardPaths::StandardLocation location, const char* variable) {
  const QString folder = QStandardPaths::writableLocation(location);
  for (const char* name : {variable, "HOME"}) {
    const QByteArray start = qgetenv(name);
    const QString text = QFile::decodeName(start);
    if (start.isEmpty() || !folder.startsWith(text)) continue;
    return (start + QFile::encodeName(folder.mid(text.size()))).toStdString();
  }
  return folder.toStdString();
}

// The toolkit knows no such place.
std::string StateFolder() {
  const QByteArray state = qgetenv("XDG_STATE_HOME");
  if (state.startsWith('/')) return state.toStdString() + "/rxq40";
  const QByteArray home = qgetenv("HOME");
  return (home.isEmpty() ? QFile::encodeName(QDir::homePath()) : home).toStdString() +
         "/.local/state/rxq40";
}

// The command line without the toolkit's own options, which begin with one hyphen or two.
QStringList OwnWords(int argc, char** argv) {
  constexpr std::string_view kFlags[] = {"reverse", "testability", "widgetcount", "nograb",
                                         "dograb",  "qdevel",      "qdebug"};
  constexpr std::string_view kWithValue[] = {"display",
                                             "geometry",
                                             "icon",
                                             "name",
                                             "platform",
                                             "plugin",
                                             "platformpluginpath",
                                             "platformtheme",
                                             "qmljsdebugger",
                                             "qwindowicon",
                                             "qwindowgeometry",
                                             "qwindowtitle",
                                             "session",
                                             "style",
                                             "stylesheet",
                                             "title",
                                             "visual"};
  const auto among = [](const auto& names, std::string_view name) {
    return std::find(std::begin(names), std::end(names), name) != std::end(names);
  };
  QStringList words;
  for (int i = 0; i < argc; ++i) {
    const std::string_view word = argv[i];
    const auto hyphens = std::min<std::size_t>(word.find_first_not_of('-'), 2);
    const std::string_view name = word.substr(std::min(hyphens, word.size()));
    const std::string_view before_value = name.substr(0, name.find('='));
    if (hyphens > 0 && (among(kFlags, name) || among(kWithValue, before_value))) {
      if (among(kWithValue, name)) ++i;
    } else {
      words.append(QString::fromLocal8Bit(argv[i]));
    }
  }
  return words;
}

// Whether the command line can be understood; if not, the reason has been printed. Without a
// display the toolkit ends a program before it looks at the program's own options.
bool ParseOrComplain(int argc, char** argv) {
  QCommandLineParser& parser = Parser();
  if (parser.parse(OwnWords(argc, argv))) return true;
  std::string what = parser.errorText().toStdString();
  std::string advice = "See rxq40 --help.";
  if (const QStringList unknown = parser.unknownOptionNames(); !unknown.isEmpty()) {
    const std::string name = unknown.front().toStdString();
    const std::string word = (name.size() > 1 ? "--" : "-") + name;
    what = "there is no option " + q40::Quoted(word) + '.';
    const auto nearest = q40::Nearest(word, {"--simulate", "--help", "--help-all", "--version"});
    if (nearest) advice = "Did you mean " + *nearest + '?';
  }
  std::fprintf(stderr, "rxq40: %s %s\n", q40::Printable(what).c_str(), advice.c_str());
  return false;
}

q40::MainOptions Options(const QCommandLineParser& parser, char** argv) {
  q40::MainOptions options;
  options.simulation.on = parser.isSet(QStringLiteral("simulate"));
  const QStringList files = parser.positionalArguments();
  if (!files.isEmpty()) {
    options.startup_path = q40::StartupPath(q40::RawCommandLine(Argument(argv, files.front())));
  }
  options.program_folder = QCoreApplication::applicationDirPath().toStdString();
  options.user_folder = Folder(QStandardPaths::AppConfigLocation, "XDG_CONFIG_HOME");
  options.backup_folder = Folder(QStandardPaths::AppDataLocation, "XDG_DATA_HOME") + "/backups";
  options.state_folder = StateFolder();
  return options;
}

// With its sizes, so that no file is read before one is needed.
QIcon ProgramIcon() {
  QIcon icon;
  for (const int size : {16, 24, 32, 48, 64, 128}) {
    icon.addFile(QStringLiteral(":/icon/%1.png").arg(size), QSize(size, size));
  }
  return icon;
}

}  // namespace

int main(int argc, char** argv) {
  q40::OpenStandardStreams();
  std::signal(SIGXFSZ, SIG_IGN);  // a full quota is an error of a write, not the end of the program
  QCoreApplication::setApplicationName(QStringLiteral("rxq40"));
  QCoreApplication::setApplicationVersion(QLatin1String(q40::kVersion));
  if (WantsNoWindow(argc, argv)) return AnswerWithoutWindow(argc, argv);
  if (!ParseOrComplain(argc, argv)) return EXIT_FAILURE;

  QApplication application(argc, argv);
  // The name of the desktop entry: a desktop finds the window's program and its icon by it.
  QGuiApplication::setDesktopFileName(QStringLiteral("rxq40"));
  QGuiApplication::setWindowIcon(ProgramIcon());
  Parser().process(application);
  QApplication::setStyle(new q40::ReadableStyle);
  q40::frmMain window(Options(Parser(), argv));
  const q40::EndSignals ending;
  QObject::connect(&ending, &q40::EndSignals::endRequested, window.findChild<q40::JournalKeeper*>(),
                   &q40::JournalKeeper::End);
  window.StartUp();
  return QApplication::exec();
}
