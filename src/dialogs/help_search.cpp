#include "dialogs/help_search.h"

#include <QFile>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QShortcut>

#include "dialogs/help_window.h"

namespace q40 {
namespace {

const char* const kDocuments[] = {"guide.md",  "csv.md",  "clone-file.md", "protocol.md",
                                  "faults.md", "json.md", "lists.md"};
constexpr int kDocumentCount = static_cast<int>(std::size(kDocuments));

int NumberOf(const QUrl& shown) {
  for (int number = 0; number < kDocumentCount; ++number) {
    if (shown.fileName() == QLatin1String(kDocuments[number])) return number;
  }
  return 0;
}

// Loading one takes too long to do it for nothing.
bool MayContain(const QString& document, const QString& text) {
  QFile file(QStringLiteral(":/docs/") + document);
  return file.open(QIODevice::ReadOnly) &&
         QString::fromUtf8(file.readAll()).contains(text, Qt::CaseInsensitive);
}

}  // namespace

HelpSearch::HelpSearch(GuideBrowser& browser, QWidget* parent)
    : QWidget(parent), browser_(browser), text_(new QLineEdit(this)), outcome_(new QLabel(this)) {
  text_->setObjectName(QStringLiteral("txtFind"));
  text_->setClearButtonEnabled(true);
  text_->setPlaceholderText(tr("F3: next, Shift+F3: previous"));
  outcome_->setObjectName(QStringLiteral("lblFound"));
  auto* label = new QLabel(tr("&Find:"), this);
  label->setBuddy(text_);
  auto* row = new QHBoxLayout(this);
  row->addWidget(label);
  row->addWidget(text_, 1);
  row->addWidget(outcome_, 1);

  const auto next = [this] { Find({}); };
  connect(text_, &QLineEdit::returnPressed, next);
  connect(text_, &QLineEdit::textEdited, outcome_, &QLabel::clear);
  connect(new QShortcut(QKeySequence::FindNext, parent), &QShortcut::activated, next);
  connect(new QShortcut(QKeySequence::FindPrevious, parent), &QShortcut::activated,
          [this] { Find(QTextDocument::FindBackward); });
  connect(new QShortcut(QKeySequence::Find, parent), &QShortcut::activated, [this] {
    text_->setFocus();
    text_->selectAll();
  });
}

void HelpSearch::Find(QTextDocument::FindFlags direction) {
  outcome_->clear();
  if (text_->text().isEmpty()) return text_->setFocus();
  if (browser_.find(text_->text(), direction)) return;
  const int here = NumberOf(browser_.source());
  const int step = direction.testFlag(QTextDocument::FindBackward) ? kDocumentCount - 1 : 1;
  for (int i = 1; i <= kDocumentCount; ++i) {  // at last this one again
    const int number = (here + i * step) % kDocumentCount;
    if (FindFromEdge(QLatin1String(kDocuments[number]), direction)) {
      return outcome_->setText(i == kDocumentCount ? tr("Gone round") : QString());
    }
  }
  outcome_->setText(tr("Not found"));
}

bool HelpSearch::FindFromEdge(const QString& document, QTextDocument::FindFlags direction) {
  if (!MayContain(document, text_->text())) return false;
  if (browser_.source().fileName() != document) browser_.setSource(QUrl(document));
  const QTextCursor before = browser_.textCursor();
  browser_.moveCursor(direction.testFlag(QTextDocument::FindBackward) ? QTextCursor::End
                                                                      : QTextCursor::Start);
  if (browser_.find(text_->text(), direction)) return true;
  browser_.setTextCursor(before);
  return false;
}

}  // namespace q40
