// The rooms of src/ and the arrows between them: what ARCHITECTURE.md allows is all there is.
#include <filesystem>
#include <map>
#include <set>
#include <sstream>

#include <gtest/gtest.h>

#include "support/temp_folder.h"

namespace q40::test {
namespace {

namespace fs = std::filesystem;

struct Room {
  std::set<std::string> uses;  // with what these use in their turn
  std::string toolkit;         // "-", "Qt Core", "Qt Widgets"
};
using Rooms = std::map<std::string, Room>;

// Words in backticks: "`radio`, `base`".
std::set<std::string> Quoted(const std::string& text) {
  std::set<std::string> words;
  std::istringstream in(text);
  std::string word;
  for (bool inside = false; std::getline(in, word, '`'); inside = !inside) {
    if (inside) words.insert(word);
  }
  return words;
}

// The rows "| `room` | holds | `uses` | toolkit |" of the table of rooms.
Rooms ReadRooms() {
  Rooms rooms;
  std::istringstream text(Content(std::string(PROJECT_FOLDER) + "/ARCHITECTURE.md"));
  std::string line;
  while (std::getline(text, line) && !line.starts_with("| room |")) {
  }
  while (std::getline(text, line) && line.starts_with("|")) {
    std::vector<std::string> cells;
    std::istringstream row(line);
    for (std::string cell; std::getline(row, cell, '|');) cells.push_back(cell);
    const auto name = Quoted(cells.at(1));
    if (name.empty()) continue;  // the line under the headings
    const std::size_t first = cells.at(4).find_first_not_of(' ');
    const std::size_t last = cells[4].find_last_not_of(' ');
    rooms[*name.begin()] = {Quoted(cells.at(3)), cells[4].substr(first, last - first + 1)};
  }
  return rooms;
}

// Adds what the used rooms use. A room that reaches itself stands in a circle.
void Close(Rooms& rooms) {
  for (std::size_t i = 0; i < rooms.size(); ++i) {
    for (auto& [name, room] : rooms) {
      for (const std::string& used : std::set(room.uses)) {
        const auto other = rooms.find(used);
        ASSERT_NE(other, rooms.end()) << name << " uses " << used << ", which is no room";
        room.uses.insert(other->second.uses.begin(), other->second.uses.end());
      }
    }
  }
}

TEST(Rooms, IncludesGoOnlyWhereTheTableAllows) {
  Rooms rooms = ReadRooms();
  ASSERT_GE(rooms.size(), 10U);
  Close(rooms);
  for (const auto& [name, room] : rooms) EXPECT_FALSE(room.uses.contains(name)) << name;
  const fs::path source = fs::path(PROJECT_FOLDER) / "src";
  for (const auto& entry : fs::recursive_directory_iterator(source)) {
    const std::string extension = entry.path().extension();
    if (extension != ".h" && extension != ".cpp") continue;
    const fs::path file = fs::relative(entry.path(), source);
    const std::string name = file.parent_path();
    ASSERT_TRUE(rooms.contains(name)) << file << " lies in no room of the table";
    const Room& room = rooms[name];
    std::istringstream text(Content(entry.path()));
    for (std::string line; std::getline(text, line);) {
      if (line.starts_with("#include \"")) {
        const fs::path target = line.substr(10, line.find('"', 10) - 10);
        const std::string other = target.parent_path();
        if (other.empty()) continue;  // generated: the version, what moc makes
        EXPECT_TRUE(other == name || room.uses.contains(other)) << file << ": " << line;
      } else if (line.starts_with("#include <Q")) {
        EXPECT_NE(room.toolkit, "-") << file << ": " << line;
      }
    }
  }
}

}  // namespace
}  // namespace q40::test
