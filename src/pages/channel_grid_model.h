// The cells of a channel grid: what a row of the image shows under which heading.
//
// Two orders exist, and both are kept as they are. A redraw puts text c into column c, in the order
// in which a record stores its cells; a read from the radio places the texts under the headings
// that name them. A row remembers how it was drawn last. Who prefers it has all rows by their headings. Under a heading that does not name it, a
// cell has a tool tip with the field's name.
#pragma once

#include <vector>

#include <QAbstractTableModel>
#include <QFont>

#include "document/clone_image.h"

namespace q40 {

// Grid row r (from 1) is model row r - 1, grid column c (from 1) is model column c - 1; row titles
// and headings are header data. The image must outlive the model.
class ChannelGridModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  enum class Order : unsigned char { kStored, kByHeading };

  ChannelGridModel(ChannelKind kind, const CloneImage& image, QObject* parent);

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                    int role) const override;

  // What a message calls a row: title, and frequency and name where it has them.
  [[nodiscard]] QString Described(int row) const;

  // The image's rows first to last (model rows) have changed and are drawn in this order.
  void Redraw(int first, int last, Order order = Order::kStored);
  // Puts a star in front of a row title, until the row is redrawn.
  void StarTitle(int row);
  // Marks a row title; `was` says what has changed. An empty text takes the mark away. What the title
  // says stays.
  void MarkTitle(int row, const QString& was);
  static constexpr int kMarkRole = Qt::UserRole;  // of a row title: whether it is marked

  // Every row by its headings, whatever has drawn it; what a row remembers stays.
  void ShowByHeading(bool on);

  void SetCellFont(const QFont& font);
  [[nodiscard]] const QFont& cell_font() const { return cell_font_; }

 private:
  struct RowState {
    Order order = Order::kStored;
    bool starred = false;
    QString was;
  };

  // The field that a cell shows.
  [[nodiscard]] Field FieldAt(int row, int column) const;
  [[nodiscard]] const ChannelRecord& RecordAt(int row) const;
  [[nodiscard]] bool InUse(int row) const;
  [[nodiscard]] QString RowTitle(int row) const;  // without a star

  ChannelKind kind_;
  const CloneImage& image_;
  std::vector<RowState> rows_;
  bool by_heading_ = false;
  QFont cell_font_;
};

}  // namespace q40
