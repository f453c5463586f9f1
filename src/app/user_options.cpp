#include "app/user_options.h"

#include <filesystem>

#include <QFile>
#include <QRect>
#include <QSettings>

#include "radio/models.h"

namespace q40 {
namespace {

constexpr const char* kRecentKey = "RecentFiles";

class File {
 public:
  File()
      : settings_(
            QSettings::IniFormat, QSettings::UserScope,
            QString::fromUtf8(kWindowTitle.data(), static_cast<qsizetype>(kWindowTitle.size()))) {
    settings_.beginGroup(QStringLiteral("Settings"));
  }
  QSettings* operator->() { return &settings_; }

 private:
  QSettings settings_;
};

// As "file:///..." with percent signs, in which a name keeps its bytes. An entry of an earlier
// version is the path itself.
constexpr QByteArrayView kScheme = "file://";

QString Stored(const std::string& path) {
  return QString::fromLatin1(kScheme) +
         QString::fromLatin1(QByteArray::fromStdString(path).toPercentEncoding("/"));
}

std::string Path(const QString& stored) {
  QByteArray path = QFile::encodeName(stored);
  if (path.startsWith(kScheme)) {
    path = QByteArray::fromPercentEncoding(path.mid(kScheme.size()));
  }
  return path.toStdString();
}

void StoreRecentFiles(const std::vector<std::string>& files) {
  QStringList stored;
  for (const std::string& path : files) stored << Stored(path);
  File()->setValue(QLatin1String(kRecentKey), stored);
}

std::string Absolute(const std::string& path) {
  std::error_code error;
  const std::filesystem::path absolute = std::filesystem::absolute(path, error);
  return error ? path : absolute.lexically_normal().string();
}

}  // namespace

bool UserOptions::IsOn(const char* key) { return File()->value(QLatin1String(key)).toBool(); }

void UserOptions::SetOn(const char* key, bool on) { File()->setValue(QLatin1String(key), on); }

QByteArray UserOptions::Bytes(const char* key) {
  return QByteArray::fromBase64(File()->value(QLatin1String(key)).toByteArray());
}

void UserOptions::SetBytes(const char* key, const QByteArray& bytes) {
  File()->setValue(QLatin1String(key), bytes.toBase64());
}

std::vector<std::string> UserOptions::RecentFiles() {
  std::vector<std::string> files;
  for (const QString& stored : File()->value(QLatin1String(kRecentKey)).toStringList()) {
    if (files.size() < kRecentFiles) files.push_back(Path(stored));
  }
  return files;
}

void UserOptions::AddRecentFile(const std::string& path) {
  const std::string absolute = Absolute(path);
  std::vector<std::string> files = RecentFiles();
  std::erase(files, absolute);
  files.insert(files.begin(), absolute);
  if (files.size() > kRecentFiles) files.resize(kRecentFiles);
  StoreRecentFiles(files);
}

void UserOptions::ForgetRecentFile(const std::string& path) {
  std::vector<std::string> files = RecentFiles();
  std::erase(files, path);
  StoreRecentFiles(files);
}

void UserOptions::RememberPlacement(const QRect& frame) {
  const struct {
    const char* key;
    int twips;
  } values[] = {{"MainLeft", frame.left()},
                {"MainTop", frame.top()},
                {"MainWidth", frame.width()},
                {"MainHeight", frame.height()}};
  File file;
  for (const auto& value : values) {
    file->setValue(QLatin1String(value.key), QString::number(value.twips));
  }
}

}  // namespace q40
