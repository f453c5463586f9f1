#include "dialogs/report_window.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace q40 {

ReportWindow::ReportWindow(QWidget* parent)
    : QDialog(parent), summary_(new QLabel(this)), list_(new QPlainTextEdit(this)) {
  setObjectName(QStringLiteral("frmReport"));
  setWindowTitle(tr("Write Report"));
  summary_->setObjectName(QStringLiteral("lblReport"));
  summary_->setTextFormat(Qt::PlainText);
  summary_->setWordWrap(true);
  summary_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  summary_->setMinimumWidth(fontMetrics().averageCharWidth() * 70);
  list_->setObjectName(QStringLiteral("txtReport"));
  list_->setAccessibleName(tr("Differences"));
  list_->setReadOnly(true);
  auto* copy = new QPushButton(tr("&Copy"), this);
  copy->setObjectName(QStringLiteral("cmdCopyReport"));
  close_ = new QPushButton(tr("Close"), this);
  close_->setObjectName(QStringLiteral("cmdCloseReport"));
  close_->setDefault(true);
  connect(copy, &QPushButton::clicked, this, [this] {
    QGuiApplication::clipboard()->setText(summary_->text() + QLatin1Char('\n') +
                                          list_->toPlainText());
  });
  connect(close_, &QPushButton::clicked, this, &QDialog::close);

  auto* buttons = new QHBoxLayout;
  buttons->addWidget(copy);
  buttons->addStretch();
  buttons->addWidget(close_);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(summary_);
  layout->addWidget(list_);
  layout->addLayout(buttons);
}

void ReportWindow::Tell(const QString& summary, const QStringList& lines) {
  summary_->setText(summary);
  list_->setPlainText(lines.join(QLatin1Char('\n')));
  list_->setVisible(!lines.isEmpty());
  adjustSize();
  close_->setFocus();
}

}  // namespace q40
