// Files on disk below the formats: reading and replacing them, the port's number, standard streams.
#include "files/whole_file.h"

#include <cerrno>
#include <fcntl.h>
#include <functional>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "files/port_number_file.h"
#include "files/standard_streams.h"
#include "support/temp_folder.h"

namespace q40 {
namespace {

namespace fs = std::filesystem;

void MakeSocket(const std::string& path) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  ASSERT_LT(path.size(), sizeof address.sun_path);
  path.copy(static_cast<char*>(address.sun_path), path.size());
  const int handle = socket(AF_UNIX, SOCK_STREAM, 0);
  ASSERT_EQ(bind(handle, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
  close(handle);
}

TEST(FileReading, SaysWhyAPathCannotBeRead) {
  test::TempFolder folder;
  ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
  MakeSocket(folder / "socket");
  fs::create_symlink("loop", folder / "loop");
  const struct {
    std::string path;
    const char* what;
  } cases[] = {{folder.path(), "is a folder, not a file"},
               {folder / "pipe", "is a pipe, not a file"},
               {folder / "socket", "is a socket, not a file"},
               {"/dev/null", "is a device, not a file"},
               {folder / "missing", "No such file or directory"},
               {folder / "loop", "Too many levels of symbolic links"},
               {folder / std::string(300, 'n'), "File name too long"},
               {"/proc/self/mem", "Input/output error"}};  // can be opened, but not read
  for (const auto& c : cases) {
    std::string content = "old";
    const auto problem = ReadFile(c.path, 1000, content);
    ASSERT_TRUE(problem) << c.path;
    EXPECT_EQ(problem->what, c.what);
    EXPECT_EQ(problem->path, c.path);
    EXPECT_EQ(problem->kind, FileProblem::Kind::kBadData);
  }
}

TEST(FileReading, ReadsUpToItsLimit) {
  test::TempFolder folder;
  const std::string path = folder / "file";
  std::string whole(200'000, 'a');
  for (std::size_t i = 0; i < whole.size(); ++i) whole[i] = static_cast<char>(i * i / 7);
  test::Store(path, whole);
  for (const std::size_t limit : {0U, 1U, 65536U, 65537U, 199'999U, 200'000U, 1'000'000U}) {
    std::string content = "old";
    EXPECT_FALSE(ReadFile(path, limit, content));
    EXPECT_TRUE(content == whole.substr(0, limit)) << limit;
  }
}

TEST(FileWriting, FindsItsTargetThroughLinksAndWithoutAFolder) {
  test::TempFolder folder;
  fs::create_directory(folder / "real");
  fs::create_symlink(folder / "real/radio.Q40", folder / "absolute");
  fs::create_symlink("absolute", folder / "chain");
  fs::create_symlink("loop", folder / "loop");
  EXPECT_FALSE(WriteFile(folder / "chain", "through two links"));
  EXPECT_EQ(test::Content(folder / "real/radio.Q40"), "through two links");
  EXPECT_TRUE(fs::is_symlink(folder / "chain") && fs::is_symlink(folder / "absolute"));
  const auto problem = WriteFile(folder / "loop", "x");
  ASSERT_TRUE(problem);
  EXPECT_EQ(problem->what, "is not a regular file");
  EXPECT_TRUE(fs::is_symlink(folder / "loop"));

  const fs::path before = fs::current_path();
  fs::current_path(folder.path());
  EXPECT_FALSE(WriteFile("here.Q40", "no folder named"));
  fs::current_path(before);
  EXPECT_EQ(test::Content(folder / "here.Q40"), "no folder named");
}

// A folder in which the first names that are tried are taken.
class CrowdedFolder final : public FileSystem {
 public:
  explicit CrowdedFolder(int taken) : taken_(taken) {}
  int tries = 0;
  std::string synced;

  std::FILE* Create(const std::string& path) override {
    if (++tries > taken_) return FileSystem::Create(path);
    errno = EEXIST;
    return nullptr;
  }
  bool SyncFolder(const std::string& path) override {
    synced = path;
    errno = EIO;
    return false;
  }

 private:
  int taken_;
};

TEST(FileWriting, TriesOtherNamesForTheTemporaryFileAndGivesUpInTheEnd) {
  test::TempFolder folder;
  test::Store(folder / "radio.Q40", "old");
  CrowdedFolder some(15);
  // That the folder could not be pushed to the disk does not make the save fail.
  EXPECT_FALSE(WriteFile(folder / "radio.Q40", "new", some));
  EXPECT_EQ(test::Content(folder / "radio.Q40"), "new");
  EXPECT_EQ(some.tries, 16);
  EXPECT_EQ(some.synced, folder.path());
  CrowdedFolder full(1000);
  const auto problem = WriteFile(folder / "radio.Q40", "newer", full);
  ASSERT_TRUE(problem);
  EXPECT_EQ(problem->what, "cannot create a file in its folder: File exists");
  EXPECT_EQ(full.tries, 16);
  EXPECT_EQ(test::Content(folder / "radio.Q40"), "new");
}

TEST(FileSystem, AFailingCallLeavesItsReason) {
  test::TempFolder folder;
  const std::string missing = folder / "nowhere/file";
  FileSystem& system = SystemFiles();
  const struct {
    const char* name;
    std::function<bool()> call;
  } calls[] = {{"MayWrite", [&] { return system.MayWrite(missing); }},
               {"Create", [&] { return system.Create(missing) != nullptr; }},
               {"Size", [&] { return system.Size(missing) >= 0; }},
               {"CopyRights", [&] { return system.CopyRights(missing, folder.path()); }},
               {"Rename", [&] { return system.Rename(missing, folder / "b"); }},
               {"SyncFolder", [&] { return system.SyncFolder(missing); }}};
  for (const auto& c : calls) {
    errno = 0;
    EXPECT_FALSE(c.call()) << c.name;
    EXPECT_EQ(errno, ENOENT) << c.name;
  }
  EXPECT_FALSE(system.Remove(missing));
  test::Store(folder / "taken", "");
  EXPECT_EQ(system.Create(folder / "taken"), nullptr);
  EXPECT_EQ(errno, EEXIST);
  // A file system without fsync has nothing to push.
  std::FILE* null = std::fopen("/dev/null", "w");
  ASSERT_NE(null, nullptr);
  EXPECT_TRUE(system.Sync(null));
  EXPECT_TRUE(system.Close(null));
}

TEST(PortNumberFile, TextsAndPlaces) {
  const struct {
    const char* text;
    int number;
  } cases[] = {{"3\r\n", 3},
               {" 14 ", 14},
               {"03", 3},
               {"3,4", 3},
               {"15", 1},
               {"0", 1},
               {"-1", 1},
               {"3.7", 1},
               {"abc", 1},
               {"", 1},
               {"99999999999999999999", 1},
               {"\xEF\xBB\xBF"
                "5",
                1},
               {"5\n7", 5}};
  for (const auto& c : cases) EXPECT_EQ(PortNumberIn(c.text), c.number) << c.text;

  test::TempFolder folder;
  const PortNumberFile writable(folder.path(), folder / "user");
  EXPECT_EQ(writable.Read(), 1);
  // Where the program's folder cannot be written, the user's serves and counts.
  const PortNumberFile installed(folder / "nowhere", folder / "user");
  installed.Write(9);
  EXPECT_EQ(installed.Read(), 9);
  EXPECT_EQ(writable.Read(), 9);
  test::Store(folder / "RX-Q40.ini", "3\r\n");
  EXPECT_EQ(writable.Read(), 9);
  writable.Write(4);
  EXPECT_EQ(writable.Read(), 4);
  EXPECT_FALSE(std::filesystem::exists(folder / "user/RX-Q40.ini"));
}

// Not even where the program's folder could be written, as root can.
TEST(PortNumberFile, AnInstalledProgramKeepsTheUsersNumberApart) {
  test::TempFolder prefix;
  std::filesystem::create_directories(prefix / "bin");
  std::filesystem::create_directories(prefix / "share/applications");
  test::Store(prefix / "share/applications/rxq40.desktop", "");
  const PortNumberFile mine(prefix / "bin", prefix / "me");
  const PortNumberFile yours(prefix / "bin", prefix / "you");
  mine.Write(9);
  EXPECT_FALSE(std::filesystem::exists(prefix / "bin/RX-Q40.ini"));
  EXPECT_EQ(mine.Read(), 9);
  EXPECT_EQ(yours.Read(), 1);
  // One that was put there for everybody is read until a user has an own one.
  test::Store(prefix / "bin/RX-Q40.ini", "5\r\n");
  EXPECT_EQ(yours.Read(), 5);
  yours.Write(6);
  EXPECT_EQ(yours.Read(), 6);
  EXPECT_EQ(mine.Read(), 9);
}

TEST(StandardStreams, ClosedOnesAreOpenedOnTheNullDevice) {
  struct stat null {};
  ASSERT_EQ(stat("/dev/null", &null), 0);
  int kept[3];
  for (int handle = 0; handle < 3; ++handle) kept[handle] = fcntl(handle, F_DUPFD, 10);
  close(0);
  close(2);
  OpenStandardStreams();
  struct stat streams[3] = {};
  int found[3];
  for (int handle = 0; handle < 3; ++handle) found[handle] = fstat(handle, &streams[handle]);
  struct stat out {};
  const int out_found = fstat(kept[1], &out);
  for (int handle = 0; handle < 3; ++handle) {
    if (kept[handle] >= 0) dup2(kept[handle], handle);
    close(kept[handle]);
  }
  for (const int handle : {0, 2}) {
    EXPECT_EQ(found[handle], 0) << handle;
    EXPECT_EQ(streams[handle].st_rdev, null.st_rdev) << handle;
  }
  EXPECT_EQ(out_found, 0);
  EXPECT_EQ(streams[1].st_ino, out.st_ino);  // the open one stays what it was
}

TEST(NewFiles, ReplaceNothingOnAnyFileSystem) {
  test::TempFolder folder;
  test::Store(folder / "new", "new");
  test::Store(folder / "old", "the only copy");
  for (const bool in_one_step : {true, false}) {
    const auto rename = [&](const std::string& to) {
      return in_one_step ? NewFilesOnly().Rename(folder / "new", to)
                         : RenameWhereNothingIs(folder / "new", to);
    };
    EXPECT_FALSE(rename(folder / "old"));
    EXPECT_EQ(errno, EEXIST);
    EXPECT_EQ(test::Content(folder / "old"), "the only copy");
    EXPECT_TRUE(rename(folder / "free"));
    EXPECT_EQ(test::Content(folder / "free"), "new");
    std::filesystem::rename(folder / "free", folder / "new");
  }
  // What the system refuses for another reason, here a folder into itself, is tried the other way.
  std::filesystem::create_directory(folder / "sub");
  EXPECT_FALSE(NewFilesOnly().Rename(folder / "sub", folder / "sub/sub"));
}

}  // namespace
}  // namespace q40
