// The dialog Import Other List: what a foreign list means, and what its rows become. Changes nothing
// itself; when it was accepted, plan() is what is to be done.
#pragma once

#include <QDialog>

#include "import_other/import_draft.h"

class QLabel;
class QPushButton;
class QTableView;
class QTimer;

namespace q40 {

class ColumnTable;
class FormBar;
class MappingBar;
class OptionsBar;
class PreviewModel;

class ImportOtherWindow final : public QDialog {
  Q_OBJECT

 public:
  struct Source {
    std::string bytes;
    std::string name;            // what messages call the list
    std::string mapping_folder;  // of the kept mappings; made when it is needed
  };
  // `document` must outlive it, and stay as it is.
  ImportOtherWindow(Source source, const CloneData& document, QWidget* owner);
  ~ImportOtherWindow() override;

  // Why the list cannot be taken apart.
  [[nodiscard]] const std::optional<FileProblem>& problem() const { return draft_.problem(); }
  [[nodiscard]] const ImportPlan& plan() const;

  void accept() override;

 private:
  void LayOut();
  QLabel* AddLabel(const char* name);
  QTableView* MakePreview();
  QWidget* MakeButtons();
  void Connect();

  void TakeForm(const ListForm& form);
  void TakeMapping(const KeptMapping& kept);
  void TakeGuess();
  void ShowList();
  void ShowMissing();
  void Await();
  void Refresh();
  void ShowSummary();
  void ShowRow();

  std::string name_;
  ImportDraft draft_;
  MappingBar* mappings_;
  FormBar* form_;
  QLabel* facts_;
  QLabel* missing_;
  ColumnTable* columns_;
  OptionsBar* options_;
  PreviewModel* preview_;
  QTableView* rows_;
  QLabel* row_;
  QLabel* summary_;
  QPushButton* ok_ = nullptr;
  QTimer* due_;  // one plan for however many changes come at once
};

}  // namespace q40
