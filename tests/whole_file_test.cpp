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
  for (const std::string& way : {std::string("/proc/self/fd"), std::string("/dev/fd"),
                                 std::string("/proc/thread-self/fd"), folder / "streams"}) {
    const std::string path = way + '/' + std::to_string(fileno(log));
    EXPECT_EQ(WriteFile(path, "x").value().what, "is an open stream, not a file") << path;
    const bool of_the_process = way.find("thread") == std::string::npos;
    EXPECT_EQ(StreamNumber(path, StreamUse::kWrite).value_or(-1), of_the_process ? fileno(log) : -1)
        << path;
  }
  EXPECT_EQ(StreamNumber("/dev/fd/x", StreamUse::kRead), std::nullopt);
  EXPECT_EQ(StreamNumber(folder / "1", StreamUse::kRead), std::nullopt);
  std::fclose(log);
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

// A folder in which the first names that are tried are taken, and which cannot be pushed to the disk:
// no reason to call a save failed.
class CrowdedFolder final : public FileSystem {
 public:
  int taken = 0;
  int tries = 0;
  std::string pushed;

  std::FILE* Create(const std::string& path, std::uint32_t mode) override {
    if (++tries > taken) return FileSystem::Create(path, mode);
    errno = EEXIST;
    return nullptr;
  }
  bool SyncFolder(const std::string& path) override {
    pushed = path;
    return false;
  }
};

TEST(WholeFile, TriesOtherNamesForTheTemporaryFileAndGivesUpInTheEnd) {
  test::TempFolder folder;
  CrowdedFolder crowded;
  crowded.taken = 15;
  EXPECT_FALSE(WriteFile(folder / "radio.Q40", "new", crowded));
  EXPECT_EQ(crowded.pushed, folder.path());
  crowded.taken = 1000;
  EXPECT_EQ(WriteFile(folder / "radio.Q40", "newer", crowded).value().what,
            "cannot create a file in its folder: File exists");
  EXPECT_EQ(crowded.tries, 32);
  EXPECT_EQ(test::Content(folder / "radio.Q40"), "new");
}

// A disk on which an old file of another owner and group is replaced. What it may do with the new
// one, and what it answers to what it may not, is the test's.
class SharedDisk final : public FileSystem {
 public:
  SharedDisk(FileRights old, FileRights fresh) : old_(std::move(old)), fresh_(std::move(fresh)) {}
  bool is_root = false;
  bool is_member = false;
  int chown_error = EPERM;
  int chmod_error = 0;
  int sync_error = 0;

  bool Rights(const std::string& path, FileRights& rights) override {
    rights = path.ends_with(".tmp") ? fresh_ : old_;
    return true;
  }
  bool SetOwner(std::FILE* /*file*/, std::uint32_t owner, std::uint32_t group) override {
    if (!is_root && (!is_member || owner != fresh_.owner)) return Fails(chown_error);
    fresh_.owner = owner;
    fresh_.group = group;
    return true;
  }
  bool SetAccessList(std::FILE* /*file*/, const std::string& list) override {
    fresh_.access_list = list;
    return true;
  }
  bool SetMode(std::FILE* /*file*/, std::uint32_t mode) override {
    if (chmod_error != 0) return Fails(chmod_error);
    fresh_.mode = mode;
    return true;
  }
  std::size_t Write(std::FILE* file, std::string_view data) override {
    at_writing = fresh_;
    return FileSystem::Write(file, data);
  }
  bool Sync(std::FILE* file) override {
    return sync_error != 0 ? Fails(sync_error) : FileSystem::Sync(file);
  }
  FileRights at_writing;  // what the new file had when its content came

 private:
  static bool Fails(int error) {
    errno = error;
    return false;
  }
  FileRights old_;
  FileRights fresh_;
};

TEST(WholeFile, KeepsGroupAndOwnerWhereItMayAndElseLetsNobodyIn) {
  test::TempFolder folder;
  test::Store(folder / "radio.Q40", "old");
  enum Who { kRoot, kMember, kStranger };
  // The old file is of owner 1 and group 5, a new one of 2 and 6 and 0644.
  const struct {
    Who who;
    std::uint32_t mode;
    const char* list;
    std::uint32_t owner, group, new_mode;
    const char* new_list;
  } cases[] = {
      {kRoot, 06640, "", 1, 5, 06640, ""},       {kRoot, 0644, "list", 1, 5, 0644, "list"},
      {kMember, 0660, "", 2, 5, 0660, ""},       {kMember, 0644, "list", 2, 5, 0644, "list"},
      {kMember, 06775, "", 2, 5, 02775, ""},     {kStranger, 0640, "", 2, 6, 0600, ""},
      {kStranger, 0664, "", 2, 6, 0644, ""},     {kStranger, 0604, "", 2, 6, 0600, ""},
      {kStranger, 0666, "list", 2, 6, 0600, ""}, {kStranger, 02666, "", 2, 6, 0666, ""},
  };
  for (const auto& c : cases) {
    SharedDisk disk({1, 5, c.mode, c.list}, {2, 6, 0644, {}});
    disk.is_root = c.who == kRoot;
    disk.is_member = c.who == kMember;
    EXPECT_FALSE(WriteFile(folder / "radio.Q40", "new", disk));
    const FileRights& now = disk.at_writing;
    EXPECT_EQ(std::tie(now.owner, now.group, now.mode), std::tie(c.owner, c.group, c.new_mode))
        << c.who << std::oct << c.mode << now.mode;
    EXPECT_EQ(now.access_list, c.new_list) << c.who << std::oct << c.mode;
  }
}

// Whatever a file system does not know is no failure; what fails is.
TEST(WholeFile, TakesNotSupportedForWhatItIs) {
  test::TempFolder folder;
  const std::string path = folder / "radio.Q40";
  const struct {
    int chown_error, chmod_error, sync_error;
    std::uint32_t mode;  // of the old file; a new one has 0644
    bool saved;
  } cases[] = {
      {EINVAL, ENOSYS, EINVAL, 0600, true},
      {ENOTSUP, EOPNOTSUPP, ENOTSUP, 0600, true},
      {EPERM, EPERM, EROFS, 0664, true},
      {EPERM, EPERM, 0, 0600, false},
      {EPERM, EIO, 0, 0644, true},
      {EPERM, EIO, 0, 0600, false},
      {EIO, 0, 0, 0644, false},
      {EPERM, 0, EIO, 0644, false},
      {EPERM, 0, ENOSPC, 0644, false},
  };
  for (const auto& c : cases) {
    test::Store(path, "old");
    SharedDisk disk({1, 5, c.mode, {}}, {2, 5, 0644, {}});
    disk.chown_error = c.chown_error;
    disk.chmod_error = c.chmod_error;
    disk.sync_error = c.sync_error;
    EXPECT_EQ(!WriteFile(path, "new", disk), c.saved) << c.chmod_error << ' ' << c.sync_error;
    EXPECT_EQ(test::Content(path), c.saved ? "new" : "old");
    EXPECT_EQ(folder.FileCount(), 1U);
  }
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
