#include "camera.h"

#include <cstdio>

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QMenuBar>
#include <QPainter>
#include <QTabWidget>
#include <QTableView>
#include <QTest>
#include <QTimer>

namespace q40 {
namespace {

constexpr int kTitleHeight = 24;
constexpr int kLongestWaitMs = 20'000;

int failures = 0;

// ---- the camera

// The window as a desktop shows it: with its title, and with the menus and tool tips that are open.
QImage Portrait(QWidget& window) {
  const double scale = window.devicePixelRatioF();
  QRect area = window.geometry();
  std::vector<QWidget*> shown = {&window};
  for (QWidget* widget : QApplication::topLevelWidgets()) {
    const bool floats = widget->windowType() == Qt::Popup || widget->windowType() == Qt::ToolTip;
    if (!floats || !widget->isVisible()) continue;
    shown.push_back(widget);
    area |= widget->geometry();
  }
  area.adjust(-1, -kTitleHeight, 1, 1);
  QImage image((QSizeF(area.size()) * scale).toSize(), QImage::Format_RGB32);
  image.setDevicePixelRatio(scale);
  image.fill(Qt::white);
  QPainter painter(&image);
  painter.translate(-area.topLeft());
  const QRect title(window.x(), window.y() - kTitleHeight, window.width(), kTitleHeight);
  painter.fillRect(title.adjusted(-1, 0, 1, window.height() + 1), QColor(72, 82, 94));
  painter.setPen(Qt::white);
  painter.drawText(title, Qt::AlignCenter, window.windowTitle());
  for (QWidget* widget : shown) painter.drawPixmap(widget->pos(), widget->grab());
  return image;
}

}  // namespace

void Complain(const QString& what) {
  std::fprintf(stderr, "screenshots: %s\n", qPrintable(what));
  ++failures;
}

int Failures() { return failures; }

// ---- looks

QPalette DarkPalette() {
  QPalette palette(QColor(53, 53, 53));
  palette.setColor(QPalette::Base, QColor(35, 35, 35));
  palette.setColor(QPalette::AlternateBase, QColor(45, 45, 45));
  palette.setColor(QPalette::Highlight, QColor(42, 130, 218));
  palette.setColor(QPalette::HighlightedText, Qt::white);
  palette.setColor(QPalette::ToolTipBase, QColor(35, 35, 35));
  palette.setColor(QPalette::ToolTipText, Qt::white);
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
    palette.setColor(role, Qt::white);
    palette.setColor(QPalette::Disabled, role, QColor(127, 127, 127));
  }
  return palette;
}

QPalette ContrastPalette() {
  QPalette palette(Qt::black);
  palette.setColor(QPalette::Base, Qt::black);
  palette.setColor(QPalette::Light, Qt::white);
  palette.setColor(QPalette::Dark, Qt::white);
  palette.setColor(QPalette::Mid, Qt::white);
  palette.setColor(QPalette::Highlight, Qt::yellow);
  palette.setColor(QPalette::HighlightedText, Qt::black);
  palette.setColor(QPalette::ToolTipBase, Qt::black);
  palette.setColor(QPalette::ToolTipText, Qt::yellow);
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
    palette.setColor(role, Qt::white);
    palette.setColor(QPalette::Disabled, role, QColor(0, 255, 0));
  }
  return palette;
}

// ---- a session

void InDialog(const std::function<void()>& command, const std::function<void(QWidget&)>& use) {
  bool seen = false;
  QTimer watch;
  QObject::connect(&watch, &QTimer::timeout, [&] {
    QWidget* dialog = QApplication::activeModalWidget();
    if (dialog == nullptr || !dialog->isVisible()) return;
    watch.stop();
    seen = true;
    dialog->activateWindow();
    QTest::qWait(kSettleMs);
    use(*dialog);
    dialog->close();
  });
  watch.start(kSettleMs);
  command();
  // A command that was started by a timer or a key may still be on its way.
  if (!QTest::qWaitFor([&] { return seen; }, kLongestWaitMs)) Complain("a dialog did not come");
}

PhotoSession::PhotoSession(QString folder, QString suffix)
    : folder_(std::move(folder)), suffix_(std::move(suffix)) {}

PhotoSession::~PhotoSession() = default;

void PhotoSession::Start(ComPort::Simulation simulation, const std::string& file) {
  MainOptions options;
  options.simulation = std::move(simulation);
  options.startup_path = file;
  options.start_pause = std::chrono::milliseconds(0);
  options.program_folder = settings_.path().toStdString();
  options.user_folder = options.program_folder;
  options.backup_folder = options.program_folder + "/backups";
  options.state_folder = state_folder();
  window_ = std::make_unique<frmMain>(options);
  window_->StartUp();
  window_->activateWindow();
  QTest::qWait(kSettleMs);
}

void PhotoSession::ShowPage(int page) {
  Find<QTabWidget>("TabStrip1").setCurrentIndex(page);
  QTest::qWait(kSettleMs);
}

void PhotoSession::SelectRow(const char* grid, int row) {
  auto& view = Find<QTableView>(grid);
  view.setFocus();
  view.setCurrentIndex(view.model()->index(row, 0));
  view.selectRow(row);
}

void PhotoSession::Take(const char* name, QWidget* widget) {
  if (widget == nullptr) widget = window_.get();
  QTest::qWait(kSettleMs);
  Store(name, Portrait(*widget));
}

void PhotoSession::TakeTopLeft(const char* name, QSize size) {
  QTest::qWait(kSettleMs);
  const QImage image = Portrait(*window_);
  Store(name, image.copy(QRect(QPoint(0, 0), size * image.devicePixelRatio())));
}

void PhotoSession::Store(const char* name, const QImage& image) {
  const QString path = folder_ + QLatin1Char('/') + QLatin1String(name) + suffix_ + ".png";
  if (!image.save(path)) Complain("cannot write " + path);
}

void PhotoSession::TakeDialog(const char* name, const std::function<void()>& command) {
  InDialog(command, [&](QWidget& dialog) { Take(name, &dialog); });
}

void PhotoSession::TakeMenu(const char* name, const QString& title) {
  for (QAction* entry : window_->menuBar()->actions()) {
    if (entry->text().remove(QLatin1Char('&')) != title) continue;
    QMenu* menu = entry->menu();
    const QPoint place = window_->menuBar()->actionGeometry(entry).bottomLeft();
    window_->menuBar()->setActiveAction(entry);
    menu->popup(window_->menuBar()->mapToGlobal(place));
    TakeTopLeft(name, QSize(menu->geometry().right() - window_->x() + kTitleHeight,
                            menu->geometry().bottom() - window_->y() + 2 * kTitleHeight));
    menu->close();
    return;
  }
  Complain("no menu " + title);
}

void PhotoSession::Stop() {
  const_cast<CloneDocument&>(window_->document()).ForgetChanges();
  window_->close();
  window_.reset();
}

}  // namespace q40
