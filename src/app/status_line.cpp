#include "app/status_line.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QLabel>
#include <QPainter>
#include <QProgressBar>
#include <QPushButton>
#include <QStyle>
#include <QTimer>

namespace q40 {
namespace {

constexpr std::chrono::milliseconds kHintStays{2000};
constexpr int kWorkWidth = 120;
constexpr int kAroundALine = 6;

// Draws as much of its text as it has room for, and asks for no room itself.
class ElidedLabel final : public QLabel {
 public:
  using QLabel::QLabel;
  [[nodiscard]] QSize minimumSizeHint() const override { return {0, QLabel::sizeHint().height()}; }
  [[nodiscard]] QSize sizeHint() const override { return minimumSizeHint(); }

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    QPainter painter(this);
    const QString shown = fontMetrics().elidedText(text(), Qt::ElideRight, width());
    style()->drawItemText(&painter, rect(), Qt::AlignLeft | Qt::AlignVCenter, palette(),
                          isEnabled(), shown, foregroundRole());
  }
};

// Names of files may hold anything; a line end would hide what comes after it.
QString OneLine(QString text) {
  for (QChar& character : text) {
    if (character.isSpace()) character = QLatin1Char(' ');
    if (character.category() == QChar::Other_Control) character = QChar::ReplacementCharacter;
  }
  return text;
}

// Only a rich text is wrapped.
QString Wrapped(const QString& text) {
  return text.isEmpty() ? text : QStringLiteral("<qt>%1</qt>").arg(text.toHtmlEscaped());
}

}  // namespace

StatusLine::StatusLine(QWidget* parent)
    : QStatusBar(parent),
      text_(new ElidedLabel(this)),
      work_(new QProgressBar(this)),
      stop_(new QPushButton(tr("Stop"), this)),
      hint_ends_(new QTimer(this)) {
  setObjectName(QStringLiteral("sbStatusBar"));
  text_->setObjectName(QStringLiteral("lblStatusText"));
  text_->setTextFormat(Qt::PlainText);
  addWidget(text_, 1);
  work_->setObjectName(QStringLiteral("prgStatus"));
  work_->setAccessibleName(tr("Progress"));
  work_->setFixedWidth(kWorkWidth);
  work_->setMaximumHeight(fontMetrics().height());
  addPermanentWidget(work_);
  work_->hide();
  stop_->setObjectName(QStringLiteral("cmdStop"));
  stop_->setToolTip(tr("Esc"));
  stop_->setFocusPolicy(Qt::TabFocus);  // a click leaves the keyboard where it is
  stop_->setMaximumHeight(work_->maximumHeight() + kAroundALine);
  addPermanentWidget(stop_);
  stop_->hide();
  connect(stop_, &QPushButton::clicked, this, &StatusLine::stopWanted);
  const auto label = [this](const char* name) {
    auto* made = new QLabel(this);
    made->setObjectName(QLatin1String(name));
    made->setTextFormat(Qt::PlainText);
    addPermanentWidget(made);
    return made;
  };
  model_ = label("lblStatusModel");
  port_ = label("lblStatusPort");
  data_ = label("lblStatusFile");

  auto* copy = new QAction(tr("&Copy Message"), this);
  copy->setObjectName(QStringLiteral("mnuCopyStatus"));
  addAction(copy);
  setContextMenuPolicy(Qt::ActionsContextMenu);
  connect(copy, &QAction::triggered,
          [this] { QGuiApplication::clipboard()->setText(text_->text()); });
  connect(this, &QStatusBar::messageChanged, this, &StatusLine::MakeRoom);
  hint_ends_->setSingleShot(true);
  connect(hint_ends_, &QTimer::timeout, this, [this] {
    hint_.clear();
    ShowText();
  });
}

void StatusLine::Doing(const QString& text) {
  doing_ = text;
  ShowText();
}

void StatusLine::Idle() {
  doing_.clear();
  hint_.clear();
  ShowText();
}

void StatusLine::Hint(const QString& text) {
  hint_ = text;
  hint_ends_->start(kHintStays);
  ShowText();
}

void StatusLine::Result(const QString& text) { SetAccount(text, Kind::kResult); }
void StatusLine::Failure(const QString& text) { SetAccount(text, Kind::kFailure); }

void StatusLine::Action() {
  if (kind_ == Kind::kResult) SetAccount({}, Kind::kResult);
}

void StatusLine::SetAccount(const QString& text, Kind kind) {
  account_ = OneLine(text);
  kind_ = kind;
  Idle();
}

void StatusLine::ShowText() {
  const QString& shown = !hint_.isEmpty() ? hint_ : !doing_.isEmpty() ? doing_ : account_;
  text_->setText(shown);
  text_->setToolTip(Wrapped(shown));
  MakeRoom();
}

void StatusLine::ShowFacts(const Facts& facts) {
  model_->setText(facts.model);
  port_->setText(facts.port);
  data_->setText(facts.data);
  data_->setToolTip(Wrapped(facts.about_data));
  MakeRoom();
}

QString StatusLine::port() const { return port_->text(); }

void StatusLine::ShowWork(int done, int total) {
  work_->setVisible(total > 0);
  work_->setRange(0, total);
  work_->setValue(done);
  MakeRoom();
}

// A button that goes with the focus on it would pass it on to the next control.
void StatusLine::ShowStop(bool shown) {
  if (!shown && stop_->hasFocus()) window()->setFocus();
  stop_->setVisible(shown);
  MakeRoom();
}

void StatusLine::resizeEvent(QResizeEvent* event) {
  QStatusBar::resizeEvent(event);
  MakeRoom();
}

// A long text takes the place of model and port, which stand elsewhere too.
void StatusLine::MakeRoom() {
  const QString text = currentMessage().isEmpty() ? text_->text() : currentMessage();
  constexpr int kAroundALabel = 12;  // and around the text, and the size grip
  int needed = fontMetrics().horizontalAdvance(text) + 5 * kAroundALabel;
  for (const QLabel* label : {model_, port_, data_}) {
    needed += label->sizeHint().width() + kAroundALabel;
  }
  if (!work_->isHidden()) needed += kWorkWidth + kAroundALabel;
  if (!stop_->isHidden()) needed += stop_->sizeHint().width() + kAroundALabel;
  for (QLabel* label : {model_, port_}) label->setVisible(needed <= width());
}

}  // namespace q40
