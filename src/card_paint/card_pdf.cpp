#include "card_paint/card_pdf.h"

#include <QBuffer>
#include <QDateTime>
#include <QPdfWriter>
#include <QUuid>

namespace q40 {
namespace {

constexpr int kResolution = 1200;  // dots an inch

// The writer knows the present time only. The form is prescribed, so that the length stays, and with it
// every offset in the file.
void SetTime(QByteArray& pdf, std::time_t time) {
  const QByteArray mark = "/CreationDate (D:";
  const qsizetype at = pdf.indexOf(mark);
  const QByteArray digits =
      QDateTime::fromSecsSinceEpoch(time).toUTC().toString(u"yyyyMMddhhmmss").toLatin1();
  if (at >= 0) pdf.replace(at + mark.size(), digits.size(), digits);
}

}  // namespace

std::optional<std::string> CardPdf(const CardPages& pages, const std::string& creator) {
  if (!pages.IsReadable()) return std::nullopt;
  QByteArray pdf;
  QBuffer buffer(&pdf);
  if (!buffer.open(QIODevice::WriteOnly)) return std::nullopt;
  QPdfWriter writer(&buffer);
  writer.setResolution(kResolution);
  writer.setPageLayout(pages.Paper());
  writer.setTitle(QString::fromStdString("Channel card, " + pages.card().model));
  writer.setCreator(QString::fromStdString(creator));
  const auto time = WantedTime();
#if QT_VERSION >= QT_VERSION_CHECK(6, 8, 0)
  // Newer writers number each file at random.
  if (time) writer.setDocumentId(QUuid::createUuidV5(QUuid(), writer.title()));
#endif
  if (!pages.PaintAll(writer)) return std::nullopt;
  buffer.close();
  if (time) SetTime(pdf, *time);
  return pdf.toStdString();
}

}  // namespace q40
