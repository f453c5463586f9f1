// Asks for a field and the value that it is to have in every selected channel.
#pragma once

#include <functional>

#include <QDialog>

class QComboBox;
class QLabel;

namespace q40 {

class SetValueDialog final : public QDialog {
  Q_OBJECT

 public:
  struct Choice {
    QString heading;
    QStringList entries;  // of its list; empty: typed freely
  };
  // Takes a value when the dialog is closed with OK: why it cannot be, empty when it was taken.
  using Take = std::function<QString(int choice, const QString& value)>;

  SetValueDialog(std::vector<Choice> choices, int current, int channels, Take take,
                 QWidget* parent);

  void accept() override;

 private:
  void ShowEntries();

  std::vector<Choice> choices_;
  Take take_;
  QComboBox* field_;
  QComboBox* value_;
  QLabel* why_;
};

}  // namespace q40
