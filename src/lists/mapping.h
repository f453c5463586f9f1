// What the columns of a list mean: guessed, or kept as a small text.
//
//   rxq40-map = 1
//   separator = semicolon
//   "Ausgabe" = output
//   column 3 = tone-sent
//
// A column is named by its heading, or by its number where it has none; what is not named is ignored.
// docs/lists.md describes every line.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/file_problem.h"
#include "lists/foreign_list.h"
#include "lists/meaning.h"

namespace q40 {

// By headings (English and German words, and some others) and by what stands below them. As many as the
// list has columns; each meaning but kIgnored at most once; kChannel is never guessed.
ColumnMeanings GuessMapping(const ForeignList& list);

// Why a plan cannot be made of them: "no column is the output frequency". Empty: it can.
std::string WhyNotUsable(const ColumnMeanings& meanings);

// A mapping as it is kept, for this list and others like it.
struct KeptMapping {
  struct Entry {
    std::string heading;  // as it stands in the list; empty: `column` counts
    int column = 0;       // from 1
    Meaning meaning = Meaning::kIgnored;

    bool operator==(const Entry&) const = default;
  };
  ListForm form;  // with which a list is to be read before its columns are found
  std::vector<Entry> entries;

  bool operator==(const KeptMapping&) const = default;
};

// To be kept: every column that is not ignored, by its heading where that stands once; the form that was
// asked for, so that what was guessed is guessed again.
KeptMapping KeptOf(const ForeignList& list, const ColumnMeanings& meanings);
// The columns of a list that was read with kept.form. `missing`: what the list does not have, one text
// each ("no column has the heading "Ausgabe""). Upper and lower case and blanks of headings do not count.
ColumnMeanings MeaningsFor(const ForeignList& list, const KeptMapping& kept,
                           std::vector<std::string>& missing);

// ---- as a text

inline constexpr std::size_t kLongestMapping = 64U << 10U;  // bytes
// Ends with LF. ReadMapping gives the same back.
std::string MappingText(const KeptMapping& kept);
// `name` is what messages call it. On a problem (unknown line, word or version, a column or a
// meaning named twice) `kept` stays as it was.
[[nodiscard]] std::optional<FileProblem> ReadMapping(std::string_view text, const std::string& name,
                                                     KeptMapping& kept);

}  // namespace q40
