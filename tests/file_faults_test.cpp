// What a disk can do to a file that is being written, for each command that writes one: the old file
// stays, byte for byte, nothing is left beside it, and the error says why. Makes the second table of
// docs/faults.md.
#include <csignal>
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

// A command that replaces, or makes, the file `target`.
struct Writer {
  const char* name;
  std::vector<std::string> (*words)(const std::string& source, const std::string& csv,
                                    const std::string& target);
  bool makes_new;  // never replaces
};
const Writer kWriters[] = {
    {"read --force",
     [](const auto& /*source*/, const auto& /*csv*/, const auto& target) {
       return std::vector<std::string>{"read", "-p", "1", "--force", target};
     },
     false},
    {"import -o --force",
     [](const auto& source, const auto& csv, const auto& target) {
       return std::vector<std::string>{"import", source, csv, "-o", target, "--force"};
     },
     false},
    {"export --force",
     [](const auto& source, const auto& /*csv*/, const auto& target) {
       return std::vector<std::string>{"export", "--force", source, target};
     },
     false},
    {"write --backup",
     [](const auto& source, const auto& /*csv*/, const auto& target) {
       return std::vector<std::string>{"write", "-p", "1", "--backup", target, source};
     },
     true},
};

// Puts the trouble around `folder`/target, and takes it away again.
struct Trouble {
  const char* name;
  const char* reason;  // in the message
  void (*make)(const std::string& folder, const std::string& target);
  void (*unmake)(const std::string& folder);
  bool needs_root = false;
};

void Limit(rlim_t bytes) {
  rlimit limit{};
  getrlimit(RLIMIT_FSIZE, &limit);
  limit.rlim_cur = bytes;
  setrlimit(RLIMIT_FSIZE, &limit);
}

const Trouble kTroubles[] = {
    {"the disk takes no more in the middle of the file", "too large",
     [](const std::string& /*folder*/, const std::string& /*target*/) { Limit(1000); },
     [](const std::string& /*folder*/) { Limit(RLIM_INFINITY); }},
    {"the folder is read-only", "ermission denied",
     [](const std::string& folder, const std::string& /*target*/) {
       chmod(folder.c_str(), 0555);
       if (seteuid(kNobody) != 0) ADD_FAILURE();
     },
     [](const std::string& folder) {
       if (seteuid(0) != 0) ADD_FAILURE();
       chmod(folder.c_str(), 0755);
     },
     true},
    {"the folder is gone", "No such file or directory",
     [](const std::string& folder, const std::string& /*target*/) {
       fs::rename(folder, folder + ".away");
     },
     [](const std::string& folder) { fs::rename(folder + ".away", folder); }},
    {"the name is a folder's", "is a folder",
     [](const std::string& /*folder*/, const std::string& target) {
       fs::remove(target);
       fs::create_directory(target);
     },
     [](const std::string& /*folder*/) {}},
    {"the name is a device's", "is a device",
     [](const std::string& /*folder*/, const std::string& target) {
       fs::remove(target);
       fs::create_symlink("/dev/full", target);
     },
     [](const std::string& /*folder*/) {}},
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
  for (const Trouble& trouble : kTroubles) {
    text += Row(trouble.name, "not written (" + std::to_string(kExitCannotWrite) + ")");
  }
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
  for (const Writer& writer : kWriters) {
    for (const Trouble& trouble : kTroubles) {
      if (trouble.needs_root && geteuid() != 0) continue;
      SCOPED_TRACE(std::string(writer.name) + ": " + trouble.name);
      fs::remove_all(folder);
      fs::create_directory(folder);
      if (!writer.makes_new) test::Store(target, "the only copy");
      trouble.make(folder, target);
      const std::string memory(radio_->memory().raw());
      const Result result = Run(writer.words(source, csv, target));
      trouble.unmake(folder);
      EXPECT_EQ(result.code, kExitCannotWrite) << result.err;
      EXPECT_NE(result.err.find(trouble.reason), std::string::npos) << result.err;
      EXPECT_NE(result.err.find(target), std::string::npos) << result.err;
      EXPECT_EQ(radio_->memory().raw(), memory);
      const auto files = std::distance(fs::directory_iterator(folder), fs::directory_iterator());
      if (fs::is_regular_file(target)) {
        EXPECT_EQ(test::Content(target), "the only copy");
        EXPECT_EQ(files, 1);
      } else {
        EXPECT_EQ(files, fs::exists(fs::symlink_status(target)) ? 1 : 0);
      }
    }
    fs::remove_all(folder);
    fs::create_directory(folder);
    test::Store(target, "the only copy");
    std::vector<std::string> words = writer.words(source, csv, target);
    std::erase(words, "--force");
    EXPECT_EQ(Run(words).code, kExitUsage) << writer.name;
    EXPECT_EQ(test::Content(target), "the only copy");
    // Without trouble it works, through a link too.
    fs::rename(target, folder + "/real");
    if (!writer.makes_new) fs::create_symlink("real", target);
    EXPECT_EQ(Run(writer.words(source, csv, target)).code, 0) << writer.name;
    EXPECT_EQ(fs::is_symlink(target), !writer.makes_new);
    EXPECT_GT(test::Content(target).size(), 10'000U);
  }
  test::CheckTable("faults of a disk", Table());
}

}  // namespace
}  // namespace q40
