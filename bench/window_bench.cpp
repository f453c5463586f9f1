// One figure of the window a run, for bench.cpp, which starts it:
//   bench_window start NANOSECONDS   from that moment of the steady clock to the first painted window, ms
//   bench_window memory              resident memory after three idle seconds, KiB
//   bench_window frames              slowest tab switch or scroll step with its painting, ms
//   bench_window undo               slowest Undo or Redo of a step that changes everything, with its painting, ms
//   bench_window list                the same of the channel list with 210 channels: painting, scrolling
//   bench_window read                Read All from a radio at 9600 baud, seconds, and processor seconds
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <sys/resource.h>
#include <unistd.h>

#include <QAction>
#include <QApplication>
#include <QElapsedTimer>
#include <QEvent>
#include <QScrollBar>
#include <QTabWidget>
#include <QTableView>
#include <QTemporaryDir>
#include <QTimer>

#include "app/frm_main.h"
#include "document/channel_cells.h"
#include "document/defaults.h"
#include "files/clone_file.h"

namespace {

using Clock = std::chrono::steady_clock;

double Milliseconds(Clock::duration time) {
  return std::chrono::duration<double, std::milli>(time).count();
}

// Calls back when the window has been painted for the first time.
class FirstPaint : public QObject {
 public:
  explicit FirstPaint(std::function<void()> painted) : painted_(std::move(painted)) {}
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Paint && painted_) {
      watched->removeEventFilter(this);
      QTimer::singleShot(0, this, std::exchange(painted_, {}));  // behind the painting
    }
    return false;
  }

 private:
  std::function<void()> painted_;
};

long ResidentKib() {
  std::ifstream file("/proc/self/statm");
  long pages = 0;
  file >> pages >> pages;
  return pages * (sysconf(_SC_PAGESIZE) / 1024);
}

double ProcessorSeconds() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  const auto seconds = [](const timeval& t) {
    return static_cast<double>(t.tv_sec) + static_cast<double>(t.tv_usec) * 1e-6;
  };
  return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

double Frame(const std::function<void()>& step) {
  const auto start = Clock::now();
  step();
  QApplication::processEvents();  // layout and painting
  return Milliseconds(Clock::now() - start);
}

// A clone file with all channels in use.
std::string FullFile(const QTemporaryDir& folder) {
  q40::CloneData data = q40::FreshData();
  q40::ChangeModel(data, 1);
  for (std::size_t n = 0; n < q40::kMemoryChannelCount; ++n) {
    data.image.MemoryTable[n] = data.image.TemplateChannel();
    data.image.ChannelInUse[n] = true;
  }
  std::string path = folder.filePath(QStringLiteral("full.Q40")).toStdString();
  if (q40::SaveCloneFile(path, data, data.model)) std::exit(EXIT_FAILURE);
  return path;
}

// New has replaced a whole file.
double SlowestUndo(q40::frmMain& window) {
  window.findChild<QTabWidget*>(QStringLiteral("TabStrip1"))->setCurrentIndex(2);
  window.findChild<QAction*>(QStringLiteral("mnuFileNew"))->trigger();
  QApplication::processEvents();
  double slowest = 0;
  for (int round = 0; round < 20; ++round) {
    for (const char* entry : {"mnuUndo", "mnuRedo"}) {
      auto* action = window.findChild<QAction*>(QLatin1String(entry));
      if (!action->isEnabled()) std::exit(EXIT_FAILURE);
      slowest = std::max(slowest, Frame([&] { action->trigger(); }));
    }
  }
  return slowest;
}

double SlowestFrame(q40::frmMain& window) {
  double slowest = 0;
  const auto frame = [&](const std::function<void()>& step) {
    slowest = std::max(slowest, Frame(step));
  };
  auto* tabs = window.findChild<QTabWidget*>(QStringLiteral("TabStrip1"));
  auto* grid = window.findChild<QTableView*>(QStringLiteral("MSFlexGrid1"));
  for (int round = 0; round < 5; ++round) {
    for (const int tab : {1, 2, 0}) frame([&] { tabs->setCurrentIndex(tab); });
  }
  slowest = 0;  // the first showing of a page lays it out; from then on it counts
  for (int round = 0; round < 20; ++round) {
    for (const int tab : {1, 2, 0}) frame([&] { tabs->setCurrentIndex(tab); });
  }
  tabs->setCurrentIndex(2);
  QApplication::processEvents();
  for (int row = 0; row < 190; row += 3) frame([&] { grid->verticalScrollBar()->setValue(row); });
  return slowest;
}

double SlowestListFrame(q40::frmMain& window) {
  auto& document = const_cast<q40::CloneDocument&>(window.document());
  const auto fill = [&](const std::string& name) {
    q40::CloneImage image = document.image();
    for (int n = 0; n < q40::kMemoryChannelCount; ++n) {
      const q40::ChannelPlace place{q40::ChannelKind::kMemory, q40::Band::kVhf, n};
      q40::PutRecord(image, place, image.TemplateChannel());
      q40::SetCell(image, 0, place, q40::Field::kName, name + std::to_string(n));
      q40::SetCell(image, 0, place, q40::Field::kStep, "25");  // a mark in every row
    }
    document.StoreChannels(image);
  };
  fill("A");
  window.findChild<QAction*>(QStringLiteral("mnuChannelList"))->trigger();
  auto* list = window.findChild<QTableView*>(QStringLiteral("tblChannels"));
  list->window()->resize(1366, 768);
  QApplication::processEvents();
  double slowest = 0;
  const auto frame = [&](const std::function<void()>& step) {
    const auto start = Clock::now();
    step();
    QApplication::processEvents();
    slowest = std::max(slowest, Milliseconds(Clock::now() - start));
  };
  for (int row = 0; row < 180; row += 3) frame([&] { list->verticalScrollBar()->setValue(row); });
  for (int x = 0; x < 200; x += 20) frame([&] { list->horizontalScrollBar()->setValue(x); });
  frame([&] { list->viewport()->update(); });
  const_cast<q40::CloneDocument&>(window.document()).ForgetChanges();
  return slowest;
}

}  // namespace

int main(int argc, char** argv) {
  const std::string mode = argc > 1 ? argv[1] : "";
  const QApplication application(argc, argv);
  const QTemporaryDir folder;
  q40::MainOptions options;
  options.program_folder = folder.path().toStdString();
  options.user_folder = options.program_folder;
  options.simulation.on = true;
  if (mode != "start" && mode != "memory") options.start_pause = std::chrono::milliseconds(0);
  if (mode == "undo") options.startup_path = FullFile(folder);
  q40::frmMain window(options);

  FirstPaint paint([&] {
    if (mode != "start") return;
    const Clock::time_point start(std::chrono::nanoseconds(std::stoll(argv[2])));
    std::printf("%f\n", Milliseconds(Clock::now() - start));
    QApplication::exit();
  });
  window.installEventFilter(&paint);
  QObject::connect(&window, &q40::frmMain::ready, [&] {
    if (mode == "frames") {
      std::printf("%f\n", SlowestFrame(window));
      QApplication::exit();
    } else if (mode == "undo") {
      std::printf("%f\n", SlowestUndo(window));
      QApplication::exit();
    } else if (mode == "list") {
      std::printf("%f\n", SlowestListFrame(window));
      QApplication::exit();
    } else if (mode == "read") {
      const auto start = Clock::now();
      const double processor = ProcessorSeconds();
      window.findChild<QAction*>(QStringLiteral("mnuReAll"))->trigger();
      std::printf("%f %f\n", Milliseconds(Clock::now() - start) / 1000,
                  ProcessorSeconds() - processor);
      QApplication::exit();
    } else if (mode == "memory") {
      QTimer::singleShot(3000, [] {
        std::printf("%ld\n", ResidentKib());
        QApplication::exit();
      });
    }
  });
  window.StartUp();
  const int code = QApplication::exec();
  std::fflush(stdout);
  return code;
}
