#include "channel_list/channel_list_model.h"

#include <algorithm>

#include "radio/channel_fields.h"
#include "widgets/paths.h"

namespace q40 {
namespace {

constexpr int kBandCount = static_cast<int>(kBands.size());

// The reading order, but with the name beside the frequency: these two tell a channel.
std::vector<Field> Columns(ChannelKind kind) {
  std::vector<Field> fields = {Field::kFrequency};
  if (HasField(kind, Field::kName)) fields.push_back(Field::kName);
  for (const Field field : kReadingOrder) {
    const bool there = std::find(fields.begin(), fields.end(), field) != fields.end();
    if (!there && HasField(kind, field)) fields.push_back(field);
  }
  return fields;
}

}  // namespace

ChannelListModel::ChannelListModel(ChannelKind kind, CloneDocument& document, ListMarks& marks,
                                   QObject* parent)
    : QAbstractTableModel(parent),
      kind_(kind),
      document_(document),
      marks_(marks),
      fields_(Columns(kind)) {}

ChannelPlace ChannelListModel::PlaceAt(int row) const {
  if (kind_ == ChannelKind::kMemory) return {kind_, Band::kVhf, row};
  return {kind_, kBands[static_cast<std::size_t>(row / kSpecialChannelCount)],
          row % kSpecialChannelCount};
}

int ChannelListModel::RowAt(const ChannelPlace& place) {
  return place.index + static_cast<int>(place.band) * kSpecialChannelCount;
}

QString ChannelListModel::Described(const ChannelPlace& place) const {
  const std::string name = HasField(kind_, Field::kName)
                               ? ' ' + CellText(document_.image(), place, Field::kName)
                               : std::string();
  return QStringLiteral("%1 (%2)").arg(
      Shown(NameOf(place)),
      Shown(CellText(document_.image(), place, Field::kFrequency) + name).trimmed());
}

QStringList ChannelListModel::Choices(const QModelIndex& index) const {
  const Field field = FieldAt(index.column());
  QStringList choices;
  for (const std::string& choice : ChoicesOf(PlaceAt(index.row()), field)) {
    choices << Shown(WithoutUnit(field, choice));
  }
  return choices;
}

QString ChannelListModel::Refusal(const QModelIndex& index, const QString& text) const {
  if (index.data(Qt::EditRole).toString() == text) return {};
  CloneImage image = document_.image();
  return Shown(SetCell(image, document_.model(), PlaceAt(index.row()), FieldAt(index.column()),
                       text.toStdString())
                   .refusal);
}

int ChannelListModel::rowCount(const QModelIndex& parent) const {
  if (parent.isValid()) return 0;
  return kind_ == ChannelKind::kMemory ? kMemoryChannelCount : kBandCount * kSpecialChannelCount;
}

int ChannelListModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(fields_.size());
}

QVariant ChannelListModel::data(const QModelIndex& index, int role) const {
  if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
  const ChannelPlace place = PlaceAt(index.row());
  const Field field = FieldAt(index.column());
  switch (role) {
    case Qt::DisplayRole: return Shown(CellText(document_.image(), place, field));
    case Qt::EditRole: return QString::fromStdString(CellText(document_.image(), place, field));
    case kMarkRole:
    case Qt::AccessibleDescriptionRole: return marks_.At(place, field);
    case Qt::ToolTipRole: return PlainToolTip(marks_.At(place, field));
    default: return {};
  }
}

QVariant ChannelListModel::headerData(int section, Qt::Orientation orientation, int role) const {
  const bool spoken = role == Qt::AccessibleTextRole;
  if (role != Qt::DisplayRole && !spoken) return {};
  if (orientation == Qt::Horizontal) {
    QString heading = QString::fromStdString(HeadingOf(FieldAt(section)));
    return spoken ? heading : heading.replace(QLatin1String(", "), QLatin1String("\n"));
  }
  const ChannelPlace place = PlaceAt(section);
  return Shown(kind_ == ChannelKind::kMemory ? TitleOf(place) : NameOf(place));
}

Qt::ItemFlags ChannelListModel::flags(const QModelIndex& index) const {
  if (!index.isValid()) return Qt::ItemIsDropEnabled;
  Qt::ItemFlags flags = QAbstractTableModel::flags(index) | Qt::ItemNeverHasChildren;
  if (kind_ == ChannelKind::kMemory) flags |= Qt::ItemIsDragEnabled;
  if (!locked_ && IsEditable(PlaceAt(index.row()), FieldAt(index.column()))) {
    flags |= Qt::ItemIsEditable;
  }
  return flags;
}

Qt::DropActions ChannelListModel::supportedDropActions() const {
  return Qt::CopyAction | Qt::MoveAction;
}

// A cell that is left as it was is no edit, although the dialog's OK would be one.
bool ChannelListModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  if (role != Qt::EditRole || locked_ || !checkIndex(index, CheckIndexOption::IndexIsValid)) {
    return false;
  }
  const QString text = value.toString();
  if (text == index.data(Qt::EditRole).toString()) return false;
  CloneImage image = document_.image();
  const CellResult result = SetCell(image, document_.model(), PlaceAt(index.row()),
                                    FieldAt(index.column()), text.toStdString());
  if (!result.refusal.empty()) {
    emit refused(tr("Not taken: %1").arg(Shown(result.refusal)));
    return false;
  }
  if (!document_.StoreChannels(image)) return false;
  if (!result.also.empty()) emit followed(tr("With it: %1.").arg(Shown(result.also)));
  return true;
}

// What is said of a channel depends on the model and its version too.
void ChannelListModel::Show(const DocumentChange& change) {
  const auto show = [this](int first, int last) {
    emit dataChanged(index(first, 0), index(last, columnCount() - 1));
  };
  if (change.model || (kind_ == ChannelKind::kSpecial && change.special_channels)) {
    show(0, rowCount() - 1);
  } else if (kind_ == ChannelKind::kMemory) {
    EachRun(change.channels, show);
  }
}

}  // namespace q40
