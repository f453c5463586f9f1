// An import of a foreign list as it stands so far: the bytes, how they are read, what the columns mean, and
// where the rows are to go. What follows from a choice follows at once, except for the plan.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "lists/import_plan.h"
#include "lists/mapping.h"

namespace q40 {

class ImportDraft {
 public:
  // `name` is what messages call the list. Begins with guesses, and with the first free channel.
  // `document` must outlive it.
  ImportDraft(std::string bytes, std::string name, const CloneData& document);

  // Why the bytes cannot be taken apart as they are to be. Then list() is empty.
  [[nodiscard]] const std::optional<FileProblem>& problem() const { return problem_; }
  // As chosen, and not what was guessed where nothing is.
  [[nodiscard]] const ListForm& form() const { return form_; }
  [[nodiscard]] const ForeignList& list() const { return list_; }
  [[nodiscard]] const ColumnMeanings& meanings() const { return meanings_; }
  // What the kept mapping names and the list does not have.
  [[nodiscard]] const std::vector<std::string>& missing() const { return missing_; }
  [[nodiscard]] const PlanOptions& options() const { return options_; }

  // Both forget what was chosen for single columns.
  void Guess();
  void Use(KeptMapping kept);
  // Columns that were chosen by hand stay so while there are as many of them.
  void SetForm(const ListForm& form);
  void SetMeaning(std::size_t column, Meaning meaning);
  void SetOptions(const PlanOptions& options) { options_ = options; }

  [[nodiscard]] KeptMapping Kept() const { return KeptOf(list_, meanings_); }
  // A list that cannot be taken apart, or that is none of others, is the problem of the plan.
  [[nodiscard]] ImportPlan Plan() const;

 private:
  void Read();

  std::string bytes_;
  std::string name_;
  const CloneData& document_;
  ListForm form_;
  std::optional<KeptMapping> kept_;  // no value: the columns are guessed
  std::optional<FileProblem> problem_;
  ForeignList list_;
  ColumnMeanings meanings_;
  std::vector<std::string> missing_;
  std::map<std::size_t, Meaning> by_hand_;
  std::size_t columns_by_hand_ = 0;  // how many columns there were when by_hand_ was chosen
  PlanOptions options_;
};

}  // namespace q40
