#include "programs/ctl/other_list.h"

#include <algorithm>

#include "base/plain_text.h"
#include "files/standard_streams.h"
#include "files/whole_file.h"
#include "lists/import_plan.h"
#include "lists/list_numbers.h"
#include "lists/mapping_folder.h"
#include "programs/ctl/user_files.h"

namespace q40 {
namespace {

// A list and what its columns mean.
struct MappedList {
  ForeignList list;
  ColumnMeanings meanings;
  std::vector<std::string> missing;  // what the mapping names and the list does not have
};

// A kept name has neither of them, so that nothing in the folder changes what a word means.
bool IsFileName(const std::string& map) {
  return map == kStandardStream || map.find_first_of("/.") != std::string::npos;
}

std::string KeptNames(const std::string& folder) {
  std::string names;
  for (const std::string& name : MappingNames(folder)) names += (names.empty() ? "" : ", ") + name;
  return names.empty() ? "None is kept." : "Kept are: " + names + '.';
}

// The code of the error that was said, or kExitDone.
int ReadKept(CommandContext& context, const std::string& map, KeptMapping& kept) {
  Console& console = context.console;
  if (IsFileName(map)) {
    std::string text;
    if (const auto problem = ReadInput(map, kLongestMapping + 1, text))
      return console.Error(*problem);
    const auto problem = ReadMapping(text, InputName(map), kept);
    return problem ? console.Error(*problem) : static_cast<int>(kExitDone);
  }
  const std::string folder = MappingFolder(context.user_folder);
  const auto names = MappingNames(folder);
  if (std::find(names.begin(), names.end(), map) == names.end()) {
    return console.Error(kExitUsage, "no mapping is kept as " + Quoted(map) + ". " +
                                         KeptNames(folder) +
                                         " The name of a file has a point or a slash: ./" + map);
  }
  const auto problem = LoadMapping(folder, map, kept);
  return problem ? console.Error(*problem) : static_cast<int>(kExitDone);
}

int ReadMapped(CommandContext& context, const std::string& path, const std::string& map,
               MappedList& mapped) {
  Console& console = context.console;
  const bool guess = map == kGuessedMapping;
  KeptMapping kept;
  if (!guess) {
    if (const int code = ReadKept(context, map, kept)) return code;
  }
  std::string bytes;
  if (const auto problem = ReadInput(path, kLongestList + 1, bytes)) return console.Error(*problem);
  if (const auto problem = ReadForeignList(bytes, InputName(path), kept.form, mapped.list)) {
    return console.Error(*problem);
  }
  mapped.meanings =
      guess ? GuessMapping(mapped.list) : MeaningsFor(mapped.list, kept, mapped.missing);
  return kExitDone;
}

std::string ColumnText(const ForeignList& list, std::size_t column) {
  const std::string& heading = list.headings[column];
  return heading.empty() ? "column " + std::to_string(column + 1) : Quoted(heading);
}

// The columns that hold something of which nothing is taken.
std::string NotUsed(const MappedList& mapped) {
  const ForeignList& list = mapped.list;
  std::string text;
  for (std::size_t c = 0; c < list.Columns(); ++c) {
    const bool holds = std::any_of(list.rows.begin(), list.rows.end(), [&](const ListRow& row) {
      return !ForeignList::Item(row, c).empty();
    });
    if (!holds || mapped.meanings[c] != Meaning::kIgnored) continue;
    text += (text.empty() ? "; not used: " : ", ") + ColumnText(list, c);
  }
  return text;
}

// How the list was understood, on one line.
std::string Understood(const MappedList& mapped) {
  const ForeignList& list = mapped.list;
  const std::string where = list.heading_line == 0
                                ? "no headings"
                                : "headings in line " + std::to_string(list.heading_line);
  std::string text = "taken as " + std::string(EncodingText(list.form.encoding)) + ", columns by " +
                     std::string(SeparatorText(list.form.separator)) + ", " + where + ':';
  std::string between = " ";
  for (std::size_t c = 0; c < list.Columns(); ++c) {
    if (mapped.meanings[c] == Meaning::kIgnored) continue;
    text += between + ColumnText(list, c) + " is " + std::string(RowOf(mapped.meanings[c]).name);
    between = ", ";
  }
  return text + NotUsed(mapped);
}

std::string Counted(std::size_t count, const std::string& what) {
  return std::to_string(count) + ' ' + what + (count == 1 ? "" : "s");
}

}  // namespace

void AddOtherListOptions(CLI::App& command, OtherList& arguments) {
  auto* map =
      command
          .add_option("--map", arguments.map,
                      "CSV is a list of others; auto guesses its columns, or a kept mapping\n"
                      "or the file of one (with . or / in its name) tells them")
          ->type_name("MAP");
  auto* first = command
                    .add_option("--first", arguments.first,
                                "first channel to fill, 0-199 or D0-D9; without it 0")
                    ->type_name("CHANNEL")
                    ->needs(map);
  command.add_flag("--replace", arguments.replace, "fill also channels that are in use")
      ->needs(map)
      ->needs(first);
  command.add_flag("--only-fm", arguments.only_fm, "leave out rows of another mode")->needs(map);
  command
      .add_flag("--only-bands", arguments.only_bands, "leave out rows outside the model's bands")
      ->needs(map);
  command
      .add_flag("--print-map", arguments.print_map,
                "import nothing: print the mapping, as a file for --map")
      ->needs(map);
}

int PrintMapping(CommandContext& context, const std::string& path, const OtherList& arguments) {
  MappedList mapped;
  if (const int code = ReadMapped(context, path, *arguments.map, mapped)) return code;
  for (const std::string& missing : mapped.missing) context.console.Note(missing);
  return Print(context, MappingText(KeptOf(mapped.list, mapped.meanings)));
}

int ImportOtherList(CommandContext& context, const std::string& path, const OtherList& arguments,
                    CloneData& document, Product& product) {
  Console& console = context.console;
  const auto first = ChannelIn(arguments.first);
  if (!first) {
    return console.Error(kExitUsage, Quoted(arguments.first) + " is no channel: 0-199, D0-D9.");
  }
  MappedList mapped;
  if (const int code = ReadMapped(context, path, *arguments.map, mapped)) return code;
  const std::string csv = InputName(path);
  const ImportPlan plan =
      PlanImport(mapped.list, mapped.meanings,
                 {*first, arguments.replace, arguments.only_fm, arguments.only_bands}, document);
  console.Note(Understood(mapped));
  for (const std::string& missing : mapped.missing) console.Note(missing);
  const auto refuse = [&](const std::string& why) {
    return console.Error({FileProblem::Kind::kBadData, csv, 0, why + ". Nothing was imported."});
  };
  if (IsOwnList(mapped.list)) {
    return refuse("a channel list of this program, which is imported without --map");
  }
  if (!plan.problem.empty()) {
    return refuse(plan.problem + "; --print-map prints a mapping that can be corrected");
  }
  for (const PlannedRow& row : plan.rows) console.Note(row.Message());
  if (plan.Count(RowOutcome::kChannel) == 0) return refuse("no row becomes a channel");
  document.image = Filled(plan, document.image);
  if (const int code = product.Store(document)) return code;
  console.Note(plan.Summary() + ": imported into " + product.Name());
  const std::size_t notes = static_cast<std::size_t>(plan.Losses()) + mapped.missing.size();
  if (notes == 0) return kExitDone;
  return console.Error(kExitImportedInPart,
                       csv + ": imported, but not all of it fits (" + Counted(notes, "note") + ")");
}

}  // namespace q40
