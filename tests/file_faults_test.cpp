// What a disk can do to a file that is being written, for each command that writes one: the old file
// stays, byte for byte, nothing is left beside it, and the error says why. Makes the second table of
// docs/faults.md.
#include <csignal>
#include <map>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include "document/defaults.h"
#include "programs/exit_codes.h"
#include "support/ctl_fixture.h"
#include "support/generated_table.h"

namespace q40 {
namespace {

namespace fs = std::filesystem;

constexpr uid_t kNobody = 65534;

// A command that replaces, or makes, the file "target" out of "source" and "csv".
struct Writer {
  const char* name;
  std::vector<std::string> words;
  bool makes_new;  // never replaces
};
const Writer kWriters[] = {
    {"read --force", {"read", "-p", "1", "--force", "target"}, false},
    {"import -o --force", {"import", "source", "csv", "-o", "target", "--force"}, false},
    {"export --force", {"export", "--force", "source", "target"}, false},
    {"write --backup", {"write", "-p", "1", "--backup", "target", "source"}, true},
};

void Limit(rlim_t bytes) {
  rlimit limit{};
  getrlimit(RLIMIT_FSIZE, &limit);
  limit.rlim_cur = bytes;
  setrlimit(RLIMIT_FSIZE, &limit);
}

void Become(uid_t user) {
  if (seteuid(user) != 0) ADD_FAILURE();
}

// Puts the trouble around a target in its folder, and takes it away again.
struct Trouble {
  const char* name;
  const char* reason;  // in the message
  void (*make)(const fs::path& target);
  void (*unmake)(const fs::path& folder) = [](const fs::path& /*folder*/) {};
  bool needs_root = false;
};

const Trouble kTroubles[] = {
    {"the disk takes no more in the middle of the file", "too large",
     [](const fs::path& /*target*/) { Limit(1000); },
     [](const fs::path& /*folder*/) { Limit(RLIM_INFINITY); }},
    {"the folder is read-only", "ermission denied",
     [](const fs::path& target) {
       chmod(target.parent_path().c_str(), 0555);
       Become(kNobody);
     },
     [](const fs::path& folder) {
       Become(0);
       chmod(folder.c_str(), 0755);
     },
     true},
    {"the folder is gone", "No such file or directory",
     [](const fs::path& target) {
       fs::rename(target.parent_path(), target.parent_path() += ".away");
     },
     [](const fs::path& folder) { fs::rename(fs::path(folder) += ".away", folder); }},
    {"the name is a folder's", "is a folder",
     [](const fs::path& target) {
       fs::remove(target);
       fs::create_directory(target);
     }},
    {"the name is a device's", "is a device",
     [](const fs::path& target) {
       fs::remove(target);
       fs::create_symlink("/dev/full", target);
     }},
};

class FileFaults : public test::Ctl {};

std::string Row(const std::string& name, const std::string& cell) {
  std::string text = "| " + name + " |";
  for (std::size_t i = 0; i < std::size(kWriters); ++i) text += ' ' + cell + " |";
  return text + '\n';
}

std::string Table() {
  std::string text = "| trouble |";
  for (const Writer& writer : kWriters) text += " `" + std::string(writer.name) + "` |";
  text += '\n' + Row("---", "---");
  for (const Trouble& trouble : kTroubles)
    text += Row(trouble.name, "not written (" + std::to_string(kExitCannotWrite) + ")");
  return text + Row("it exists, without `--force`", "refused (" + std::to_string(kExitUsage) + ")");
}

TEST_F(FileFaults, TheOldFileSurvivesThemAll) {
  std::signal(SIGXFSZ, SIG_IGN);
  const std::string source = Save("source.Q40", test::RandomDocument(5));
  const std::string csv = folder_ / "source.csv";
  ASSERT_EQ(Run({"export", source, csv}).code, 0);
  chmod(folder_.path().c_str(), 0755);
  const std::string folder = folder_ / "target";
  const std::string target = folder + "/file";
  const std::map<std::string, std::string> files = {
      {"source", source}, {"csv", csv}, {"target", target}};
  for (Writer writer : kWriters) {
    for (std::string& word : writer.words) {
      if (const auto named = files.find(word); named != files.end()) word = named->second;
    }
    for (const Trouble& trouble : kTroubles) {
      if (trouble.needs_root && geteuid() != 0) continue;
      SCOPED_TRACE(std::string(writer.name) + ": " + trouble.name);
      fs::remove_all(folder);
      fs::create_directory(folder);
      if (!writer.makes_new) test::Store(target, "the only copy");
      trouble.make(target);
      const std::string memory(radio_->memory().raw());
      const Result result = Run(writer.words);
      trouble.unmake(folder);
      EXPECT_EQ(result.code, kExitCannotWrite) << result.err;
      EXPECT_NE(result.err.find(trouble.reason), std::string::npos) << result.err;
      EXPECT_NE(result.err.find(target), std::string::npos) << result.err;
      EXPECT_EQ(radio_->memory().raw(), memory);
      const bool there = fs::exists(fs::symlink_status(target));
      EXPECT_EQ(std::distance(fs::directory_iterator(folder), {}), there ? 1 : 0);
      if (fs::is_regular_file(target)) {
        EXPECT_EQ(test::Content(target), "the only copy");
      }
    }
    fs::remove_all(folder);
    fs::create_directory(folder);
    test::Store(target, "the only copy");
    std::vector<std::string> words = writer.words;
    std::erase(words, "--force");
    EXPECT_EQ(Run(words).code, kExitUsage) << writer.name;
    EXPECT_EQ(test::Content(target), "the only copy");
    // Without trouble it works, through a link too.
    fs::rename(target, folder + "/real");
    if (!writer.makes_new) fs::create_symlink("real", target);
    EXPECT_EQ(Run(writer.words).code, 0) << writer.name;
    EXPECT_EQ(fs::is_symlink(target), !writer.makes_new);
    EXPECT_GT(test::Content(target).size(), 10'000U);
  }
  test::CheckTable("faults of a disk", Table());
}

}  // namespace
}  // namespace q40
