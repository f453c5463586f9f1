#include "dialogs/help_window.h"

#include <QHBoxLayout>
#include <QImage>
#include <QListWidget>
#include <QRegularExpression>
#include <QScrollBar>
#include <QShortcut>
#include <QSignalBlocker>
#include <QTextBlock>
#include <QVBoxLayout>

#include "dialogs/help_search.h"
#include "widgets/outer_size.h"

// Outside of every namespace. The resources of a library are linked only when somebody asks for them.
static void LoadDocuments() { Q_INIT_RESOURCE(documents); }

namespace q40 {
namespace {

constexpr const char* kGuide = "qrc:/docs/guide.md";
constexpr int kTextCharacters = 112;
constexpr int kContentsCharacters = 34;
constexpr int kLines = 44;
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

GuideBrowser::GuideBrowser(QWidget* parent) : QTextBrowser(parent) {
  setOpenExternalLinks(true);
  // Comes for links and for going back and forth.
  connect(this, &QTextBrowser::sourceChanged, this, &GuideBrowser::Changed);
}

// A long table is laid out once, when it is complete, and not after each of its cells.
void GuideBrowser::Load(const std::function<void()>& load) {
  document()->setLayoutEnabled(false);
  load();
  document()->setLayoutEnabled(true);
  if (source().hasFragment()) scrollToAnchor(source().fragment());
}

void GuideBrowser::doSetSource(const QUrl& target, QTextDocument::ResourceType /*type*/) {
  const QUrl url = source().resolved(target);
  const auto load = [&] { QTextBrowser::doSetSource(url, QTextDocument::MarkdownResource); };
  if (url.path() == shown_) {
    load();  // only scrolls
  } else {
    Load(load);
  }
}

void GuideBrowser::Changed(const QUrl& url) {
  if (shown_ == url.path()) return;  // a link inside the document does not load it again
  shown_ = url.path();
  CollectHeadings();
  emit documentChanged();
}

// Qt gives the headings of a Markdown document no names to jump to.
void GuideBrowser::CollectHeadings() {
  headings_.clear();
  // A text that was changed is loaded again at every link. The names are no such change.
  const QSignalBlocker unnoticed(document());
  QTextCursor cursor(document());
  cursor.beginEditBlock();  // one layout, not one for each heading
  for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
    const int level = block.blockFormat().headingLevel();
    if (level == 0) continue;
    const Heading heading{level, block.text(), AnchorOf(block.text())};
    QTextCharFormat name;
    name.setAnchor(true);
    name.setAnchorNames({heading.anchor});
    cursor.setPosition(block.position());
    cursor.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
    cursor.mergeCharFormat(name);
    headings_ << heading;
  }
  cursor.endEditBlock();
}

QVariant GuideBrowser::loadResource(int type, const QUrl& name) {
  if (type != QTextDocument::ImageResource) return QTextBrowser::loadResource(type, name);
  QImage image(QLatin1Char(':') + source().resolved(name).path());
  const double margins = 4 * document()->documentMargin();
  const double widest = width() - verticalScrollBar()->sizeHint().width() - margins;
  if (image.isNull() || image.width() <= widest) return image;
  // On a high-resolution screen the picture keeps its pixels.
  const double scale = std::min(devicePixelRatioF(), image.width() / widest);
  image = image.scaledToWidth(static_cast<int>(widest * scale), Qt::SmoothTransformation);
  image.setDevicePixelRatio(scale);
  return image;
}

HelpWindow::HelpWindow(QWidget* owner)
    : QWidget(owner, Qt::Window),
      browser_(new GuideBrowser(this)),
      contents_(new QListWidget(this)) {
  LoadDocuments();
  setObjectName(QStringLiteral("frmHelp"));
  setWindowTitle(tr("Help"));
  browser_->setObjectName(QStringLiteral("txtHelp"));
  browser_->setAccessibleName(tr("Help text"));
  contents_->setObjectName(QStringLiteral("lstContents"));
  contents_->setAccessibleName(tr("Contents"));
  const int character = fontMetrics().averageCharWidth();
  contents_->setFixedWidth(character * kContentsCharacters);
  contents_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  auto* right = new QVBoxLayout;
  right->setSpacing(0);
  right->addWidget(new HelpSearch(*browser_, this));
  right->addWidget(browser_, 1);
  auto* layout = new QHBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  layout->addWidget(contents_);
  layout->addLayout(right, 1);
  resize(QSize(character * (kTextCharacters + kContentsCharacters),
               fontMetrics().lineSpacing() * kLines)
             .boundedTo(RoomBeside(*owner)));
  browser_->resize(width() - contents_->width(),
                   height());  // to which the pictures are made to fit

  connect(browser_, &GuideBrowser::documentChanged, this, &HelpWindow::FillContents);
  connect(contents_, &QListWidget::currentRowChanged, [this](int row) {
    if (row >= 0) {
      browser_->scrollToAnchor(contents_->item(row)->data(Qt::UserRole).toString());
    }
  });
  connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, this, &QWidget::close);
  browser_->setSource(QUrl(QLatin1String(kGuide)));
  browser_->setFocus();
}

void HelpWindow::ShowSection(const QString& anchor) {
  QUrl url(QLatin1String{kGuide});
  if (!anchor.isEmpty()) url.setFragment(anchor);
  browser_->setSource(url);
  browser_->setFocus();
}

void HelpWindow::FillContents() {
  contents_->clear();
  for (const GuideBrowser::Heading& heading : browser_->headings()) {
    if (heading.level > kDeepestListed) continue;
    const QString indent(qsizetype{2} * (heading.level - 1), QLatin1Char(' '));
    auto* item = new QListWidgetItem(indent + heading.text, contents_);
    item->setData(Qt::UserRole, heading.anchor);
  }
}

}  // namespace q40
