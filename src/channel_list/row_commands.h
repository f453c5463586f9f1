// What the channel list does to many channels at once. Each command is one change of the document, or
// none, and says what it has done.
#pragma once

#include <QObject>
#include <QString>

#include "channel_list/channel_table.h"
#include "files/channel_csv.h"

namespace q40 {

class RowCommands final : public QObject {
  Q_OBJECT

 public:
  // Questions come up over `window`. Both must outlive the commands.
  RowCommands(CloneDocument& document, QWidget& window);

  // Each works on the rows that are selected in the table, and on its current column.
  void Copy(ChannelTable& table);
  void Cut(ChannelTable& table);
  void Paste(ChannelTable& table);
  void Clear(ChannelTable& table);
  void SetValue(ChannelTable& table);
  void FillDown(ChannelTable& table);
  void FillSeries(ChannelTable& table);
  // Of memory channels alone.
  void Duplicate(ChannelTable& table);
  void Insert(ChannelTable& table);
  void Delete(ChannelTable& table);
  void MoveUp(ChannelTable& table) { Step(table, -1); }
  void MoveDown(ChannelTable& table) { Step(table, 1); }
  void SortAscending(ChannelTable& table) { Sort(table, false); }
  void SortDescending(ChannelTable& table) { Sort(table, true); }
  void CloseGaps(ChannelTable& table);
  // Before the channel that is at `to` now.
  void MoveTo(ChannelTable& table, int to);

 signals:
  void said(const QString& text);
  // A paste that has not understood everything.
  void noted(const QString& account, const q40::ImportReport& report,
             const q40::CloneImage& before);

 private:
  using Places = std::vector<ChannelPlace>;
  using ValueOf = std::function<std::string(std::size_t row)>;

  void Step(ChannelTable& table, int by);
  void Sort(ChannelTable& table, bool descending);
  QString SetIn(const Places& places, Field field, const ValueOf& value);
  bool MayFallOff(const ChannelTable& table, int n, int count);
  void Store(const CloneImage& image, const QString& account, ChannelTable* table = nullptr,
             const Places& select = {});

  CloneDocument& document_;
  QWidget& window_;
};

}  // namespace q40
