#include "card_paint/card_font.h"

#include <algorithm>

#include <QFontDatabase>
#include <QFontInfo>
#include <QList>
#include <QPainterPath>
#include <QRawFont>

namespace q40 {
namespace {

constexpr double kNoJoining = 1.0 / 32;  // pixels
constexpr int kMeasured = 1000;  // pixels, so large that rounding to whole ones does not matter

// Of those that have letters, and at every size. No family: there is none.
QString ChosenFamily() {
  QStringList families = QFontDatabase::families(QFontDatabase::Latin);
  families.removeIf(
      [](const QString& family) { return !QFontDatabase::isSmoothlyScalable(family); });
  for (const char* const name :
       {"DejaVu Sans Condensed", "Liberation Sans", "DejaVu Sans", "Noto Sans"}) {
    if (families.contains(QString::fromLatin1(name))) return QString::fromLatin1(name);
  }
  // A font of signs says that it is Latin too, but then knows no other script.
  const auto scripts = [](const QString& family) {
    return QFontDatabase::writingSystems(family).size();
  };
  QString usual = QFontInfo(QFont()).family();
  if (families.contains(usual) && scripts(usual) > 1) return usual;
  const auto best =
      std::max_element(families.begin(), families.end(),
                       [&](const QString& a, const QString& b) { return scripts(a) < scripts(b); });
  return best == families.end() ? QString() : *best;
}

QFont Chosen() {
  QFont font(ChosenFamily());
  font.setStyleStrategy(QFont::PreferOutline);
  font.setHintingPreference(QFont::PreferNoHinting);
  font.setKerning(false);  // or a text is not as wide as its parts, and columns of digits waver
  // Spacing that nobody sees keeps letters from being joined, and names from being copied as signs.
  font.setLetterSpacing(QFont::AbsoluteSpacing, kNoJoining);
  font.setPixelSize(kMeasured);
  return font;
}

}  // namespace

CardFont::CardFont() : font_(Chosen()), metrics_(font_) {}

// Where there is no font, boxes stand in for one; and what has no outlines is made of dots.
bool CardFont::IsUsable() const {
  if (!metrics_.inFont(u'A')) return false;
  const QRawFont raw = QRawFont::fromFont(font_);
  const QString needed = QStringLiteral("0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ.+-/?");
  const QList<quint32> glyphs = raw.glyphIndexesForString(needed);
  return glyphs.size() == needed.size() &&
         std::all_of(glyphs.begin(), glyphs.end(), [&raw](quint32 glyph) {
           return glyph != 0 && !raw.pathForGlyph(glyph).isEmpty();
         });
}

double CardFont::WidthOf(const std::string& text) const {
  return metrics_.horizontalAdvance(Showable(text)) / kMeasured;
}

QString CardFont::Showable(const std::string& text) const {
  QList<uint> characters = QString::fromStdString(text).toUcs4();
  for (uint& character : characters) {
    if (character != ' ' && !metrics_.inFontUcs4(character)) character = '?';
  }
  return QString::fromUcs4(reinterpret_cast<const char32_t*>(characters.constData()),
                           characters.size());
}

QString CardFont::Fitted(const std::string& text, double width) const {
  return metrics_.elidedText(Showable(text), Qt::ElideMiddle, width * kMeasured);
}

QFont CardFont::Of(double size, bool bold) const {
  QFont font = font_;
  font.setPointSizeF(size);
  font.setBold(bold);
  return font;
}

}  // namespace q40
