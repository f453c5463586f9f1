// The mappings that are kept under a name: to choose one, to keep one, to delete one.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include <QWidget>

#include "lists/mapping_folder.h"

class QComboBox;
class QPushButton;

namespace q40 {

class MappingBar final : public QWidget {
  Q_OBJECT

 public:
  // `folder` holds the mappings; `present` tells the one that is to be kept.
  MappingBar(std::string folder, std::function<KeptMapping()> present, QWidget* parent);

  // The columns no longer are what the entry that is shown says.
  void SetByHand();
  // Whether there is something to keep.
  void SetKeepable(bool keepable);

 signals:
  void guessWanted();
  void mappingChosen(const q40::KeptMapping& kept);

 private:
  QPushButton* AddButton(const char* name, const QString& caption);
  void Fill();
  void ShowEntry(const std::string& name);
  void Choose(int index);
  void Keep();
  void Delete();
  // Empty: cancelled.
  std::string AskName();
  bool MayKeep(const std::string& name, QString& why);
  void Complain(const FileProblem& problem);

  std::string folder_;
  std::function<KeptMapping()> present_;
  QComboBox* entries_;
  QPushButton* keep_;
  QPushButton* delete_;
  std::vector<std::string> names_;  // of the entries after the first one, which is the guess
  std::string last_;                // chosen or kept last; the one that Keep offers
  int shown_ = 0;                   // the entry that holds; -1: none
};

}  // namespace q40
