// Memory channels, or the special channels of both bands, as a table: every value under the heading of
// its meaning. Holds nothing itself; an edit is one change of the document.
#pragma once

#include <QAbstractTableModel>

#include "channel_list/list_marks.h"

namespace q40 {

class ChannelListModel final : public QAbstractTableModel {
  Q_OBJECT

 public:
  // The check-up's words for a cell, beside the tool tip: what a delegate marks.
  static constexpr int kMarkRole = Qt::UserRole;

  // Both must outlive the model.
  ChannelListModel(ChannelKind kind, CloneDocument& document, ListMarks& marks, QObject* parent);

  [[nodiscard]] ChannelKind kind() const { return kind_; }
  [[nodiscard]] ChannelPlace PlaceAt(int row) const;
  [[nodiscard]] Field FieldAt(int column) const {
    return fields_[static_cast<std::size_t>(column)];
  }
  [[nodiscard]] static int RowAt(const ChannelPlace& place);
  // "145.5 HOME" of a row in use, for messages: "channel 7 (145.5000 HOME)".
  [[nodiscard]] QString Described(const ChannelPlace& place) const;

  // The entries of a cell's list; empty for what is typed freely.
  [[nodiscard]] QStringList Choices(const QModelIndex& index) const;
  // Why a cell would not take a text; empty: it would. Nothing is changed.
  [[nodiscard]] QString Refusal(const QModelIndex& index, const QString& text) const;

  // While locked nothing can be edited.
  void SetLocked(bool locked) { locked_ = locked; }
  void Show(const DocumentChange& change);

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                    int role) const override;
  [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;
  bool setData(const QModelIndex& index, const QVariant& value, int role) override;
  [[nodiscard]] Qt::DropActions supportedDropActions() const override;

 signals:
  // A text that was not taken, with the reason; the cell is as it was.
  void refused(const QString& why);
  // What an edit has changed beside its cell: "Step 12.5KHz".
  void followed(const QString& also);

 private:
  ChannelKind kind_;
  CloneDocument& document_;
  ListMarks& marks_;
  std::vector<Field> fields_;  // by column
  bool locked_ = false;
};

}  // namespace q40
