#include "serial/serial_port.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <system_error>
#include <unistd.h>

#include <QCoreApplication>
#include <QSerialPort>
#include <QSerialPortInfo>
#include <QSocketNotifier>
#include <QTimer>

#include "serial/device_guard.h"
#include "serial/driver_latency.h"

namespace q40 {
namespace {

using Kind = PortProblem::Kind;

// Radio cables draw their power from DTR; RTS would key some of them.
constexpr bool kDataTerminalReady = true;
constexpr bool kRequestToSend = false;

// Where the system names each USB adapter by maker, product and serial number.
constexpr const char* kStableFolder = "/dev/serial/by-id";

constexpr std::chrono::milliseconds kHangUpCheck{500};
constexpr int kLastBytesMs = 200;  // for what is still on its way out when the port is closed

}  // namespace

// ---- the port

class SerialPort::Device {
 public:
  explicit Device(std::string name) : name_(std::move(name)) {
    watch_.setInterval(kHangUpCheck);
    QObject::connect(&watch_, &QTimer::timeout, [this] { CloseIfHungUp(); });
    // Qt reports a line that hung up again and again, without end. Closed on the first report, but
    // not inside it: it comes from the middle of Qt's reading.
    QObject::connect(
        &serial_, &QSerialPort::errorOccurred, &serial_,
        [this](QSerialPort::SerialPortError error) {
          const bool harmless = error == QSerialPort::NoError || error == QSerialPort::TimeoutError;
          if (!harmless && IsOpen()) Lost();
        },
        Qt::QueuedConnection);
  }
  ~Device() { Close(); }
  Device(const Device&) = delete;
  Device& operator=(const Device&) = delete;

  void SetName(std::string name) {
    Close();
    name_ = std::move(name);
  }
  [[nodiscard]] const std::string& name() const { return name_; }
  [[nodiscard]] const PortProblem& problem() const { return problem_; }
  [[nodiscard]] bool IsOpen() const { return serial_.isOpen(); }

  bool Open() {
    problem_ = {};
    if (auto problem = guard_.Take(name_)) return Fail(std::move(*problem));
    std::error_code error;
    const auto resolved = std::filesystem::canonical(name_, error);
    serial_.setPortName(QString::fromStdString(error ? name_ : resolved.string()));
    serial_.setBaudRate(kBaudRate);
    serial_.setDataBits(QSerialPort::Data8);
    serial_.setParity(QSerialPort::NoParity);
    serial_.setStopBits(QSerialPort::OneStop);
    serial_.setFlowControl(QSerialPort::NoFlowControl);
    serial_.setReadBufferSize(kInputBufferBytes);
    if (!serial_.open(QIODevice::ReadWrite)) return FailOpen();
    // A pseudo-terminal has no such lines. That does not matter, and no port is refused for it.
    serial_.setDataTerminalReady(kDataTerminalReady);
    serial_.setRequestToSend(kRequestToSend);
    DriverLatency driver(serial_.handle());
    latency_.Ask(driver);
    serial_.clearError();
    QCoreApplication::removePostedEvents(&serial_);  // the reports about all this
    watch_.start();
    return true;
  }

  void Close() {
    watch_.stop();
    if (serial_.isOpen()) {
      // close() throws away what is still in Qt's buffer.
      if (serial_.bytesToWrite() > 0) serial_.waitForBytesWritten(kLastBytesMs);
      Shut();
    }
    guard_.Release();
  }

  bool Write(std::string_view text) {
    if (!IsOpen() || CloseIfHungUp()) return false;
    const auto size = static_cast<qint64>(text.size());
    if (serial_.write(text.data(), size) != size ||
        !(serial_.flush() || serial_.bytesToWrite() == 0)) {
      return Lost();
    }
    return true;
  }

  std::optional<std::string> Read() {
    if (!IsOpen()) return std::nullopt;
    const QByteArray buffered = serial_.readAll();
    std::string text(buffered.constData(), static_cast<std::size_t>(buffered.size()));
    // Qt fills its buffer only when events are handled; what the system already has counts too.
    std::array<char, kInputBufferBytes> piece{};
    ssize_t got = 0;
    while (text.size() < kLongestRead &&
           (got = read(serial_.handle(), piece.data(), piece.size())) > 0) {
      text.append(piece.data(), static_cast<std::size_t>(got));
    }
    const bool nothing_more =
        got < 0 && (errno == EAGAIN || errno == EWOULDBLOCK || errno == EINTR);
    if (got < 0 && !nothing_more) {
      Lost();
      return std::nullopt;
    }
    if (got == 0 && text.empty() && CloseIfHungUp()) return std::nullopt;
    return text;
  }

 private:
  static constexpr std::size_t kLongestRead = 65536;

  bool Fail(PortProblem problem) {
    guard_.Release();
    problem_ = std::move(problem);
    return false;
  }

  // The guard could open it, so it exists, is permitted and free: only the lock file is left.
  bool FailOpen() {
    const std::string reason = serial_.errorString().toStdString();
    return Fail(serial_.error() == QSerialPort::PermissionError ? LockProblem(name_, reason)
                                                                : CannotOpen(name_, reason));
  }

  // Closes a port whose other end is gone.
  bool CloseIfHungUp() {
    if (!IsOpen() || !guard_.HungUp()) return false;
    Lost();
    return true;
  }

  void Shut() {
    if (serial_.isOpen()) {
      DriverLatency driver(serial_.handle());
      latency_.PutBack(driver);
    }
    serial_.close();
  }

  bool Lost() {
    problem_ = {Kind::kLost, name_ + " was disconnected",
                "Plug the cable in again and repeat the command."};
    watch_.stop();
    Shut();
    guard_.Release();
    return false;
  }

  std::string name_;
  PortProblem problem_;
  DeviceGuard guard_;
  QSerialPort serial_;
  LowLatency latency_;
  QTimer watch_;
};

SerialPort::SerialPort(std::string device) : device_(std::make_unique<Device>(std::move(device))) {}
SerialPort::~SerialPort() = default;
void SerialPort::SetDevice(std::string device) { device_->SetName(std::move(device)); }
const std::string& SerialPort::device() const { return device_->name(); }
bool SerialPort::Open() { return device_->IsOpen() || device_->Open(); }
bool SerialPort::IsOpen() const { return device_->IsOpen(); }
void SerialPort::Close() { device_->Close(); }
bool SerialPort::Write(std::string_view text) { return device_->Write(text); }
std::optional<std::string> SerialPort::ReadAvailable() { return device_->Read(); }
PortProblem SerialPort::Problem() const { return device_->problem(); }

// ---- the event loop

namespace {

class Timer final : public OneShotTimer {
 public:
  Timer(QObject* owner, const char* name) : timer_(new QTimer(owner)), owned_(owner == nullptr) {
    timer_->setObjectName(QLatin1String(name));
    timer_->setSingleShot(true);
    timer_->setTimerType(Qt::PreciseTimer);
  }
  ~Timer() override {
    if (owned_) delete timer_;
  }
  Timer(const Timer&) = delete;
  Timer& operator=(const Timer&) = delete;

  void Start(std::chrono::milliseconds interval) override {
    end_ = std::chrono::steady_clock::now() + interval;
    timer_->start(interval);
  }
  void Stop() override { timer_->stop(); }
  // By the clock too: a line that never stops reporting events may keep the timer's own from coming.
  [[nodiscard]] bool IsRunning() const override {
    return timer_->isActive() && std::chrono::steady_clock::now() < end_ + kTimerLatitude;
  }

 private:
  static constexpr std::chrono::milliseconds kTimerLatitude{100};

  QTimer* timer_;
  std::chrono::steady_clock::time_point end_;
  bool owned_;
};

volatile std::sig_atomic_t stop_requested = 0;
int wake_pipe[2] = {-1, -1};  // a byte in it wakes the loop from inside a signal handler

extern "C" void RequestStop(int /*signal*/) {
  const int saved = errno;
  stop_requested = 1;
  const ssize_t ignored = write(wake_pipe[1], "", 1);
  static_cast<void>(ignored);
  errno = saved;
}

}  // namespace

class EventLoop::Parts {
 public:
  explicit Parts(QObject* owner)
      : timer1_(owner, "Timer1"),
        timer2_(owner, "Timer2"),
        timer3_(owner, "Timer3"),
        deadline_(owner, "Deadline") {}

  Timer timer1_;
  Timer timer2_;
  Timer timer3_;
  Timer deadline_;
  std::unique_ptr<QSocketNotifier> wake_;
};

EventLoop::EventLoop(QObject* owner) : parts_(std::make_unique<Parts>(owner)) {}
EventLoop::~EventLoop() = default;

LinkTimers EventLoop::Timers() {
  return {parts_->timer1_, parts_->timer2_, parts_->timer3_, parts_->deadline_};
}

void EventLoop::WaitForEvents() { QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents); }

bool EventLoop::StopRequested() const { return stop_wanted_ || stop_requested != 0; }

void EventLoop::StopOnSignals() {
  if (pipe2(wake_pipe, O_CLOEXEC | O_NONBLOCK) != 0) return;
  parts_->wake_ = std::make_unique<QSocketNotifier>(wake_pipe[0], QSocketNotifier::Read);
  QSocketNotifier* wake = parts_->wake_.get();
  QObject::connect(wake, &QSocketNotifier::activated, [wake] { wake->setEnabled(false); });
  struct sigaction action {};
  action.sa_handler = RequestStop;
  action.sa_flags = static_cast<int>(SA_RESETHAND);  // the second one ends the program at once
  for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
    struct sigaction before {};
    // What the parent wants ignored (nohup) stays ignored.
    if (sigaction(number, nullptr, &before) == 0 && before.sa_handler == SIG_IGN) continue;
    sigaction(number, &action, nullptr);
  }
}

// ---- the rest

class CommandLineApplication::Application {
 public:
  int count_ = 1;
  std::string name_ = "rxq40ctl";
  char* names_[2] = {name_.data(), nullptr};
  QCoreApplication application_{count_, names_};
  QtMessageHandler messages_ = qInstallMessageHandler(
      [](QtMsgType /*type*/, const QMessageLogContext& /*context*/, const QString& /*text*/) {});
  ~Application() { qInstallMessageHandler(messages_); }
};

// Qt's own warnings would stand between the tool's messages, which say the same.
CommandLineApplication::CommandLineApplication() : application_(std::make_unique<Application>()) {}
CommandLineApplication::~CommandLineApplication() = default;

std::vector<PresentPort> PresentPorts() {
  std::vector<PresentPort> ports;
  for (const QSerialPortInfo& info : QSerialPortInfo::availablePorts()) {
    QStringList words;
    for (const QString& word : {info.description(), info.manufacturer()}) {
      if (!word.isEmpty()) words << word;
    }
    if (!info.serialNumber().isEmpty()) {
      words << QStringLiteral("serial number ") + info.serialNumber();
    }
    const std::string device = info.systemLocation().toStdString();
    ports.push_back({device, words.join(QStringLiteral(", ")).toStdString(),
                     StablePath(device, kStableFolder)});
  }
  return ports;
}

}  // namespace q40
