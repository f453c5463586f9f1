#include "channel_list/row_commands.h"

#include <algorithm>

#include <QApplication>
#include <QClipboard>
#include <QInputDialog>
#include <QMimeData>

#include "channel_list/set_value_dialog.h"
#include "document/memory_edit.h"
#include "files/channel_table.h"
#include "radio/channel_fields.h"
#include "widgets/message_box.h"
#include "widgets/paths.h"

namespace q40 {
namespace {

const QString kListFormat = QStringLiteral("application/x-rxq40-channels");

std::vector<int> MemoryRowsOf(const std::vector<ChannelPlace>& places) {
  std::vector<int> rows;
  rows.reserve(places.size());
  for (const ChannelPlace& place : places) rows.push_back(place.index);
  return rows;
}

std::vector<ChannelPlace> MemoryPlaces(int first, std::size_t count) {
  std::vector<ChannelPlace> places;
  for (int n = first; places.size() < count && n < kMemoryChannelCount; ++n) {
    places.push_back({ChannelKind::kMemory, Band::kVhf, n});
  }
  return places;
}

// "1 channel", "3 channels"
QString Counted(std::size_t count) {
  return count == 1 ? QObject::tr("1 channel") : QObject::tr("%1 channels").arg(count);
}

// The first of them, and how many more there are.
QString Listed(const QStringList& names) {
  constexpr qsizetype kNamed = 8;
  QString text = names.mid(0, kNamed).join(QStringLiteral(", "));
  if (names.size() > kNamed) text += QObject::tr(" and %1 more").arg(names.size() - kNamed);
  return text;
}

}  // namespace

RowCommands::RowCommands(CloneDocument& document, QWidget& window)
    : QObject(&window), document_(document), window_(window) {}

// What is said comes last: a cell that becomes current has something to say too.
void RowCommands::Store(const CloneImage& image, const QString& account, ChannelTable* table,
                        const Places& select) {
  const bool changed = document_.StoreChannels(image);
  if (table != nullptr) table->Select(select);
  emit said(changed ? account : tr("Nothing has changed by that."));
}

// ---- the clipboard

void RowCommands::Copy(ChannelTable& table) {
  const Places places = table.SelectedPlaces();
  if (places.empty()) return emit said(tr("No rows are selected."));
  const CloneImage& image = document_.image();
  const std::vector<Field> fields = table.ShownFields();
  auto* data = new QMimeData;
  data->setText(QString::fromStdString(TableText(image, places, fields)));
  data->setHtml(QString::fromStdString(TableHtml(image, places, fields)));
  data->setData(kListFormat, QByteArray::fromStdString(ExportRows(image, places)));
  QApplication::clipboard()->setMimeData(data);
  emit said(tr("Copied: %1.").arg(Counted(places.size())));
}

void RowCommands::Cut(ChannelTable& table) {
  if (table.SelectedPlaces().empty()) return emit said(tr("No rows are selected."));
  Copy(table);
  Clear(table);
}

// Rows go into the rows that are shown, so that nothing is overwritten that nobody sees. One row goes
// into all that are selected.
void RowCommands::Paste(ChannelTable& table) {
  const QMimeData* data = QApplication::clipboard()->mimeData();
  const bool own = data != nullptr && data->hasFormat(kListFormat);
  const std::string text = data == nullptr ? std::string()
                           : own           ? data->data(kListFormat).toStdString()
                                           : data->text().toStdString();
  if (CheckCsvSize(text, {})) return emit said(tr("The clipboard holds too long a text."));
  CopiedTable copied = ReadTable(text, table.FieldsFromCurrent());
  if (copied.rows.empty()) return emit said(tr("There is no text on the clipboard."));
  Places places = table.PlacesFromCurrent();
  const Places selected = table.SelectedPlaces();
  if (copied.rows.size() == 1 && selected.size() > 1) {
    places = selected;
    copied.rows.resize(selected.size(), copied.rows.front());
  }
  if (copied.rows.size() > places.size()) {
    return emit said(
        tr("Nothing was pasted: of %1 rows only %2 find a place from here to the end of "
           "the rows that are shown.")
            .arg(copied.rows.size())
            .arg(places.size()));
  }
  places.resize(copied.rows.size());
  const CloneImage before = document_.image();
  CloneImage image = before;
  const ImportReport report = PasteTable(copied, own, document_.model(), places, image);
  const bool changed = document_.StoreChannels(image);
  const auto passed_over = static_cast<std::size_t>(report.passed_over_count);
  QString account = changed ? tr("Pasted: %1.").arg(Counted(places.size() - passed_over))
                            : tr("The paste has changed nothing.");
  if (report.note_count > 0) {
    account += tr(" Not understood: %1.").arg(report.note_count);
    emit noted(account, report, before);
  }
  table.Select(places);
  emit said(account);
}

// ---- values

// All or nothing: what one channel refuses, none gets. Empty channels are passed over, but for a
// frequency, which programs them.
QString RowCommands::SetIn(const Places& places, Field field, const ValueOf& value) {
  CloneImage image = document_.image();
  std::size_t passed_over = 0;
  QStringList also;
  for (std::size_t i = 0; i < places.size(); ++i) {
    if (field != Field::kFrequency && !InUse(image, places[i])) {
      ++passed_over;
      continue;
    }
    const CellResult result = SetCell(image, document_.model(), places[i], field, value(i));
    if (!result.also.empty() && !also.contains(Shown(result.also))) also << Shown(result.also);
    if (result.refusal.empty()) continue;
    return tr("Nothing was changed. %1: %2").arg(Shown(NameOf(places[i])), Shown(result.refusal));
  }
  QString account =
      tr("%1 set in %2.").arg(Shown(FieldName(field)), Counted(places.size() - passed_over));
  if (passed_over > 0) account += tr(" Passed over as empty: %1.").arg(passed_over);
  if (!also.isEmpty()) account += tr(" With it: %1.").arg(Listed(also));
  Store(image, account);
  return {};
}

void RowCommands::SetValue(ChannelTable& table) {
  const Places places = table.SelectedPlaces();
  if (places.empty()) return emit said(tr("No rows are selected."));
  const std::vector<Field> fields = table.ShownFields();
  std::vector<SetValueDialog::Choice> choices;
  for (const Field field : fields) {
    QStringList entries;
    for (const std::string& entry : ChoicesOf(places.front(), field)) {
      entries << Shown(WithoutUnit(field, entry));
    }
    choices.push_back({QString::fromStdString(HeadingOf(field)), entries});
  }
  const auto current = std::find(fields.begin(), fields.end(), table.CurrentField());
  const auto take = [&](int choice, const QString& value) {
    return SetIn(places, fields[static_cast<std::size_t>(choice)],
                 [&](std::size_t) { return value.toStdString(); });
  };
  const int preset = current == fields.end() ? 0 : static_cast<int>(current - fields.begin());
  SetValueDialog(choices, preset, static_cast<int>(places.size()), take, &window_).exec();
}

void RowCommands::FillDown(ChannelTable& table) {
  const Places places = table.SelectedPlaces();
  if (places.size() < 2) return emit said(tr("Select the row to fill from and those below it."));
  const Field field = table.CurrentField();
  std::string value = CellText(document_.image(), places.front(), field);
  const QString why =
      SetIn({places.begin() + 1, places.end()}, field, [&](std::size_t) { return value; });
  if (!why.isEmpty()) emit said(why);
}

// A frequency plus a step, a name plus a number.
void RowCommands::FillSeries(ChannelTable& table) {
  const Places places = table.SelectedPlaces();
  const Field field = table.CurrentField();
  const CloneImage& image = document_.image();
  if (field != Field::kFrequency && field != Field::kName) {
    return emit said(tr("A series can be filled in the columns Frequency and Name."));
  }
  if (places.size() < 2 || !InUse(image, places.front())) {
    return emit said(tr("Select a channel in use and the rows below it."));
  }
  const std::string first = CellText(image, places.front(), field);
  ValueOf value = [&](std::size_t i) { return NumberedName(first, static_cast<int>(i) + 1); };
  if (field == Field::kFrequency) {
    const auto& record = RecordAt(image, places.front());
    const std::string_view step =
        CodeText(Field::kStep, record.Number(places.front().kind, Field::kStep));
    bool ok = false;
    const double khz = QInputDialog::getDouble(
        &window_, tr("Fill Series"), tr("Step from channel to channel, kHz:"),
        static_cast<double>(LeadingNumber(step)) / static_cast<double>(kNumberScale), -100'000,
        100'000, 1, &ok);
    if (!ok) return emit said(tr("Nothing was filled."));
    const auto units = static_cast<int>(std::lround(khz * 10));  // of 100 Hz
    value = [start = record.Frequency(), units](std::size_t i) {
      const auto frequency = std::int64_t{start} + std::int64_t{units} * static_cast<int>(i + 1);
      return frequency < 0 || frequency > kLargestFrequency
                 ? "beyond all bands"
                 : OffsetText(static_cast<Units100Hz>(frequency));
    };
  }
  const QString why = SetIn({places.begin() + 1, places.end()}, field, value);
  if (!why.isEmpty()) emit said(why);
}

void RowCommands::Clear(ChannelTable& table) {
  const Places places = table.SelectedPlaces();
  if (places.empty()) return emit said(tr("No rows are selected."));
  CloneImage image = document_.image();
  QStringList names;
  for (const ChannelPlace& place : places) {
    if (!InUse(image, place)) continue;
    names << table.channels().Described(place);
    if (ClearRecord(image, place)) continue;
    return emit said(tr("Nothing was cleared: %1 is always there; only PH and PL can be emptied.")
                         .arg(Shown(NameOf(place))));
  }
  Store(image, tr("Cleared: %1.").arg(Listed(names)));
}

// ---- memory channels that move

// Asks about what would fall off the end.
bool RowCommands::MayFallOff(const ChannelTable& table, int n, int count) {
  QStringList names;
  for (const int row : WouldFallOff(document_.image(), n, count)) {
    names << table.channels().Described({ChannelKind::kMemory, Band::kVhf, row});
  }
  if (names.isEmpty()) return true;
  const QString question =
      tr("The channels behind move down, and what is at the end would be lost:\n%1\nGo on?")
          .arg(Listed(names));
  if (Confirmed(&window_, "INSERT OK", question.toUtf8().constData())) return true;
  emit said(tr("Nothing was inserted."));
  return false;
}

void RowCommands::Duplicate(ChannelTable& table) {
  const Places places = table.SelectedPlaces();
  if (places.empty()) return emit said(tr("No rows are selected."));
  const int behind = places.back().index + 1;
  const int room = kMemoryChannelCount - behind;
  if (static_cast<int>(places.size()) > room) {
    return emit said(
        tr("Nothing was duplicated: behind %1 there is room for %2 only.")
            .arg(Shown(NameOf(places.back())), Counted(static_cast<std::size_t>(room))));
  }
  if (!MayFallOff(table, behind, static_cast<int>(places.size()))) return;
  CloneImage image = document_.image();
  const int first = DuplicateMemoryChannels(image, MemoryRowsOf(places));
  Store(image, tr("Duplicated: %1.").arg(Counted(places.size())), &table,
        MemoryPlaces(first, places.size()));
}

// As many as are selected, before the first of them.
void RowCommands::Insert(ChannelTable& table) {
  const Places places = table.SelectedPlaces();
  if (places.empty()) return emit said(tr("No rows are selected."));
  const int n = places.front().index;
  const auto count = static_cast<int>(places.size());
  if (!MayFallOff(table, n, count)) return;
  CloneImage image = document_.image();
  InsertMemoryChannels(image, n, count);
  Store(image, tr("Inserted before %1: %2 without a frequency.")
                   .arg(Shown(NameOf(places.front())), Counted(places.size())));
}

void RowCommands::Delete(ChannelTable& table) {
  const Places places = table.SelectedPlaces();
  if (places.empty()) return emit said(tr("No rows are selected."));
  QStringList names;
  for (const ChannelPlace& place : places) {
    if (InUse(document_.image(), place)) names << table.channels().Described(place);
  }
  CloneImage image = document_.image();
  DeleteMemoryChannels(image, MemoryRowsOf(places));
  const QString account = names.isEmpty()
                              ? tr("Deleted: %1 that were empty.").arg(Counted(places.size()))
                              : tr("Deleted: %1.").arg(Listed(names));
  Store(image, account, &table, {places.front()});
}

void RowCommands::MoveTo(ChannelTable& table, int to) {
  const Places places = table.SelectedPlaces();
  if (places.empty()) return;
  CloneImage image = document_.image();
  const int first = MoveMemoryChannels(image, MemoryRowsOf(places), to);
  Store(image, tr("Moved: %1.").arg(Counted(places.size())), &table,
        MemoryPlaces(first, places.size()));
}

// By one of the rows that are shown, in their order; rows apart are gathered.
void RowCommands::Step(ChannelTable& table, int by) {
  const Places places = table.SelectedPlaces();
  if (places.empty()) return emit said(tr("No rows are selected."));
  const auto beyond = table.ShownBeside(by < 0 ? places.front() : places.back(), by);
  if (!beyond) return emit said(tr("There is no channel beyond."));
  MoveTo(table, by < 0 ? beyond->index : beyond->index + 1);
}

void RowCommands::Sort(ChannelTable& table, bool descending) {
  const Places places = table.SelectedPlaces();
  if (places.size() < 2) return emit said(tr("Select the rows to sort."));
  CloneImage image = document_.image();
  SortMemoryChannels(image, MemoryRowsOf(places), table.CurrentField(), descending);
  Store(
      image,
      tr("Sorted by %1: %2.").arg(Shown(FieldName(table.CurrentField())), Counted(places.size())));
}

// Of the rows that are selected, or of all when it is one.
void RowCommands::CloseGaps(ChannelTable& table) {
  Places places = table.SelectedPlaces();
  if (places.size() < 2) places = MemoryPlaces(0, kMemoryChannelCount);
  CloneImage image = document_.image();
  CloseMemoryGaps(image, MemoryRowsOf(places));
  Store(image, tr("Gaps closed from %1 to %2.")
                   .arg(Shown(NameOf(places.front())), Shown(NameOf(places.back()))));
}

}  // namespace q40
