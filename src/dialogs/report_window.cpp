#include "dialogs/report_window.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace q40 {

ReportWindow::ReportWindow(const char* name, const QString& title, QWidget* parent)
    : QDialog(parent), summary_(new QLabel(this)), list_(new QPlainTextEdit(this)) {
  setObjectName(QLatin1String(name));
  setWindowTitle(title);
  summary_->setObjectName(QStringLiteral("lblReport"));
  summary_->setTextFormat(Qt::PlainText);
  summary_->setWordWrap(true);
  summary_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  summary_->setMinimumWidth(fontMetrics().averageCharWidth() * 70);
  list_->setObjectName(QStringLiteral("txtReport"));
  list_->setAccessibleName(tr("Differences"));
  list_->setReadOnly(true);
  const auto button = [this](const char* object, const QString& caption) {
    auto* made = new QPushButton(caption, this);
    made->setObjectName(QLatin1String(object));
    return made;
  };
  auto* copy = button("cmdCopyReport", tr("&Copy"));
  rest_ = button("cmdWriteRest", tr("&Write the Rest"));
  forget_ = button("cmdForgetRest", tr("&Forget It"));
  close_ = button("cmdCloseReport", tr("Close"));
  close_->setDefault(true);
  OfferRest(false);
  connect(rest_, &QPushButton::clicked, this, &ReportWindow::restWanted);
  connect(forget_, &QPushButton::clicked, this, &ReportWindow::forgetWanted);
  connect(copy, &QPushButton::clicked, this, [this] {
    QGuiApplication::clipboard()->setText(summary_->text() + QLatin1Char('\n') +
                                          list_->toPlainText());
  });
  connect(close_, &QPushButton::clicked, this, &QDialog::close);

  auto* buttons = new QHBoxLayout;
  buttons->addWidget(copy);
  buttons->addStretch();
  buttons->addWidget(rest_);
  buttons->addWidget(forget_);
  buttons->addWidget(close_);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(summary_);
  layout->addWidget(list_);
  layout->addLayout(buttons);
}

void ReportWindow::OfferRest(bool offered) {
  if (!offered && (rest_->hasFocus() || forget_->hasFocus())) close_->setFocus();
  rest_->setVisible(offered);
  forget_->setVisible(offered);
}

void ReportWindow::Tell(const QString& summary, const QStringList& lines) {
  summary_->setText(summary);
  list_->setPlainText(lines.join(QLatin1Char('\n')));
  list_->setVisible(!lines.isEmpty());
  adjustSize();
  close_->setFocus();
}

}  // namespace q40
