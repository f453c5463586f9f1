#include "import_other/options_bar.h"

#include <QCheckBox>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>

#include "document/channel_cells.h"
#include "radio/models.h"
#include "widgets/paths.h"

namespace q40 {
namespace {

// "12", "D3 (in use: DB0ABC)"
QString EntryOf(const CloneImage& image, int channel) {
  const ChannelPlace place{.index = channel};
  QString title = Shown(TitleOf(place));
  if (!InUse(image, place)) return title;
  const QString name = Shown(CellText(image, place, Field::kName)).trimmed();
  return name.isEmpty() ? OptionsBar::tr("%1 (in use)").arg(title)
                        : OptionsBar::tr("%1 (in use: %2)").arg(title, name);
}

}  // namespace

OptionsBar::OptionsBar(const CloneData& document, const PlanOptions& options, QWidget* parent)
    : QWidget(parent), first_(new QComboBox(this)) {
  first_->setObjectName(QStringLiteral("cmbFirstChannel"));
  for (int channel = 0; channel < kMemoryChannelCount; ++channel) {
    first_->addItem(EntryOf(document.image, channel));
  }
  first_->setCurrentIndex(options.first_channel);
  connect(first_, &QComboBox::activated, this, &OptionsBar::Choose);
  auto* label = new QLabel(tr("&First channel:"), this);
  label->setBuddy(first_);
  auto* layout = new QHBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(label);
  layout->addWidget(first_);
  replace_ = AddCheck("chkReplaceInUse", tr("&Replace channels in use"), options.replace_in_use);
  only_fm_ = AddCheck("chkOnlyFm", tr("O&nly FM"), options.only_fm);
  only_own_ = AddCheck("chkOnlyOwnBands",
                       tr("Only the &bands of the %1").arg(Shown(ModelName(document.model))),
                       options.only_own_bands);
  layout->addStretch();
}

QCheckBox* OptionsBar::AddCheck(const char* name, const QString& caption, bool checked) {
  auto* check = new QCheckBox(caption, this);
  check->setObjectName(QLatin1String(name));
  check->setChecked(checked);
  connect(check, &QCheckBox::toggled, this, &OptionsBar::Choose);
  layout()->addWidget(check);
  return check;
}

void OptionsBar::Choose() {
  emit chosen({first_->currentIndex(), replace_->isChecked(), only_fm_->isChecked(),
               only_own_->isChecked()});
}

}  // namespace q40
