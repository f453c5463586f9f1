#include "widgets/paths.h"

#include <filesystem>

#include <QFile>
#include <QTextDocument>
#include <QUrl>

#include "base/hex.h"
#include "base/plain_text.h"

namespace q40 {
namespace {

// A byte-order mark has no text at all.
bool MayBeShown(const QString& character) {
  if (character.isEmpty()) return false;
  constexpr char32_t kNonJoiner = 0x200C;  // it and the joiner are part of how words are spelled
  constexpr char32_t kJoiner = 0x200D;
  const char32_t code = character.toUcs4().front();
  switch (QChar::category(code)) {
    case QChar::Other_Control:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph: return false;
    case QChar::Other_Format: return code == kNonJoiner || code == kJoiner;
    default: return code != QChar::ReplacementCharacter;
  }
}

std::string FoundByText(const std::filesystem::path& folder, const std::string& name) {
  const QString text = QString::fromStdString(name);
  std::error_code error;
  for (std::filesystem::directory_iterator entry(folder, error), end; !error && entry != end;
       entry.increment(error)) {
    std::string found = entry->path().filename().string();
    if (QString::fromStdString(found) == text) return found;
  }
  return name;
}

// A replacement character may also stand in a name as itself.
std::filesystem::path Found(const std::filesystem::path& path) {
  std::error_code error;
  if (!path.has_relative_path() || std::filesystem::exists(path, error)) return path;
  const std::filesystem::path folder = Found(path.parent_path());
  return folder / FoundByText(folder, path.filename().string());
}

}  // namespace

QString Shown(std::string_view bytes) {
  QString shown;
  while (!bytes.empty()) {
    const std::string character = FirstCharacters(bytes, 1);
    const QString text = QString::fromStdString(character);
    if (MayBeShown(text)) {
      shown += text;
    } else {
      for (const char byte : character) {
        shown += QStringLiteral("\\x") +
                 QString::fromStdString(HexByteText(static_cast<unsigned char>(byte)));
      }
    }
    bytes.remove_prefix(character.size());
  }
  return shown;
}

QString PlainToolTip(const QString& text) {
  return Qt::mightBeRichText(text) ? Qt::convertFromPlainText(text) : text;
}

std::string PathBytes(const QString& path) {
  std::string bytes = QFile::encodeName(path).toStdString();
  return path.contains(QChar::ReplacementCharacter) ? Found(bytes).string() : bytes;
}

std::string PathBytes(const QUrl& local_file) {
  return QByteArray::fromPercentEncoding(local_file.path(QUrl::FullyEncoded).toLatin1())
      .toStdString();
}

std::string FileName(const std::string& path) {
  return std::filesystem::path(path).filename().string();
}

}  // namespace q40
