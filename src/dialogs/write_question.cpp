#include "dialogs/write_question.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

namespace q40 {

WriteQuestion::WriteQuestion(QWidget* owner) : QDialog(owner), view_(new ChangesView(this)) {
  setObjectName(QStringLiteral("WriteQuestion"));
  setWindowTitle(tr("Changes Before Writing"));
  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  const auto button = [&](const char* name, const QString& caption, int answer) {
    auto* made = new QPushButton(caption, this);
    made->setObjectName(QLatin1String(name));
    connect(made, &QPushButton::clicked, this, [this, answer] { done(answer); });
    buttons->addWidget(made);
    return made;
  };
  read_ = button("cmdReadFirst", tr("&Read the Radio First"), kReadFirst);
  write_ = button("cmdWrite", tr("&Write"), kWrite);
  button("cmdCancelWrite", tr("&Cancel"), kCancel);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(view_, 1);
  layout->addLayout(buttons);
  resize(fontMetrics().averageCharWidth() * 110, fontMetrics().lineSpacing() * 22);
}

void WriteQuestion::Ask(bool known, std::vector<CellDifference> differences, const QString& about) {
  const QString none = known ? tr("Nothing that is written differs from what the radio holds.")
                             : tr("What the radio holds is not known.");
  view_->Show(std::move(differences), none, about);
  QPushButton* first = known ? write_ : read_;
  first->setDefault(true);
  first->setFocus();
}

}  // namespace q40
