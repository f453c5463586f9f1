#include "radio/values.h"

#include <algorithm>
#include <array>

namespace q40 {
namespace {

using std::string_view;

constexpr std::array<string_view, 7> kSteps = {"5KHz",  "10KHz", "12.5KHz", "15KHz",
                                               "20KHz", "25KHz", "30KHz"};

constexpr std::array<string_view, 39> kTones = {
    "67.0Hz",  "69.3Hz",  "71.9Hz",  "74.4Hz",  "77.0Hz",  "79.7Hz",  "82.5Hz",  "85.4Hz",
    "88.5Hz",  "91.5Hz",  "94.8Hz",  "97.4Hz",  "100.0Hz", "103.5Hz", "107.2Hz", "110.9Hz",
    "114.8Hz", "118.8Hz", "123.0Hz", "127.3Hz", "131.8Hz", "136.5Hz", "141.3Hz", "146.2Hz",
    "151.4Hz", "156.7Hz", "162.2Hz", "167.9Hz", "173.8Hz", "179.9Hz", "186.2Hz", "192.8Hz",
    "203.5Hz", "210.7Hz", "218.1Hz", "225.7Hz", "233.6Hz", "241.8Hz", "250.3Hz"};

constexpr std::array<string_view, 104> kDcsCodes = {
    "023", "025", "026", "031", "032", "036", "043", "047", "051", "053", "054", "065", "071",
    "072", "073", "074", "114", "115", "116", "122", "125", "131", "132", "134", "143", "145",
    "152", "155", "156", "162", "165", "172", "174", "205", "212", "223", "225", "226", "243",
    "244", "245", "246", "251", "252", "255", "261", "263", "265", "266", "271", "274", "306",
    "311", "315", "325", "331", "332", "343", "346", "351", "356", "364", "365", "371", "411",
    "412", "413", "423", "431", "432", "445", "446", "452", "454", "455", "462", "464", "465",
    "466", "503", "506", "516", "523", "526", "532", "546", "565", "606", "612", "624", "627",
    "631", "632", "654", "662", "664", "703", "712", "723", "731", "732", "734", "743", "754"};

constexpr std::array<string_view, 11> kMidLevels = {"00", "01", "02", "03", "04", "05",
                                                    "06", "07", "08", "09", "10"};

string_view TextAt(std::span<const string_view> list, int index) {
  const bool inside = index >= 0 && static_cast<std::size_t>(index) < list.size();
  return inside ? list[static_cast<std::size_t>(index)] : string_view();
}

}  // namespace

std::span<const string_view> StepTexts() { return kSteps; }
std::span<const string_view> ToneTexts() { return kTones; }
std::span<const string_view> DcsTexts() { return kDcsCodes; }
std::span<const string_view> MidTexts() { return kMidLevels; }

string_view StepText(int index) { return TextAt(kSteps, index); }
string_view ToneText(int index) { return TextAt(kTones, index); }
string_view DcsText(int index) { return TextAt(kDcsCodes, index); }
string_view MidText(int index) { return TextAt(kMidLevels, index); }

std::optional<int> FindText(std::span<const string_view> list, string_view text) {
  const auto found = std::find(list.begin(), list.end(), text);
  if (found == list.end()) return std::nullopt;
  return static_cast<int>(found - list.begin());
}

}  // namespace q40
