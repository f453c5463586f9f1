// Files on disk below the formats: reading and replacing them, the port's number, standard streams.
#include "files/whole_file.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <tuple>
#include <unistd.h>

#include <gtest/gtest.h>

#include "files/port_number_file.h"
#include "files/standard_streams.h"
#include "support/temp_folder.h"

namespace q40 {
namespace {

namespace fs = std::filesystem;

TEST(WholeFile, SaysWhyAPathCannotBeReadOrWritten) {
  test::TempFolder folder;
  ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
  ASSERT_EQ(mknod((folder / "socket").c_str(), S_IFSOCK | 0600, 0), 0);
  fs::create_symlink("loop", folder / "loop");
  constexpr const char* kFolder = "is a folder, not a file";
  constexpr const char* kMissing = "No such file or directory";
  const std::tuple<std::string, const char*, const char*> cases[] = {
      {folder.path(), kFolder, kFolder},
      {folder.path() + "/", kFolder, "is not the name of a file"},
      {"", kMissing, "is not the name of a file"},
      {folder / "pipe", "is a pipe, not a file", "is a pipe, not a file"},
      {folder / "socket", "is a socket, not a file", "is a socket, not a file"},
      {"/dev/null", "is a device, not a file", "is a device, not a file"},
      {folder / "loop", "Too many levels of symbolic links", "is not a regular file"},
      {folder / "no/file", kMissing,
       "cannot create a file in its folder: No such file or directory"}};
  std::string content = "old";
  for (const auto& [path, read, write] : cases) {
    const FileProblem unreadable = ReadFile(path, 1000, content).value();
    EXPECT_EQ(unreadable.what, read);
    EXPECT_EQ(unreadable.path, path);
    EXPECT_EQ(unreadable.kind, FileProblem::Kind::kBadData);
    const FileProblem unwritable = WriteFile(path, "x").value();
    EXPECT_EQ(unwritable.what, write) << path;
    EXPECT_EQ(unwritable.kind, FileProblem::Kind::kCannotWrite);
  }
  EXPECT_TRUE(fs::is_symlink(folder / "loop"));
  // Can be opened, but not read.
  EXPECT_EQ(ReadFile("/proc/self/mem", 1000, content).value().what, "Input/output error");
  // What somebody is just writing, as behind /dev/stdout.
  std::FILE* log = std::fopen((folder / "log").c_str(), "w");
  fs::create_symlink("/dev/fd", folder / "streams");
  for (const std::string& way : {std::string("/proc/self/fd"), folder / "streams"}) {
    const std::string path = way + '/' + std::to_string(fileno(log));
    EXPECT_EQ(WriteFile(path, "x").value().what, "is an open stream, not a file") << path;
    EXPECT_EQ(StreamNumber(path, StreamUse::kWrite), fileno(log)) << path;
  }
  std::fclose(log);
  EXPECT_EQ(StreamNumber("/dev/fd/x", StreamUse::kRead), std::nullopt);
  EXPECT_EQ(StreamNumber(folder / "1", StreamUse::kRead), std::nullopt);
}

TEST(WholeFile, ReadsUpToItsLimit) {
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

TEST(WholeFile, FollowsLinksAndKeepsThemAndTheRights) {
  test::TempFolder folder;
  fs::create_directory(folder / "real");
  const std::string real = folder / "real/radio.Q40";
  test::Store(real, "old");
  fs::permissions(real, fs::perms::owner_read | fs::perms::owner_write);
  fs::create_symlink(real, folder / "absolute");
  fs::create_symlink("absolute", folder / "chain");
  fs::create_symlink("real/new.Q40", folder / "dangling");
  EXPECT_FALSE(WriteFile(folder / "chain", "through two links"));
  EXPECT_FALSE(WriteFile(folder / "dangling", "fresh"));
  EXPECT_EQ(test::Content(real), "through two links");
  EXPECT_EQ(test::Content(folder / "real/new.Q40"), "fresh");
  EXPECT_EQ(fs::status(real).permissions(), fs::perms::owner_read | fs::perms::owner_write);
  EXPECT_TRUE(fs::is_symlink(folder / "absolute") && fs::is_symlink(folder / "chain"));
  EXPECT_TRUE(fs::is_symlink(folder / "dangling"));
}

TEST(WholeFile, TakesLongNamesAndNamesWithoutAFolderAndCheckingLeavesNothing) {
  test::TempFolder folder;
  const std::string name(250, 'n');
  const fs::path before = fs::current_path();
  fs::current_path(folder.path());
  EXPECT_FALSE(WriteFile(name, "text"));
  EXPECT_FALSE(CheckReplaceable(name));
  fs::current_path(before);
  EXPECT_EQ(test::Content(folder / name), "text");
  EXPECT_EQ(folder.FileCount(), 1U);
}

// On this disk the old file is of owner 1 and group 5, a new one of 2 and 6 and 0644. What it allows,
// or what it answers, is the test's.
class SharedDisk final : public FileSystem {
 public:
  static constexpr int kRoot = -1, kMember = -2;
  int chown = 0;  // or an error, as the next
  int chmod = 0;
  int sync = 0;
  FileRights old{1, 5, 0, {}};
  FileRights fresh{2, 6, 0644, {}};
  FileRights at_writing;  // what the new file had when its content came
  int taken = 0;          // of the first names that are tried
  int tries = 0;
  std::string pushed;  // the folder

  std::FILE* Create(const std::string& path, std::uint32_t file_mode) override {
    if (++tries > taken) return FileSystem::Create(path, file_mode);
    errno = EEXIST;
    return nullptr;
  }
  // That cannot be pushed to the disk: no reason to call a save failed.
  bool SyncFolder(const std::string& path) override {
    pushed = path;
    return false;
  }

  bool Rights(const std::string& path, FileRights& rights) override {
    rights = path.ends_with(".tmp") ? fresh : old;
    return true;
  }
  bool SetOwner(std::FILE* /*file*/, std::uint32_t owner, std::uint32_t group) override {
    if (chown == kMember && owner != fresh.owner) return Answers(EPERM);
    if (chown > 0) return Answers(chown);
    fresh.owner = owner;
    fresh.group = group;
    return true;
  }
  bool SetAccessList(std::FILE* /*file*/, const std::string& list) override {
    fresh.access_list = list;
    return true;
  }
  bool SetMode(std::FILE* /*file*/, std::uint32_t mode) override {
    if (chmod == 0) fresh.mode = mode;
    return Answers(chmod);
  }
  std::size_t Write(std::FILE* file, std::string_view data) override {
    at_writing = fresh;
    return FileSystem::Write(file, data);
  }
  bool Sync(std::FILE* /*file*/) override { return Answers(sync); }

 private:
  static bool Answers(int error) {
    errno = error;
    return error == 0;
  }
};

TEST(WholeFile, KeepsTheRightsThatItMayAndElseLetsNobodyIn) {
  constexpr int kRoot = SharedDisk::kRoot;
  constexpr int kMember = SharedDisk::kMember;
  test::TempFolder folder;
  const std::string path = folder / "radio.Q40";
  const struct {
    int chown, chmod, sync;
    std::uint32_t old_mode;
    const char* list;
    std::uint32_t owner, group, mode;  // 0: the save fails
    const char* new_list = "";
  } cases[] = {{kRoot, 0, 0, 06640, "", 1, 5, 06640},
               {kRoot, 0, 0, 0644, "list", 1, 5, 0644, "list"},
               {kMember, 0, 0, 06775, "", 2, 5, 02775},
               {kMember, 0, 0, 0644, "list", 2, 5, 0644, "list"},
               {EPERM, 0, 0, 0640, "", 2, 6, 0600},
               {EPERM, 0, 0, 0664, "", 2, 6, 0644},
               {EPERM, 0, 0, 0604, "", 2, 6, 0600},
               {EPERM, 0, 0, 02666, "", 2, 6, 0666},
               {EPERM, 0, 0, 0666, "list", 2, 6, 0600},
               // What a file system does not know is no failure, nor what it need not do.
               {EINVAL, ENOSYS, EINVAL, 0600, "", 2, 6, 0644},
               {ENOTSUP, EOPNOTSUPP, EROFS, 0600, "", 2, 6, 0644},
               {kMember, EPERM, 0, 0664, "", 2, 5, 0644},
               {kMember, EIO, ENOTSUP, 0644, "", 2, 5, 0644},
               // What fails is one.
               {kMember, EPERM, 0, 0600, "", 0, 0, 0},
               {kMember, EIO, 0, 0664, "", 0, 0, 0},
               {EIO, 0, 0, 0644, "", 0, 0, 0},
               {kRoot, 0, EIO, 0644, "", 0, 0, 0}};
  for (const auto& c : cases) {
    SCOPED_TRACE(testing::Message() << c.chown << ' ' << c.chmod << ' ' << std::oct << c.old_mode);
    test::Store(path, "old");
    SharedDisk disk;
    std::tie(disk.chown, disk.chmod, disk.sync) = std::tie(c.chown, c.chmod, c.sync);
    disk.old.mode = c.old_mode;
    disk.old.access_list = c.list;
    EXPECT_EQ(!WriteFile(path, "new", disk), c.mode != 0);
    EXPECT_EQ(test::Content(path), c.mode != 0 ? "new" : "old");
    EXPECT_EQ(folder.FileCount(), 1U);
    if (c.mode == 0) continue;
    const FileRights& now = disk.at_writing;
    EXPECT_EQ(std::tie(now.owner, now.group, now.mode), std::tie(c.owner, c.group, c.mode));
    EXPECT_EQ(now.access_list, c.new_list);
  }
}

TEST(WholeFile, TriesOtherNamesForTheTemporaryFileAndGivesUpInTheEnd) {
  test::TempFolder folder;
  SharedDisk crowded;
  crowded.taken = 15;
  EXPECT_FALSE(WriteFile(folder / "radio.Q40", "new", crowded));
  EXPECT_EQ(crowded.pushed, folder.path());
  crowded.taken = 1000;
  EXPECT_EQ(WriteFile(folder / "radio.Q40", "newer", crowded).value().what,
            "cannot create a file in its folder: File exists");
  EXPECT_EQ(crowded.tries, 32);
  EXPECT_EQ(test::Content(folder / "radio.Q40"), "new");
}

TEST(FileSystem, KeepsTheReasonOfAFailureAndReplacesNothingByItself) {
  test::TempFolder folder;
  FileSystem& system = SystemFiles();
  test::Store(folder / "taken", "");
  EXPECT_EQ(system.Create(folder / "taken", 0666), nullptr);
  EXPECT_EQ(errno, EEXIST);
  FileRights rights;
  EXPECT_FALSE(system.Rights(folder / "missing", rights));
  EXPECT_EQ(errno, ENOENT);
  std::FILE* null = std::fopen("/dev/null", "w");
  EXPECT_FALSE(system.Sync(null));
  EXPECT_TRUE(IsUnsupported(errno));
  EXPECT_TRUE(system.Close(null));
}

TEST(PortNumberFile, HoldsANumberFrom1To14) {
  const std::pair<const char*, int> numbers[] = {
      {"3\r\n", 3}, {" 14 ", 14}, {"03", 3}, {"3,4", 3}, {"5\n7", 5}};
  for (const auto& [text, number] : numbers) EXPECT_EQ(PortNumberIn(text), number) << text;
  for (const char* other :
       {"15", "0", "-1", "3.7", "abc", "", "\357\273\2775", "99999999999999999999"}) {
    EXPECT_EQ(PortNumberIn(other), 1) << other;
  }
}

// Where the program's folder cannot be written, the user's serves and counts.
TEST(PortNumberFile, LiesInTheProgramsFolderOrElseInTheUsers) {
  test::TempFolder folder;
  const PortNumberFile writable(folder.path(), folder / "user");
  EXPECT_EQ(writable.Read(), 1);
  const PortNumberFile closed(folder / "nowhere", folder / "user");
  closed.Write(9);
  test::Store(folder / "RX-Q40.ini", "3\r\n");
  EXPECT_EQ(writable.Read(), 9);
  writable.Write(4);
  EXPECT_EQ(writable.Read(), 4);
  EXPECT_FALSE(fs::exists(folder / "user/RX-Q40.ini"));
}

// Not even where the program's folder could be written, as root can.
TEST(PortNumberFile, AnInstalledProgramKeepsTheUsersNumberApart) {
  test::TempFolder prefix;
  fs::create_directory(prefix / "bin");
  fs::create_directories(prefix / "share/applications");
  test::Store(prefix / "share/applications/rxq40.desktop", "");
  const PortNumberFile mine(prefix / "bin", prefix / "me");
  const PortNumberFile yours(prefix / "bin", prefix / "you");
  mine.Write(9);
  EXPECT_FALSE(fs::exists(prefix / "bin/RX-Q40.ini"));
  EXPECT_EQ(yours.Read(), 1);
  // One that was put there for everybody is read until a user has an own one.
  test::Store(prefix / "bin/RX-Q40.ini", "5\r\n");
  EXPECT_EQ(yours.Read(), 5);
  EXPECT_EQ(mine.Read(), 9);
}

TEST(StandardStreams, ClosedOnesAreOpenedOnTheNullDevice) {
  struct stat null {};
  ASSERT_EQ(stat("/dev/null", &null), 0);
  for (const int handle : {0, 2}) {
    const int kept = fcntl(handle, F_DUPFD, 10);
    close(handle);
    OpenStandardStreams();
    struct stat stream {};
    EXPECT_EQ(fstat(handle, &stream), 0) << handle;
    EXPECT_EQ(stream.st_rdev, null.st_rdev) << handle;
    const StreamUse use = handle == 0 ? StreamUse::kRead : StreamUse::kWrite;
    EXPECT_EQ(OpenStream(handle, use), nullptr) << handle;
    dup2(kept, handle);
    close(kept);
  }
}

TEST(NewFiles, ReplaceNothing) {
  test::TempFolder folder;
  test::Store(folder / "new", "new");
  test::Store(folder / "old", "the only copy");
  EXPECT_FALSE(RenameWhereNothingIs(folder / "new", folder / "old"));
  EXPECT_EQ(errno, EEXIST);
  EXPECT_EQ(test::Content(folder / "old"), "the only copy");
  EXPECT_TRUE(RenameWhereNothingIs(folder / "new", folder / "free"));
  EXPECT_EQ(test::Content(folder / "free"), "new");
  // What the system refuses for another reason, here a folder into itself, is tried the other way.
  fs::create_directory(folder / "sub");
  EXPECT_FALSE(NewFilesOnly().Rename(folder / "sub", folder / "sub/sub"));
}

}  // namespace
}  // namespace q40
