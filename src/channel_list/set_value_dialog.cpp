#include "channel_list/set_value_dialog.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>

namespace q40 {

SetValueDialog::SetValueDialog(std::vector<Choice> choices, int current, int channels, Take take,
                               QWidget* parent)
    : QDialog(parent),
      choices_(std::move(choices)),
      take_(std::move(take)),
      field_(new QComboBox(this)),
      value_(new QComboBox(this)),
      why_(new QLabel(this)) {
  setObjectName(QStringLiteral("dlgSetValue"));
  setWindowTitle(tr("Set Value"));
  field_->setObjectName(QStringLiteral("cmbSetField"));
  field_->setAccessibleName(tr("Field"));
  for (const Choice& choice : choices_) field_->addItem(choice.heading);
  field_->setCurrentIndex(current);
  value_->setObjectName(QStringLiteral("cmbSetValue"));
  value_->setAccessibleName(tr("Value"));
  value_->setEditable(true);
  value_->setInsertPolicy(QComboBox::NoInsert);
  why_->setObjectName(QStringLiteral("lblSetRefused"));
  why_->setTextFormat(Qt::PlainText);
  why_->setWordWrap(true);
  why_->setMinimumHeight(3 * fontMetrics().lineSpacing());
  connect(field_, &QComboBox::currentIndexChanged, this, &SetValueDialog::ShowEntries);
  ShowEntries();

  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  auto* layout = new QFormLayout(this);
  layout->addRow(new QLabel(tr("Selected channels: %1").arg(channels), this));
  layout->addRow(tr("&Field"), field_);
  layout->addRow(tr("&Value"), value_);
  layout->addRow(why_);
  layout->addRow(buttons);
  value_->setFocus();
}

void SetValueDialog::ShowEntries() {
  value_->clear();
  value_->addItems(choices_[static_cast<std::size_t>(field_->currentIndex())].entries);
  value_->setCurrentIndex(-1);
  value_->setEditText(QString());
  why_->clear();
}

// What cannot be stays, with the reason.
void SetValueDialog::accept() {
  const QString why = take_(field_->currentIndex(), value_->currentText());
  if (why.isEmpty()) return QDialog::accept();
  why_->setText(why);
  value_->setFocus();
  value_->lineEdit()->selectAll();
}

}  // namespace q40
