#include "pages/service_page.h"

#include <QFontDatabase>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace q40 {

ServicePage::ServicePage(QWidget* parent)
    : QWidget(parent), address_(new QLineEdit(this)), replies_(new QPlainTextEdit(this)) {
  address_->setObjectName(QStringLiteral("Text1"));
  address_->setAccessibleName(tr("Address, four digits"));
  address_->setAcceptDrops(false);
  address_->setText(QStringLiteral("0020"));
  address_->setFixedWidth(fontMetrics().horizontalAdvance(QStringLiteral("00000000")));
  replies_->setObjectName(QStringLiteral("Text2"));
  replies_->setAccessibleName(tr("Replies"));
  replies_->setReadOnly(true);
  replies_->setAcceptDrops(false);
  replies_->setLineWrapMode(QPlainTextEdit::NoWrap);
  replies_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  read_ = AddButton("Command1", "Read Block");
  QPushButton* clear = AddButton("Command2", "Clear");
  clear->setAccessibleName(tr("Clear the replies"));
  dump_ = AddButton("Command6", "Dump");
  connect(read_, &QPushButton::clicked, [this] { emit readRequested(address_->text()); });
  connect(clear, &QPushButton::clicked, replies_, &QPlainTextEdit::clear);
  connect(dump_, &QPushButton::clicked, this, &ServicePage::dumpRequested);
  // Without an action, kept out of sight.
  AddButton("Command3", "")->hide();
  setFocusProxy(address_);
  auto* spare = new QLineEdit(this);
  spare->setObjectName(QStringLiteral("Text3"));
  spare->hide();

  auto* row = new QHBoxLayout;
  auto* label = new QLabel(tr("&Address"), this);
  label->setBuddy(address_);
  row->addWidget(label);
  row->addWidget(address_);
  row->addWidget(read_);
  row->addWidget(dump_);
  row->addWidget(clear);
  row->addStretch();
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(new QLabel(tr("Raw blocks of the radio's memory, for service."), this));
  layout->addLayout(row);
  layout->addWidget(replies_, 1);
}

QPushButton* ServicePage::AddButton(const char* name, const char* caption) {
  auto* button = new QPushButton(QString::fromUtf8(caption), this);
  button->setObjectName(QLatin1String(name));
  button->setAutoDefault(false);
  return button;
}

void ServicePage::ShowReply(const QString& reply) { replies_->setPlainText(reply); }

void ServicePage::AppendReply(const QString& text) {
  replies_->moveCursor(QTextCursor::End);
  replies_->insertPlainText(text);
}

void ServicePage::SetReading(bool reading) { read_->setEnabled(!reading); }
void ServicePage::SetDumping(bool dumping) { dump_->setEnabled(!dumping); }

}  // namespace q40
