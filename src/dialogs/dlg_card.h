// The dialog of the channel card: its paper, what stands on it, and how the first sheet looks.
#pragma once

#include <optional>

#include <QDialog>

#include "card_paint/card_pages.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QPushButton;

namespace q40 {

class dlgCard final : public QDialog {  // NOLINT: named like its sisters
  Q_OBJECT

 public:
  // What the dialog is closed with, beside Rejected.
  enum Choice : int { kSaveAsPdf = QDialog::Accepted, kPrint };

  // The document must outlive it. `name`: what the card calls it.
  dlgCard(const CloneData& document, std::string name, const CardOptions& options, QWidget* parent);

  [[nodiscard]] CardOptions Options() const;
  [[nodiscard]] const CardPages& pages() const { return *pages_; }

 private:
  void MakeControls(const CardOptions& options);
  QPushButton* MakeButton(const char* name, const QString& caption, int choice);
  void FitPicture();
  void ShowCard();
  void ShowPicture();

  const CloneData& document_;
  std::string name_;
  std::optional<CardPages> pages_;
  QComboBox* paper_;
  QCheckBox* pocket_;
  QCheckBox* special_;
  QLabel* account_;
  QLabel* picture_;
  QPushButton* save_;
  QPushButton* print_;
  int picture_size_ = 0;
};

}  // namespace q40
