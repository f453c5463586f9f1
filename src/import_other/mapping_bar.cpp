#include "import_other/mapping_bar.h"

#include <algorithm>

#include <QComboBox>
#include <QHBoxLayout>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "widgets/message_box.h"
#include "widgets/paths.h"

namespace q40 {

MappingBar::MappingBar(std::string folder, std::function<KeptMapping()> present, QWidget* parent)
    : QWidget(parent),
      folder_(std::move(folder)),
      present_(std::move(present)),
      entries_(new QComboBox(this)) {
  auto* label = new QLabel(tr("&Mapping:"), this);
  label->setBuddy(entries_);
  entries_->setObjectName(QStringLiteral("cmbMapping"));
  entries_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  entries_->setMinimumContentsLength(30);
  entries_->setPlaceholderText(tr("(chosen here)"));
  auto* layout = new QHBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(label);
  layout->addWidget(entries_);
  keep_ = AddButton("cmdKeepMapping", tr("&Keep As..."));
  delete_ = AddButton("cmdDeleteMapping", tr("&Delete..."));
  layout->addStretch();
  connect(entries_, &QComboBox::activated, this, &MappingBar::Choose);
  connect(keep_, &QPushButton::clicked, this, &MappingBar::Keep);
  connect(delete_, &QPushButton::clicked, this, &MappingBar::Delete);
  Fill();
  ShowEntry({});
}

QPushButton* MappingBar::AddButton(const char* name, const QString& caption) {
  auto* button = new QPushButton(caption, this);
  button->setObjectName(QLatin1String(name));
  layout()->addWidget(button);
  return button;
}

void MappingBar::Fill() {
  names_ = MappingNames(folder_);
  entries_->clear();
  entries_->addItem(tr("Guess"));
  for (const std::string& name : names_) entries_->addItem(Shown(name));
}

// Empty: the guess.
void MappingBar::ShowEntry(const std::string& name) {
  const auto found = std::find(names_.begin(), names_.end(), name);
  shown_ = found == names_.end() ? 0 : static_cast<int>(found - names_.begin()) + 1;
  entries_->setCurrentIndex(shown_);
  delete_->setEnabled(shown_ > 0);
}

void MappingBar::SetByHand() {
  shown_ = -1;
  entries_->setCurrentIndex(-1);
  delete_->setEnabled(false);
}

void MappingBar::SetKeepable(bool keepable) { keep_->setEnabled(keepable); }

// One that cannot be loaded leaves everything as it is.
void MappingBar::Choose(int index) {
  if (index == 0) {
    ShowEntry({});
    return emit guessWanted();
  }
  const std::string name = names_[static_cast<std::size_t>(index) - 1];
  KeptMapping kept;
  if (const auto problem = LoadMapping(folder_, name, kept)) {
    entries_->setCurrentIndex(shown_);
    return Complain(*problem);
  }
  last_ = name;
  ShowEntry(name);
  emit mappingChosen(kept);
}

void MappingBar::Keep() {
  const std::string name = AskName();
  if (name.empty()) return;
  if (const auto problem = StoreMapping(folder_, name, present_())) return Complain(*problem);
  last_ = name;
  Fill();
  ShowEntry(name);
}

std::string MappingBar::AskName() {
  QInputDialog dialog(this);
  dialog.setObjectName(QStringLiteral("dlgKeepMapping"));
  dialog.setWindowTitle(tr("Keep Mapping"));
  dialog.setLabelText(tr("Name of the mapping:"));
  dialog.setTextValue(Shown(last_));
  for (QLabel* label : dialog.findChildren<QLabel*>()) label->setTextFormat(Qt::PlainText);
  while (dialog.exec() == QDialog::Accepted) {
    std::string name = dialog.textValue().trimmed().toStdString();
    QString why;
    if (MayKeep(name, why)) return name;
    if (!why.isEmpty()) dialog.setLabelText(tr("This cannot be its name: %1.").arg(why));
  }
  return {};
}

// `why` stays empty when the user has said no.
bool MappingBar::MayKeep(const std::string& name, QString& why) {
  why = Shown(WhyNotMappingName(name));
  if (!why.isEmpty()) return false;
  const auto kept = MappingNames(folder_);  // also one that came since the window opened
  if (std::find(kept.begin(), kept.end(), name) == kept.end()) return true;
  const QString text = tr("There is a mapping %1.\nDo you want to replace it?").arg(Shown(name));
  return Confirmed(this, "REPLACE OK", text.toUtf8().constData());
}

// The columns stay what they are.
void MappingBar::Delete() {
  if (shown_ <= 0) return;
  const std::string name = names_[static_cast<std::size_t>(shown_) - 1];
  const QString text = tr("Do you want to delete the mapping %1?").arg(Shown(name));
  if (!Confirmed(this, "DELETE OK", text.toUtf8().constData())) return;
  if (const auto problem = DeleteMapping(folder_, name)) return Complain(*problem);
  Fill();
  entries_->setFocus();  // the button cannot be pressed any more
  SetByHand();
}

void MappingBar::Complain(const FileProblem& problem) {
  const QString text = Shown(problem.Message());
  ShowMessage(this, QMessageBox::Critical, "ERROR", text.toUtf8().constData());
}

}  // namespace q40
