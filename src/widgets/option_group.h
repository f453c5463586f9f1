// Options of which one is chosen, also by the program.
#pragma once

#include <QButtonGroup>

namespace q40 {

// Tab reaches the chosen option and no other one of the group, whoever has chosen it: on an option
// that is not chosen, the space bar would change the value.
class OptionGroup final : public QButtonGroup {
  Q_OBJECT

 public:
  explicit OptionGroup(QObject* parent);

  // `index` is what checkedId() then gives.
  void Add(QAbstractButton& option, int index);
  // Chooses without the signal of a click; an index that the group does not have leaves no option
  // chosen. A keyboard focus within the group goes along.
  void Choose(int index);
  // Puts the keyboard focus on the option that Tab reaches, if the group can be used at all.
  void Focus(Qt::FocusReason reason);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  // The chosen option; the first that can be chosen where that is none.
  [[nodiscard]] QAbstractButton* TabStop() const;
  void KeepTabStop();
  [[nodiscard]] bool HoldsFocus() const;
};

}  // namespace q40
