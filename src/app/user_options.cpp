#include "app/user_options.h"

#include <QFileInfo>
#include <QRect>
#include <QSettings>

#include "app/tables/models.h"

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

}  // namespace

bool UserOptions::IsOn(const char* key) { return File()->value(QLatin1String(key)).toBool(); }

void UserOptions::SetOn(const char* key, bool on) { File()->setValue(QLatin1String(key), on); }

QStringList UserOptions::RecentFiles() {
  return File()->value(QLatin1String(kRecentKey)).toStringList().mid(0, kRecentFiles);
}

void UserOptions::AddRecentFile(const QString& path) {
  const QString absolute = QFileInfo(path).absoluteFilePath();
  QStringList files = RecentFiles();
  files.removeAll(absolute);
  files.prepend(absolute);
  File()->setValue(QLatin1String(kRecentKey), files.mid(0, kRecentFiles));
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
