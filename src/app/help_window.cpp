#include "app/help_window.h"

#include <QFile>
#include <QShortcut>
#include <QTextBrowser>
#include <QVBoxLayout>

namespace q40 {

HelpWindow::HelpWindow(QWidget* owner) : QWidget(owner, Qt::Window) {
  setObjectName(QStringLiteral("frmHelp"));
  setWindowTitle(tr("Help"));
  auto* browser = new QTextBrowser(this);
  browser->setObjectName(QStringLiteral("txtHelp"));
  browser->setOpenExternalLinks(true);
  QFile text(QStringLiteral(":/help.md"));
  if (text.open(QIODevice::ReadOnly)) browser->setMarkdown(QString::fromUtf8(text.readAll()));
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(browser);
  connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, this, &QWidget::close);
  resize(fontMetrics().averageCharWidth() * 90, fontMetrics().lineSpacing() * 34);
}

}  // namespace q40
