// What the program remembers for its user between runs, beside the port number.
#pragma once

#include <string>
#include <vector>

class QByteArray;
class QRect;

namespace q40 {

// One INI file in the user's configuration folder. A file that cannot be read or written means that
// nothing is remembered, and is no error.
class UserOptions {
 public:
  // Check marks; off until they are set.
  [[nodiscard]] static bool IsOn(const char* key);
  static void SetOn(const char* key, bool on);

  // What a window wants to find again; empty until it is set.
  [[nodiscard]] static QByteArray Bytes(const char* key);
  static void SetBytes(const char* key, const QByteArray& bytes);

  // Clone files last opened or saved, the latest first, with absolute paths.
  [[nodiscard]] static std::vector<std::string> RecentFiles();
  static void AddRecentFile(const std::string& path);
  static void ForgetRecentFile(const std::string& path);
  static constexpr std::size_t kRecentFiles = 8;

  // In twips. Written for other programs; the window itself always opens at its own size.
  static void RememberPlacement(const QRect& frame);
};

}  // namespace q40
