#include "dialogs/frm_about.h"

#include <QApplication>
#include <QClipboard>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QStyle>
#include <QSysInfo>
#include <QVBoxLayout>

#include "radio/models.h"
#include "version.h"

namespace q40 {
namespace {

QPushButton* AddButton(QBoxLayout& row, const QString& caption, const char* name) {
  auto* button = new QPushButton(caption);
  button->setObjectName(QLatin1String(name));
  row.addWidget(button);
  return button;
}

QString ProgramLine() {
  return QString::fromUtf8(kWindowTitle.data(), static_cast<qsizetype>(kWindowTitle.size())) +
         QLatin1Char(' ') + QLatin1String(kVersion);
}

// What a bug report needs.
QString SystemInfo(const QString& port) {
  const QScreen* screen = QGuiApplication::primaryScreen();
  QStringList lines = {
      ProgramLine(),
      QStringLiteral("Qt %1, built with %2")
          .arg(QLatin1String(qVersion()), QLatin1String(QT_VERSION_STR)),
      QStringLiteral("System: %1, %2, kernel %3")
          .arg(QSysInfo::prettyProductName(), QSysInfo::currentCpuArchitecture(),
               QSysInfo::kernelVersion()),
      QStringLiteral("Windows: %1, style %2")
          .arg(QGuiApplication::platformName(), QApplication::style()->objectName()),
      QStringLiteral("Locale: %1").arg(QLocale::system().name()),
      QStringLiteral("Port: %1").arg(port)};
  if (screen != nullptr) {
    lines << QStringLiteral("Screen: %1 x %2, scale %3, %4 dpi")
                 .arg(screen->size().width())
                 .arg(screen->size().height())
                 .arg(screen->devicePixelRatio())
                 .arg(screen->logicalDotsPerInch());
  }
  return lines.join(QLatin1Char('\n'));
}

}  // namespace

frmAbout::frmAbout(QString port, QWidget* parent) : QDialog(parent), port_(std::move(port)) {
  setObjectName(QStringLiteral("frmAbout"));
  setWindowTitle(tr("About"));
  auto* name = new QLabel(ProgramLine(), this);
  QFont bold = name->font();
  bold.setBold(true);
  name->setFont(bold);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(name);
  layout->addWidget(
      new QLabel(tr("Reads, edits and writes the memory of RX-Q40 radios.\nUses Qt %1.")
                     .arg(QLatin1String(qVersion())),
                 this));
  auto* buttons = new QHBoxLayout;
  QPushButton* info = AddButton(*buttons, tr("System Info..."), "cmdSysInfo");
  buttons->addStretch();
  QPushButton* ok = AddButton(*buttons, QStringLiteral("OK"), "OKButton");
  ok->setDefault(true);
  connect(info, &QPushButton::clicked, this, &frmAbout::ShowSystemInfo);
  connect(ok, &QPushButton::clicked, this, &QDialog::accept);
  layout->addSpacing(12);
  layout->addLayout(buttons);
  layout->setSizeConstraint(QLayout::SetFixedSize);
}

void frmAbout::ShowSystemInfo() {
  QDialog dialog(this);
  dialog.setObjectName(QStringLiteral("frmSystemInfo"));
  dialog.setWindowTitle(tr("System Info"));
  auto* text = new QPlainTextEdit(SystemInfo(port_), &dialog);
  text->setObjectName(QStringLiteral("txtSystemInfo"));
  text->setAccessibleName(tr("System Info"));
  text->setReadOnly(true);
  text->setMinimumSize(text->fontMetrics().averageCharWidth() * 60,
                       text->fontMetrics().lineSpacing() * 10);
  auto* buttons = new QHBoxLayout;
  QPushButton* copy = AddButton(*buttons, tr("&Copy"), "cmdCopy");
  buttons->addStretch();
  QPushButton* ok = AddButton(*buttons, QStringLiteral("OK"), "OKButton");
  ok->setDefault(true);
  connect(copy, &QPushButton::clicked,
          [text] { QGuiApplication::clipboard()->setText(text->toPlainText()); });
  connect(ok, &QPushButton::clicked, &dialog, &QDialog::accept);
  auto* layout = new QVBoxLayout(&dialog);
  layout->addWidget(text);
  layout->addLayout(buttons);
  dialog.exec();
}

}  // namespace q40
