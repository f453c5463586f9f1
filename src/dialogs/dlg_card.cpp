#include "dialogs/dlg_card.h"

#include <algorithm>
#include <cmath>

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>

namespace q40 {
namespace {

// Of the longer side of a sheet.
constexpr int kPictureSize = 420;
constexpr int kSmallestPicture = 120;
constexpr double kPointsPerInch = 72;
constexpr double kInchesPerMeter = 39.3701;

}  // namespace

dlgCard::dlgCard(const CloneData& document, std::string name, const CardOptions& options,
                 QWidget* parent)
    : QDialog(parent),
      document_(document),
      name_(std::move(name)),
      paper_(new QComboBox(this)),
      pocket_(new QCheckBox(tr("&Folded to a booklet for the pocket"), this)),
      special_(new QCheckBox(tr("Special &channels too"), this)),
      account_(new QLabel(this)),
      picture_(new QLabel(this)),
      save_(MakeButton("cmdSaveCard", tr("&Save as PDF..."), kSaveAsPdf)),
      print_(MakeButton("cmdPrintCard", tr("&Print..."), kPrint)) {
  setObjectName(QStringLiteral("dlgCard"));
  setWindowTitle(tr("Channel Card"));
  MakeControls(options);
  FitPicture();
  ShowCard();
}

QPushButton* dlgCard::MakeButton(const char* name, const QString& caption, int choice) {
  auto* button = new QPushButton(caption, this);
  button->setObjectName(QLatin1String(name));
  connect(button, &QPushButton::clicked, this, [this, choice] { done(choice); });
  return button;
}

void dlgCard::MakeControls(const CardOptions& options) {
  paper_->setObjectName(QStringLiteral("cmbPaper"));
  paper_->addItems({tr("A4"), tr("Letter")});
  paper_->setCurrentIndex(static_cast<int>(options.paper));
  pocket_->setObjectName(QStringLiteral("chkPocket"));
  pocket_->setChecked(options.pocket);
  special_->setObjectName(QStringLiteral("chkSpecial"));
  special_->setChecked(options.special);
  account_->setObjectName(QStringLiteral("lblCard"));
  picture_->setObjectName(QStringLiteral("imgCard"));
  picture_->setAccessibleName(tr("Picture of the first sheet"));
  picture_->setAlignment(Qt::AlignCenter);
  connect(paper_, &QComboBox::currentIndexChanged, this, &dlgCard::ShowCard);
  connect(pocket_, &QCheckBox::toggled, this, &dlgCard::ShowCard);
  connect(special_, &QCheckBox::toggled, this, &dlgCard::ShowCard);

  auto* form = new QFormLayout;
  form->addRow(tr("P&aper:"), paper_);
  form->addRow(pocket_);
  form->addRow(special_);
  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(save_);
  buttons->addWidget(print_);
  buttons->addWidget(MakeButton("CancelButton", tr("Close"), Rejected));
  save_->setDefault(true);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(form);
  layout->addWidget(picture_);
  layout->addWidget(account_);
  layout->addLayout(buttons);
  layout->setSizeConstraint(QLayout::SetFixedSize);
}

// What stands below it must be on the screen, however large the letters are.
void dlgCard::FitPicture() {
  const int frame = 3 * fontMetrics().lineSpacing();
  const int room = screen()->availableGeometry().height() - sizeHint().height() - frame;
  picture_size_ = std::clamp(room, kSmallestPicture, kPictureSize);
  picture_->setFixedSize(picture_size_, picture_size_);
}

CardOptions dlgCard::Options() const {
  return {static_cast<CardPaper>(paper_->currentIndex()), pocket_->isChecked(),
          special_->isChecked()};
}

void dlgCard::ShowCard() {
  pages_.emplace(MakeCard(document_, name_, special_->isChecked()), Options());
  const bool empty = pages_->card().rows.empty();
  const bool good = !empty && pages_->IsReadable();
  save_->setEnabled(good);
  print_->setEnabled(good);
  if (good) {
    account_->setText(pages_->Account());
  } else {
    account_->setText(empty ? tr("No channel is in use.")
                            : tr("There is no font to write the card with."));
  }
  picture_->setAccessibleDescription(account_->text());
  if (pages_->IsReadable()) ShowPicture();
}

// As large as its room, and as sharp as the screen.
void dlgCard::ShowPicture() {
  const CardPoint sheet = pages_->layout().sheet;
  const double scale = devicePixelRatioF() * picture_size_ / std::max(sheet.x, sheet.y);
  QImage image(qRound(sheet.x * scale), qRound(sheet.y * scale), QImage::Format_RGB32);
  const int dots = static_cast<int>(std::lround(scale * kPointsPerInch * kInchesPerMeter));
  image.setDotsPerMeterX(dots);
  image.setDotsPerMeterY(dots);
  image.fill(Qt::white);
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  pages_->PaintSheet(painter, 0);
  painter.end();
  QPixmap picture = QPixmap::fromImage(image);
  picture.setDevicePixelRatio(devicePixelRatioF());
  picture_->setPixmap(picture);
}

}  // namespace q40
