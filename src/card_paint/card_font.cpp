#include "card_paint/card_font.h"

#include <algorithm>

#include <QFontDatabase>
#include <QList>

namespace q40 {
namespace {

constexpr int kMeasured = 1000;  // pixels, so large that rounding to whole ones does not matter

QFont Chosen() {
  QFont font;
  for (const char* const name :
       {"DejaVu Sans Condensed", "Liberation Sans", "DejaVu Sans", "Noto Sans"}) {
    if (!QFontDatabase::hasFamily(QString::fromLatin1(name))) continue;
    font = QFont(QString::fromLatin1(name));
    break;
  }
  font.setStyleStrategy(QFont::PreferOutline);
  font.setHintingPreference(QFont::PreferNoHinting);
  font.setKerning(false);  // or a text is not as wide as its parts, and columns of digits waver
  font.setPixelSize(kMeasured);
  return font;
}

}  // namespace

CardFont::CardFont() : font_(Chosen()), metrics_(font_) {}

bool CardFont::IsUsable() const {
  constexpr std::string_view kNeeded = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ.+-/?";
  return !QFontDatabase::families().isEmpty() &&
         std::all_of(kNeeded.begin(), kNeeded.end(), [this](char c) {
           return metrics_.inFont(QLatin1Char(c)) && metrics_.horizontalAdvance(QLatin1Char(c)) > 0;
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
