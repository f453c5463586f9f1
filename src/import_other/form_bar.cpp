#include "import_other/form_bar.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>

#include "widgets/paths.h"

namespace q40 {
namespace {

constexpr int kHeadingRowsOffered = 20;

QString HeadingText(int row) {
  return row == 0 ? FormBar::tr("none") : FormBar::tr("row %1").arg(row);
}

// The first entry of each box.
void ShowGuess(QComboBox& box, const QString& guessed) {
  box.setItemText(0,
                  guessed.isEmpty() ? FormBar::tr("Guess") : FormBar::tr("Guess: %1").arg(guessed));
}

}  // namespace

FormBar::FormBar(QWidget* parent) : QWidget(parent) {
  auto* layout = new QHBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  separator_ = AddBox(*layout, "cmbSeparator", tr("&Separator:"));
  separator_->addItem(QString(), 0);
  for (const char separator : {',', ';', '\t', '|'}) {
    separator_->addItem(Shown(SeparatorText(separator)), static_cast<int>(separator));
  }
  encoding_ = AddBox(*layout, "cmbEncoding", tr("&Encoding:"));
  encoding_->addItem(QString(), static_cast<int>(ListEncoding::kGuess));
  for (const ListEncoding encoding : {ListEncoding::kUtf8, ListEncoding::kUtf16Le,
                                      ListEncoding::kUtf16Be, ListEncoding::kLatin1}) {
    encoding_->addItem(Shown(EncodingText(encoding)), static_cast<int>(encoding));
  }
  heading_ = AddBox(*layout, "cmbHeadingRow", tr("&Headings:"));
  heading_->addItem(QString(), ListForm::kGuessHeading);
  for (int row = 0; row <= kHeadingRowsOffered; ++row) heading_->addItem(HeadingText(row), row);
  layout->addStretch();
  Show({}, nullptr);
}

QComboBox* FormBar::AddBox(QHBoxLayout& layout, const char* name, const QString& caption) {
  auto* label = new QLabel(caption, this);
  auto* box = new QComboBox(this);
  box->setObjectName(QLatin1String(name));
  box->setSizeAdjustPolicy(QComboBox::AdjustToContents);
  label->setBuddy(box);
  layout.addWidget(label);
  layout.addWidget(box);
  connect(box, &QComboBox::activated, this, &FormBar::Choose);
  return box;
}

void FormBar::Show(const ListForm& form, const ListForm* read) {
  const bool guessed = read != nullptr;
  ShowGuess(*separator_,
            guessed && form.separator == '\0' ? Shown(SeparatorText(read->separator)) : QString());
  ShowGuess(*encoding_, guessed && form.encoding == ListEncoding::kGuess
                            ? Shown(EncodingText(read->encoding))
                            : QString());
  ShowGuess(*heading_, guessed && form.heading_row == ListForm::kGuessHeading
                           ? HeadingText(read->heading_row)
                           : QString());
  // A kept mapping may name any row.
  if (heading_->findData(form.heading_row) < 0) {
    heading_->addItem(HeadingText(form.heading_row), form.heading_row);
  }
  separator_->setCurrentIndex(separator_->findData(static_cast<int>(form.separator)));
  encoding_->setCurrentIndex(encoding_->findData(static_cast<int>(form.encoding)));
  heading_->setCurrentIndex(heading_->findData(form.heading_row));
}

void FormBar::Choose() {
  emit chosen({static_cast<ListEncoding>(encoding_->currentData().toInt()),
               static_cast<char>(separator_->currentData().toInt()),
               heading_->currentData().toInt()});
}

}  // namespace q40
