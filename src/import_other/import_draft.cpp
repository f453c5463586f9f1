#include "import_other/import_draft.h"

#include <utility>

namespace q40 {

ImportDraft::ImportDraft(std::string bytes, std::string name, const CloneData& document)
    : bytes_(std::move(bytes)), name_(std::move(name)), document_(document) {
  options_.first_channel = FirstFreeChannel(document.image);
  Read();
}

void ImportDraft::Guess() {
  kept_.reset();
  by_hand_.clear();
  SetForm({});
}

void ImportDraft::Use(KeptMapping kept) {
  kept_ = std::move(kept);
  by_hand_.clear();
  SetForm(kept_->form);
}

void ImportDraft::SetForm(const ListForm& form) {
  form_ = form;
  Read();
}

void ImportDraft::Read() {
  ForeignList read;
  problem_ = ReadForeignList(bytes_, name_, form_, read);
  list_ = problem_ ? ForeignList() : std::move(read);
  missing_.clear();
  meanings_.clear();
  if (problem_) return;
  meanings_ = kept_ ? MeaningsFor(list_, *kept_, missing_) : GuessMapping(list_);
  meanings_.resize(list_.Columns(), Meaning::kIgnored);
  if (list_.Columns() != columns_by_hand_) return;
  for (const auto& [column, meaning] : by_hand_) meanings_[column] = meaning;
}

void ImportDraft::SetMeaning(std::size_t column, Meaning meaning) {
  if (column >= meanings_.size()) return;
  if (columns_by_hand_ != meanings_.size()) by_hand_.clear();
  columns_by_hand_ = meanings_.size();
  by_hand_[column] = meaning;
  meanings_[column] = meaning;
}

ImportPlan ImportDraft::Plan() const {
  ImportPlan none;
  if (problem_) {
    none.problem = problem_->Message();
  } else if (IsOwnList(list_)) {
    none.problem = "this is a channel list of this program, which File, Import CSV takes whole";
  } else {
    return PlanImport(list_, meanings_, options_, document_);
  }
  return none;
}

}  // namespace q40
