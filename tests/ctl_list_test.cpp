// import --map: lists that others have made, and the mappings that are kept for them.
#include <filesystem>

#include <gtest/gtest.h>

#include "document/defaults.h"
#include "support/ctl_fixture.h"

namespace q40 {
namespace {

using namespace test;

class CtlList : public Ctl {
 protected:
  CtlList() {
    Save("radio.Q40", FreshData());
    Store(list_, "Call,TX,RX\nAAA,145.6,145.0\nBBB,150.0,149.4\n");
  }
  Result Import(const std::string& map, const std::vector<std::string>& more = {}) {
    std::vector<std::string> words = {"import", radio_, list_, "--map", map, "-o", out_, "--force"};
    words.insert(words.end(), more.begin(), more.end());
    return Run(words);
  }

  std::string radio_ = folder_ / "radio.Q40";
  std::string list_ = folder_ / "list.csv";
  std::string out_ = folder_ / "out.Q40";
};

TEST_F(CtlList, AMappingIsAGuessANameOrAFile) {
  const Result printed = Import("auto", {"--print-map"});
  EXPECT_EQ(printed.code, kExitDone);
  EXPECT_EQ(
      printed.out,
      "rxq40-map = 1\nencoding = guess\nseparator = guess\nheadings = guess\n\"Call\" = name\n"
      "\"TX\" = input\n\"RX\" = output\n");
  EXPECT_FALSE(std::filesystem::exists(out_));

  Store(folder_ / "ours.map", "rxq40-map = 1\n\"TX\" = output\n\"Locator\" = ignored\n");
  const Result file = Import(folder_ / "ours.map", {"--first", "D8", "--quiet"});
  EXPECT_EQ(file.code, kExitImportedInPart);
  EXPECT_EQ(file.err, "rxq40ctl: " + list_ + ": imported, but not all of it fits (1 note)\n");
  EXPECT_NE(Run({"export", out_, "-"}).out.find("\"D9\",\"150.0000\""), std::string::npos);

  const std::string unknown = "rxq40ctl: no mapping is kept as \"ours\". ";
  const std::string advice = " The name of a file has a point or a slash: ./ours\n";
  EXPECT_EQ(Import("ours").err, unknown + "None is kept." + advice);
  std::filesystem::create_directories(folder_ / "user/maps");
  std::filesystem::copy(folder_ / "ours.map", folder_ / "user/maps/club.map");
  EXPECT_EQ(Import("ours").err, unknown + "Kept are: club." + advice);
  EXPECT_EQ(Import("ours").code, kExitUsage);
  EXPECT_EQ(Import("club", {"--only-bands"}).code, kExitImportedInPart);  // for "Locator"
  Store(folder_ / "user/maps/club.map", "rxq40-map = 1\n\"TX\" = output\n");
  EXPECT_EQ(Import("club").code, kExitDone);
}

// No file is made or changed then.
TEST_F(CtlList, ARefusalSaysWhy) {
  Store(folder_ / "bad.map", "rxq40-map = 1\n\"TX\" = exit\n");
  Store(folder_ / "name.map", "rxq40-map = 1\n\"Call\" = output\n");
  const auto data = [&](const std::string& name, const std::string& what) {
    return "Data Error: " + (folder_ / name) + what;
  };
  const std::tuple<std::string, std::vector<std::string>, int, std::string> cases[] = {
      {"auto", {"--first", "210"}, kExitUsage, "\"210\" is no channel: 0-199, D0-D9."},
      {"auto",
       {"--replace"},
       kExitUsage,
       "import: --replace requires --first. See rxq40ctl import --help."},
      {folder_ / "bad.map",
       {},
       kExitDataError,
       data("bad.map", ", line 2: \"exit\" is no meaning of a column")},
      {folder_ / "name.map",
       {"--quiet"},
       kExitDataError,
       data("list.csv", ": no row becomes a channel. Nothing was imported.")},
      {folder_ / "no.map", {}, kExitDataError, data("no.map", ": No such file or directory")}};
  for (const auto& [map, more, code, message] : cases) {
    const Result result = Import(map, more);
    EXPECT_EQ(result.code, code);
    EXPECT_EQ(result.err, "rxq40ctl: " + message + '\n');
    EXPECT_FALSE(std::filesystem::exists(out_));
  }
  Run({"export", radio_, list_, "--force"});
  EXPECT_EQ(Import("auto", {"--quiet"}).err,
            "rxq40ctl: " + data("list.csv",
                                ": a channel list of this program, which is imported without "
                                "--map. Nothing was imported.\n"));
  EXPECT_EQ(Run({"import", radio_, list_, "--only-fm"}).err,
            "rxq40ctl: import: --only-fm requires --map. See rxq40ctl import --help.\n");
  EXPECT_EQ(Run({"import", radio_, "-", "--map", "-"}).err,
            "rxq40ctl: only one of the files can be standard input\n");
}

}  // namespace
}  // namespace q40
