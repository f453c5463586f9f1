// Paths between the system, for which they are bytes, and the toolkit, for which they are text.
//
// The program keeps paths as the bytes that the system has; a text cannot hold those that are not
// UTF-8.
#pragma once

#include <string>
#include <string_view>

#include <QString>

class QUrl;

namespace q40 {

// For the user to read, on one line: bytes that are no text, control characters and marks that turn
// the direction of writing as \xNN.
[[nodiscard]] QString Shown(std::string_view bytes);
// A tool tip with exactly this text, whatever markup it may resemble.
[[nodiscard]] QString PlainToolTip(const QString& text);

// The file that the toolkit, or a user of its dialogs, means by a text. In a text each byte that is
// not UTF-8 has become a replacement character; such a name is looked for in its folder.
[[nodiscard]] std::string PathBytes(const QString& path);
[[nodiscard]] std::string PathBytes(const QUrl& local_file);

// Its last part.
[[nodiscard]] std::string FileName(const std::string& path);

}  // namespace q40
