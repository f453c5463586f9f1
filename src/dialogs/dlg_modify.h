// The dialog in which one channel is edited, a memory channel or a special one.
#pragma once

#include <QDialog>

#include "document/clone_image.h"
#include "document/dialog_values.h"
#include "document/edit_rules.h"

class QCheckBox;
class QComboBox;
class QGridLayout;
class QGroupBox;
class QLabel;
class QPushButton;

namespace q40 {

class FilteredEdit;
class OptionGroup;

// What is edited, and the rules that go with it.
struct ModifyTarget {
  ChannelKind kind = ChannelKind::kMemory;
  int index = 0;           // memory channel 0..209, or row 0..4 of the special set
  Band band = Band::kVhf;  // of the special set
  int model = 0;
  int range = kVersionPlain;
  bool in_use = true;  // of a memory channel
  // What the row holds now. A bad frequency goes back to its text.
  ChannelRecord record;
  // What an unused memory channel starts from.
  ChannelRecord fresh;
};

// One object serves all edits until the program ends, so that the box "Hold" and the values it
// holds survive from one to the next.
class dlgModify final : public QDialog {  // NOLINT: the dialog's given name
  Q_OBJECT

 public:
  explicit dlgModify(QWidget* parent);

  // Fills the controls for a target. Then exec(); on Accepted, Result() is the new record. The
  // dialog never touches the row itself, so Cancel leaves everything.
  void Prepare(const ModifyTarget& target);
  [[nodiscard]] ChannelRecord Result() const;

  void accept() override;
  void done(int result) override;

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  // ---- the controls, made once (dlg_modify_layout.cpp)
  struct Group {
    Field field;
    OptionGroup* buttons;
    QGroupBox* frame;
  };
  struct List {
    Field field;
    QComboBox* box;
  };
  struct Box {
    Field field;
    QCheckBox* box;
  };
  void MakeControls();
  QGroupBox* MakeGroup(Field field, const char* name, const char* caption,
                       std::initializer_list<const char*> options, int columns);
  QComboBox* MakeList(Field field, const char* name, const char* label);
  QCheckBox* MakeBox(Field field, const char* name, const char* caption);
  FilteredEdit* MakeEdit(const char* name, const char* label, std::optional<char> (*filter)(char),
                         int longest);
  void LayOutFrequency(QGridLayout& grid);
  void LayOutTone(QGridLayout& grid);
  void LayOutShift(QGridLayout& grid);
  void LayOutRest(QGridLayout& grid);
  void AddKeys();
  void AddBoxTips();

  // ---- behaviour
  void ComeBack();
  [[nodiscard]] bool RepeaterRow() const;
  [[nodiscard]] OptionGroup& Options(Field field) const;
  void ShowTexts();
  void ShowVariant();
  void SetValues(const DialogValues& values);
  [[nodiscard]] DialogValues Values() const;
  void ConnectFields();
  void ConnectPair(FilteredEdit& mhz, FilteredEdit& fraction);
  void CheckFrequency();
  void TuneFraction(FilteredEdit& edit);
  void RunPendingCheck();
  static void JumpTo(FilteredEdit& edit);

  ModifyTarget target_;
  std::optional<DialogValues> held_;  // the controls of the last memory edit
  std::optional<QPoint> offset_;      // from the window to where the user has left the dialog
  KeyCounter keys_;

  std::vector<Group> groups_;
  std::vector<List> lists_;
  std::vector<Box> boxes_;
  FilteredEdit* txtFreq_ = nullptr;
  FilteredEdit* txtFreq1_ = nullptr;
  FilteredEdit* txtShift_ = nullptr;
  FilteredEdit* txtShift1_ = nullptr;
  FilteredEdit* txtName_ = nullptr;
  std::array<QLabel*, 3> frequency_labels_{};  // "Frequency", the point, "MHz"
  QLabel* lblMode_ = nullptr;
  QLabel* lblCH_ = nullptr;
  QLabel* lblMHz_ = nullptr;
  QLabel* lblVMHz_ = nullptr;
  QLabel* lblUMHz_ = nullptr;
  QLabel* lblName_ = nullptr;
  QCheckBox* chkSkip_ = nullptr;
  QCheckBox* chkHold_ = nullptr;
  QPushButton* ok_ = nullptr;
};

}  // namespace q40
