// The whole clone as JSON: what show prints of it, and what apply takes of it.
#include <random>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "document/defaults.h"
#include "support/ctl_fixture.h"

namespace q40 {
namespace {

using nlohmann::json;

constexpr std::size_t kLine = 34;  // with its end

class CtlJson : public test::Ctl {
 protected:
  // What apply makes of a file and a text; the file stays.
  Result Apply(const std::string& path, const std::string& text) {
    test::Store(folder_ / "text.json", text);
    Result result = Run({"apply", path, folder_ / "text.json", "-o", out_, "--force"});
    made_ = result.code == 0 || result.code == kExitImportedInPart ? test::Content(out_) : "";
    return result;
  }
  std::string Shown(const std::string& path) { return Run({"show", "--json", path}).out; }

  // A file such as no program of ours would write, but every one opens: bytes that no reading keeps,
  // lower-case digits, letters that are no digits, dialer texts that nobody can type.
  std::string OddFile(const std::string& name, unsigned seed) {
    std::mt19937 random(seed);
    const auto below = [&](std::size_t top) { return random() % top; };
    CloneData data = test::RandomDocument(seed);
    std::string text = CloneFileText(data, data.model).value();
    for (int i = 0; i < 400; ++i) {
      const std::size_t line = 1 + below(454);
      const std::size_t place = below(32);
      const std::size_t half = line % 2;                             // 1: the first of a channel
      const bool index = line > 4 && place > (half == 1 ? 23 : 29);  // it must be in its list
      if (!index) text[line * kLine + place] = "0123456789ABCDEFabcdef8888xZ \xFC"[below(30)];
      if (below(40) == 0) text.replace(line * kLine, 32, 32, '0');
    }
    for (int i = 0; i < 10; ++i) text.replace((35 + 2 * below(210)) * kLine, 32, 32, 'F');
    test::Store(folder_ / name, text);
    return folder_ / name;
  }

  std::string out_ = folder_ / "out.Q40";
  std::string made_;
};

// Whatever file it is: its document makes the same file of any other one, byte for byte.
TEST_F(CtlJson, AWholeDocumentMakesTheWholeFile) {
  const std::string fresh = Save("fresh.Q40", FreshData());
  for (unsigned seed = 1; seed <= 4; ++seed) {
    const bool odd = seed % 3 != 0;
    const std::string path =
        odd ? OddFile("a.Q40", seed) : Save("a.Q40", test::RandomDocument(seed));
    const std::string other = OddFile("b.Q40", seed + 100);
    const std::string shown = Shown(path);
    for (const std::string& target : {fresh, other}) {
      const Result result = Apply(target, shown);
      EXPECT_EQ(result.code, 0) << seed << ": " << result.err;
      EXPECT_EQ(made_, test::Content(path)) << seed << " on " << target;
    }
    // And what it holds already is never refused.
    EXPECT_EQ(Apply(path, shown).code, 0) << seed;
    EXPECT_EQ(made_, test::Content(path)) << seed;
  }
  // As the window leaves a file that is new: PH and PL have a frequency, and no mark.
  EXPECT_EQ(Apply(Save("b.Q40", test::RandomDocument(3)), Shown(fresh)).code, 0);
  EXPECT_EQ(made_, test::Content(fresh));
}

// Every difference that diff tells stands in the two documents under the same two names, with the same
// values.
TEST_F(CtlJson, DiffAndShowCallThingsTheSame) {
  const std::string a = OddFile("a.Q40", 31);
  const std::string b = OddFile("b.Q40", 32);
  const json shown_a = json::parse(Shown(a));
  const json shown_b = json::parse(Shown(b));
  const json differences = json::parse(Run({"diff", "--json", a, b}).out);
  EXPECT_GT(differences.size(), 1000U);
  for (const json& row : differences) {
    const std::string place = row["place"];
    const std::string name = row["name"];
    ASSERT_TRUE(shown_a.contains(place) && shown_b.contains(place)) << row;
    EXPECT_TRUE(shown_a[place].contains(name) || shown_b[place].contains(name)) << row;
    EXPECT_NE(shown_a[place], shown_b[place]) << row;
    EXPECT_EQ(row["a"], shown_a[place].value(name, json())) << row;
    EXPECT_EQ(row["b"], shown_b[place].value(name, json())) << row;
  }
}

// One value changes its own bytes, also in a file of odd ones.
TEST_F(CtlJson, NothingElseChanges) {
  const std::string path = OddFile("a.Q40", 41);
  const std::string before = test::Content(path);
  const json shown = json::parse(Shown(path));
  const json other = json::parse(Shown(OddFile("b.Q40", 42)));
  int changed_files = 0;
  int count = 0;
  for (const auto& [place, values] : other.items()) {
    if (!values.is_object() || !shown.contains(place)) continue;
    for (const auto& [name, value] : values.items()) {
      if (++count % 97 != 0) continue;
      const Result result = Apply(path, json({{place, {{name, value}}}}).dump());
      ASSERT_TRUE(result.code == 0 || result.code == kExitImportedInPart) << result.err;
      int lines = 0;
      for (std::size_t line = 0; line < 456; ++line)
        lines += made_.compare(line * kLine, kLine, before, line * kLine, kLine) == 0 ? 0 : 1;
      changed_files += lines > 0 ? 1 : 0;
      EXPECT_LE(lines, 3) << place << ' ' << name;  // two of a channel, and the start channel
    }
  }
  EXPECT_GT(changed_files, 15);
  // What does not fit leaves the odd bytes around it alone.
  EXPECT_EQ(Apply(path, R"j({"Settings": {"Volume": 99, "TOT (sec)": 1}, "UHF CALL": {"MID": 11},
                            "VHF PL": {"Frequency": 9999}})j")
                .code,
            kExitImportedInPart);
  EXPECT_EQ(made_, before);
  EXPECT_EQ(Apply(path, "{}").code, 0);
  EXPECT_EQ(made_, before);
}

// A text, the exit code, words of a message, and a pointer with its value afterwards.
TEST_F(CtlJson, TheRulesOfTheDialog) {
  CloneData data = FreshData();
  ChangeModel(data, 1);
  data.dial[9] = "1";
  const std::string fresh = Save("a.Q40", data);
  Apply(fresh, R"j({"Memory 3": {"Frequency": 145.5, "Name": "LAKE"}})j");
  const std::string path = folder_ / "b.Q40";
  test::Store(path, made_);
  const struct {
    const char* text;
    int code;
    const char* says;
    const char* pointer = "";
    json value{};
  } cases[] = {
      {R"j({})j", 0, "0 values"},
      {R"j({"format": 1, "Settings": {"Volume": 30, "TOT (sec)": "OFF"}})j", 0, "2 values",
       "/Settings/TOT (sec)", "OFF"},
      {R"j({"Settings": {"Volume": 31}})j", 9, "/Settings/Volume: 31 is none of 0 to 30",
       "/Settings/Volume", 15},
      {
          R"j({"Settings": {"Tone Burst (Hz)" : 1450
}
})j",
          9, "1450 is read back as 1750"},
      {R"j({"Settings": {"Lamp": "Permanent"}})j", 9, "did you mean \"Permanent on\"?"},
      {R"j({"Settings": {"VOX On Delay": true, "byte 0x0038 without VOX On Delay": "8F"}})j", 0, "",
       "/Settings/VOX On Delay", true},
      {R"j({"Settings": {"byte 0x0038 without VOX On Delay": "4F"}})j", 0, "",
       "/Settings/VOX On Delay", false},
      {R"j({"Settings": {"byte 0x0024 (start channel)": "77"}, "Access": {"Channel Mode": true}})j",
       0, "", "/Settings/byte 0x0024 (start channel)", "77"},
      {R"j({"Settings": {"byte 0x0023": "5C"}})j", 0, "", "/Settings/byte 0x0023", "5C"},
      {R"j({"Settings": {"byte 0x0023": "XY"}})j", 0, "is no hexadecimal digit",
       "/Settings/byte 0x0023", "XY"},
      {R"j({"Memory 3": {"Frequency": 145.6012}})j", 9, "nearest below is 145.6000",
       "/Memory 3/Frequency", 145.5},
      {R"j({"Memory 3": {"Frequency": 145.60001}})j", 9, "is no frequency in steps"},
      {R"j({"Memory 3": {"Frequency": -1}})j", 9, "is no frequency in steps"},
      {R"j({"Memory 3": {"Frequency": 146, "Power": "Hi"}})j", 9,
       "RX-Q40E are VHF (144.000-145.995", "/Memory 3/Power", "Hi"},
      {R"j({"Memory 3": {"Frequency": 430.0125}})j", 0, "", "/Memory 3/Frequency", 430.0125},
      {R"j({"Memory 4": {"Name": "HILL", "Frequency": 600}})j", 9, "the channel stays empty",
       "/Memory 4/In use", false},
      {R"j({"Memory 4": {"Name": "hill"}})j", 0, "", "/Memory 4/Name", "HILL"},
      {R"j({"Memory 4": {"In use": true}})j", 0, "1 value", "/Memory 4/Frequency", 145},
      {R"j({"Memory 3": {"Name": "TOOLONG"}})j", 9, "is longer than 6", "/Memory 3/Name", "LAKE"},
      {R"j({"Memory 3": {"Name": "A!"}})j", 9, "no name can have: \"!\""},
      {R"j({"Memory 3": {"Name": "A\u0000"}})j", 9, "no name can have: \"\\x00\""},
      {R"j({"Memory 3": {"Name": "a?"}})j", 0, "", "/Memory 3/Name", "A?"},
      {
          R"j({"Memory 3": {"Name": "A)"
}
})j",
          9, "\"A)\" is read back as \"A(\""},
      {R"j({"Memory 3": {"Step": 25}})j", 9, "25 is read back as 12.5"},
      {R"j({"Memory 3": {"Shift frequency": 99.9951}})j", 9, "is no multiple of 5"},
      {R"j({"Memory 3": {"Shift frequency": 100}})j", 9, "is too large"},
      {R"j({"Memory 3": {"Skip": true, "TxDCS": "031", "RxTone": 250.3, "MID": 10}})j", 0, "",
       "/Memory 3/RxTone", 250.3},
      {R"j({"Memory 3": {"In use": false}})j", 0, "", "/Memory 3", {{"In use", false}}},
      {R"j({"Memory 3": {"In use": false, "Name": "A"}})j", 9, "for a channel in use only"},
      {R"j({"VHF RPT": {"Power": "Hi", "Tone": "DCS"}})j", 9, "repeater-access row",
       "/VHF RPT/Tone", "DCS"},
      {R"j({"VHF RPT": {"Power": "Lo"}})j", 0, "1 value"},
      {R"j({"VHF RPT": {"Shift": "Split"}})j", 9, "is for VFO and CALL only"},
      {R"j({"VHF CALL": {"Shift": "Split"}})j", 0, "", "/VHF CALL/Shift", "Split"},
      {R"j({"UHF VFO": {"Frequency": 145}})j", 9, "RX-Q40E are UHF (4"},
      {R"j({"VHF PH": {"In use": false}})j", 0, "", "/VHF PH", {{"In use", false}}},
      {R"j({"Auto dialer": {"M1": "12ab", "St": ""}})j", 9, "/Auto dialer/St: \"\" must not be",
       "/Auto dialer/M1", "12AB"},
      {R"j({"Auto dialer": {"M1": "01234567890123456"}})j", 9, "is longer than 16"},
      {R"j({"Auto dialer": {"M1": "\u00fc\u0100"}})j", 9, "characters that no clone file can"},
      {R"j({"Radio": {"Model": "rx-q40t", "Version": "A"}})j", 0, "", "/Radio/Model", "RX-Q40T"},
      // ---- what is no text for a clone: nothing is written
      {"", 6, "line 1: no JSON"},
      {"{\"Settings\":\n {\"Volume\": 1,}}", 6, "line 2: no JSON"},
      {"{\"\xFF\": 1}", 6, "no JSON"},
      {R"j({"Settings": {"Volume": 1e999}})j", 6, "no JSON"},
      {"[]", 6, "must be no list"},
      {"7", 6, "must be an object"},
      {R"j({"format": 2})j", 6, "/format must be 1"},
      {R"j({"Settings": 3})j", 6, "/Settings must be a group"},
      {R"j({"Settings": {"Volume": {"a": 1}}})j", 6, "/Settings/Volume must be one value"},
      {R"j({"Settings": {"": 1}})j", 6, "empty name"},
      {R"j({"Settings": {"Volume": 1, "Volume": 2}})j", 6, "/Settings/Volume is named twice"},
      {R"j({"Settings": {"Volume": 1, "Squelch": "3"}})j", 6, "/Settings/Squelch must be a number"},
      {
          R"j({"Settings": {"TOT (sec)" : true
}
})j",
          6, "must be a number or a text"},
      {R"j({"Access": {"CTCSS / DCS": 1}})j", 6, "/Access/CTCSS ~1 DCS must be true or false"},
      {R"j({"Memory 210": {"Name": "A"}})j", 6, "/Memory 210 is unknown; did you mean"},
      {R"j({"Memory 3": {"Frequncy": 1}})j", 6, "did you mean \"Frequency\"?"},
      {R"j({"Memory 3": {"In use": null}})j", 6, "must be true or false"},
      {R"j({"Memory 3": {"stored data": "80"}})j", 6, "must have 64 digits"},
      {R"j({"Settings": {"byte 0x0023": "5C5"}})j", 6, "must have 2 digits"},
      {R"j({"Settings": {"byte 0x0023": "\n\n"}})j", 6, "characters that no clone file can"},
      {R"j({"Radio": {"Model": "RX-Q40"}})j", 6, "/Radio/Model must be RX-Q40T,"},
      {R"j({"Radio": {"Version": "B"}})j", 6, "/Radio/Version must be \"A\" or \"0\""}};
  for (const auto& [text, code, says, pointer, value] : cases) {
    std::filesystem::remove(out_);
    const Result result = Apply(path, text);
    EXPECT_EQ(result.code, code) << text << '\n' << result.err;
    EXPECT_NE(result.err.find(says), std::string::npos) << text << '\n' << result.err;
    EXPECT_EQ(std::filesystem::exists(out_), code != kExitDataError) << text;
    if (*pointer == '\0') continue;
    EXPECT_EQ(json::parse(Shown(out_))[json::json_pointer(pointer)], value) << text;
  }
  // A limit comes back with its mark.
  Apply(path, R"j({"VHF PH": {"In use": false}})j");
  test::Store(folder_ / "c.Q40", made_);
  EXPECT_EQ(made_.substr(11 * kLine, 8), "00000000");
  EXPECT_EQ(Apply(folder_ / "c.Q40", R"j({"VHF PH": {"Frequency": 145.5}})j").code, 0);
  EXPECT_EQ(made_.substr(11 * kLine, 16), "8000000001455000");
  // An erased channel comes into use: what it held was not a value.
  const std::string erased = R"j({"Memory 5": {"stored data": ")j" + std::string(64, 'F');
  EXPECT_EQ(Apply(path, erased + R"j(", "In use": true}})j").code, 0);
  EXPECT_EQ(json::parse(Shown(out_))["Memory 5"]["TxDCS"], "023");
  const Result wrong =
      Apply(path, R"j({"Memory 3": {"stored data": ")j" + std::string(64, '8') + R"j("}})j");
  EXPECT_NE(wrong.err.find("/Memory 3/stored data byte 12 (TxTone) holds 0x88"), std::string::npos)
      << wrong.err;
}

TEST_F(CtlJson, BoundsAndFiles) {
  const std::string path = Save("a.Q40", FreshData());
  const std::string before = test::Content(path);
  const std::string deep(2U << 20U, '[');
  std::string unknown = "{";
  for (int i = 0; i < 100'000; ++i) unknown += "\"Memory" + std::to_string(i) + "\": 1,";
  unknown.back() = '}';
  const std::string long_name = "{\"" + std::string(3U << 20U, 'x') + "\": 1}";
  for (const std::string& text : {deep, "{\"a\": " + deep, unknown, long_name}) {
    const Result result = Apply(path, text);
    EXPECT_EQ(result.code, kExitDataError);
    EXPECT_LT(result.err.size(), 5000U);
  }
  EXPECT_NE(Apply(path, std::string(5U << 20U, ' ')).err.find("4 MiB"), std::string::npos);
  EXPECT_EQ(Run({"apply", "-", "-"}).code, kExitUsage);
  EXPECT_EQ(Run({"apply", path, path}).code, kExitUsage);
  test::Store(folder_ / "v.json", R"j({"Settings": {"Volume": 3}})j");
  EXPECT_EQ(Run({"apply", path, folder_ / "v.json", "-o", Save("c.Q40", FreshData())}).code,
            kExitUsage);
  EXPECT_EQ(test::Content(path), before);
  EXPECT_EQ(Run({"apply", path, folder_ / "v.json"}).code, 0);
  EXPECT_EQ(test::Content(path).substr(kLine + 10, 2), "03");
}

}  // namespace
}  // namespace q40
