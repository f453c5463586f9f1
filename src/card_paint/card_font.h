// The font of a card: one that is there, and what it can show of a text.
#pragma once

#include <QFont>
#include <QFontMetricsF>

#include "card/card_layout.h"

namespace q40 {

class CardFont final : public CardWidths {
 public:
  // The narrowest good one; where none of those is there, the system's own. Needs an application.
  CardFont();

  // Whether there is a font with the letters and digits of a radio. Without one, nothing but empty boxes
  // would be drawn.
  [[nodiscard]] bool IsUsable() const;

  [[nodiscard]] double WidthOf(const std::string& text) const override;
  // The text with a question mark for what no font has.
  [[nodiscard]] QString Showable(const std::string& text) const;
  // The same, without its middle where it is wider than `width` at a size of one point.
  [[nodiscard]] QString Fitted(const std::string& text, double width) const;

  [[nodiscard]] QFont Of(double size, bool bold = false) const;

 private:
  QFont font_;
  QFontMetricsF metrics_;
};

}  // namespace q40
