// A channel card, painted sheet by sheet: on a printer, in a PDF, in a picture.
#pragma once

#include <QPageLayout>

#include "card_paint/card_font.h"

class QPagedPaintDevice;
class QPainter;

namespace q40 {

class CardPages {
 public:
  CardPages(CardContent card, const CardOptions& options);

  [[nodiscard]] const CardContent& card() const { return card_; }
  [[nodiscard]] const CardLayout& layout() const { return layout_; }
  // False: there is no font to write it with; then nothing may be painted.
  [[nodiscard]] bool IsReadable() const { return font_.IsUsable(); }
  // "1 sheet, 3 columns, letters of 8.5 points"
  [[nodiscard]] QString Account() const;
  // The paper, without margins: the card has its own.
  [[nodiscard]] QPageLayout Paper() const;

  // Sheet 0.. on a device that is as large as the sheet, at any resolution.
  void PaintSheet(QPainter& painter, int sheet) const;
  // All sheets. False: the device, whose paper is set already, failed.
  [[nodiscard]] bool PaintAll(QPagedPaintDevice& device) const;

 private:
  CardOptions options_;
  CardContent card_;
  CardFont font_;
  CardLayout layout_;
};

}  // namespace q40
