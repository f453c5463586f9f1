#include "app/help_window.h"

#include <QHBoxLayout>
#include <QImage>
#include <QListWidget>
#include <QRegularExpression>
#include <QScrollBar>
#include <QShortcut>
#include <QTextBlock>

namespace q40 {
namespace {

constexpr const char* kGuide = "qrc:/docs/guide.md";
constexpr int kTextCharacters = 90;
constexpr int kContentsCharacters = 26;
constexpr int kLines = 38;
constexpr int kDeepestListed = 3;  // level of a heading

// The anchor that a heading gets on the pages of a code host, so that links work there and here.
QString AnchorOf(const QString& heading) {
  static const QRegularExpression dropped(QStringLiteral("[^\\w\\- ]"),
                                          QRegularExpression::UseUnicodePropertiesOption);
  QString anchor = heading.toLower();
  anchor.remove(dropped);
  return anchor.replace(QLatin1Char(' '), QLatin1Char('-'));
}

}  // namespace

GuideBrowser::GuideBrowser(QWidget* parent) : QTextBrowser(parent) { setOpenExternalLinks(true); }

void GuideBrowser::doSetSource(const QUrl& url, QTextDocument::ResourceType type) {
  QTextBrowser::doSetSource(url, type);
  // A link inside the document does not load it again.
  if (shown_ == url.path()) return;
  shown_ = url.path();
  CollectHeadings();
  if (url.hasFragment()) scrollToAnchor(url.fragment());
  emit documentChanged();
}

// Qt gives the headings of a Markdown document no names to jump to.
void GuideBrowser::CollectHeadings() {
  headings_.clear();
  for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
    const int level = block.blockFormat().headingLevel();
    if (level == 0) continue;
    const Heading heading{level, block.text(), AnchorOf(block.text())};
    QTextCursor cursor(block);
    cursor.select(QTextCursor::BlockUnderCursor);
    QTextCharFormat name;
    name.setAnchor(true);
    name.setAnchorNames({heading.anchor});
    cursor.mergeCharFormat(name);
    headings_ << heading;
  }
}

QVariant GuideBrowser::loadResource(int type, const QUrl& name) {
  if (type != QTextDocument::ImageResource) return QTextBrowser::loadResource(type, name);
  QImage image(QLatin1Char(':') + source().resolved(name).path());
  const double margins = 4 * document()->documentMargin();
  const double widest = width() - verticalScrollBar()->sizeHint().width() - margins;
  if (image.isNull() || image.width() <= widest) return image;
  // On a fine screen the picture keeps its pixels.
  const double scale = std::min(devicePixelRatioF(), image.width() / widest);
  image = image.scaledToWidth(static_cast<int>(widest * scale), Qt::SmoothTransformation);
  image.setDevicePixelRatio(scale);
  return image;
}

HelpWindow::HelpWindow(QWidget* owner)
    : QWidget(owner, Qt::Window),
      browser_(new GuideBrowser(this)),
      contents_(new QListWidget(this)) {
  setObjectName(QStringLiteral("frmHelp"));
  setWindowTitle(tr("Help"));
  browser_->setObjectName(QStringLiteral("txtHelp"));
  browser_->setAccessibleName(tr("Help text"));
  contents_->setObjectName(QStringLiteral("lstContents"));
  contents_->setAccessibleName(tr("Contents"));
  const int character = fontMetrics().averageCharWidth();
  contents_->setFixedWidth(character * kContentsCharacters);
  contents_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  auto* layout = new QHBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  layout->addWidget(contents_);
  layout->addWidget(browser_, 1);
  resize(character * (kTextCharacters + kContentsCharacters), fontMetrics().lineSpacing() * kLines);
  layout->activate();  // the pictures take their size from the browser's

  connect(browser_, &GuideBrowser::documentChanged, this, &HelpWindow::FillContents);
  connect(contents_, &QListWidget::currentRowChanged, [this](int row) {
    if (row >= 0) {
      browser_->scrollToAnchor(contents_->item(row)->data(Qt::UserRole).toString());
    }
  });
  connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, this, &QWidget::close);
  browser_->setSource(QUrl(QLatin1String(kGuide)), QTextDocument::MarkdownResource);
  browser_->setFocus();
}

void HelpWindow::FillContents() {
  contents_->clear();
  for (const GuideBrowser::Heading& heading : browser_->headings()) {
    if (heading.level > kDeepestListed) continue;
    const QString indent(2 * (heading.level - 1), QLatin1Char(' '));
    auto* item = new QListWidgetItem(indent + heading.text, contents_);
    item->setData(Qt::UserRole, heading.anchor);
  }
}

}  // namespace q40
