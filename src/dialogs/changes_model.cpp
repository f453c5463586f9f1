#include "dialogs/changes_model.h"

#include <algorithm>
#include <array>

#include <QFont>
#include <QGuiApplication>
#include <QPalette>

#include "widgets/paths.h"

namespace q40 {
namespace {

// In the order of the differences.
constexpr const char* kGroups[] = {"Radio", "Settings", "Special channels", "Channels",
                                   "Auto dialer"};
constexpr std::size_t kGroupCount = std::size(kGroups);

std::size_t GroupOf(const CellDifference& difference) {
  if (!difference.at.unit) return 0;
  switch (difference.at.unit->kind()) {
    case Unit::Kind::kSettings: return 1;
    case Unit::Kind::kSpecial: return 2;
    case Unit::Kind::kMemory: return 3;
    default: return 4;
  }
}

QString Text(const CellDifference& difference, int column) {
  switch (column) {
    case ChangesModel::kPlace: return Shown(difference.place);
    case ChangesModel::kWhat: return Shown(difference.name);
    case ChangesModel::kBefore: return Shown(difference.a);
    default: return Shown(difference.b);
  }
}

}  // namespace

void ChangesModel::SetDifferences(std::vector<CellDifference> differences) {
  differences_ = std::move(differences);
  Arrange();
}

void ChangesModel::SetFilter(const QString& filter) {
  filter_ = filter;
  Arrange();
}

const CellDifference* ChangesModel::At(int row) const {
  if (row < 0 || row >= rowCount()) return nullptr;
  const int difference = lines_[static_cast<std::size_t>(row)].difference;
  return difference < 0 ? nullptr : &differences_[static_cast<std::size_t>(difference)];
}

QString ChangesModel::CountsText() const {
  std::array<int, kGroupCount> counts{};
  for (const CellDifference& one : differences_) ++counts[GroupOf(one)];
  QStringList parts;
  for (std::size_t group = 0; group < kGroupCount; ++group) {
    if (counts[group] == 0) continue;
    parts << QStringLiteral("%1 %2").arg(tr(kGroups[group])).arg(counts[group]);
  }
  return parts.join(QStringLiteral(", "));
}

bool ChangesModel::Passes(const CellDifference& difference) const {
  if (filter_.isEmpty()) return true;
  for (int column = 0; column < kColumns; ++column) {
    if (Text(difference, column).contains(filter_, Qt::CaseInsensitive)) return true;
  }
  return false;
}

void ChangesModel::Arrange() {
  beginResetModel();
  lines_.clear();
  shown_ = 0;
  std::size_t heading = 0;
  int in_group = 0;
  const auto count_group = [&] {
    if (in_group > 0) lines_[heading].heading += QStringLiteral(" (%1)").arg(in_group);
    in_group = 0;
  };
  std::size_t group = kGroupCount;
  for (std::size_t i = 0; i < differences_.size(); ++i) {
    const CellDifference& one = differences_[i];
    if (!Passes(one)) continue;
    if (GroupOf(one) != group) {
      count_group();
      group = GroupOf(one);
      heading = lines_.size();
      lines_.push_back({-1, tr(kGroups[group])});
    }
    lines_.push_back({static_cast<int>(i), {}});
    ++in_group;
    ++shown_;
  }
  count_group();
  endResetModel();
}

int ChangesModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(lines_.size());
}

int ChangesModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : kColumns;
}

QVariant ChangesModel::data(const QModelIndex& index, int role) const {
  if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
  const CellDifference* difference = At(index.row());
  if (difference != nullptr) {
    if (role == Qt::DisplayRole) return Text(*difference, index.column());
    if (role == Qt::ToolTipRole) return PlainToolTip(Text(*difference, index.column()));
    return {};
  }
  // A heading cannot be chosen, but is to be read as well as the rest.
  if (role == Qt::ForegroundRole) return QGuiApplication::palette().brush(QPalette::Text);
  if (role == Qt::FontRole) {
    QFont font;
    font.setBold(true);
    return font;
  }
  if (role != Qt::DisplayRole || index.column() != 0) return {};
  return lines_[static_cast<std::size_t>(index.row())].heading;
}

QVariant ChangesModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (role != Qt::DisplayRole || orientation != Qt::Horizontal) return {};
  static constexpr const char* kTitles[] = {"Place", "What", "Before", "After"};
  return tr(kTitles[section]);
}

Qt::ItemFlags ChangesModel::flags(const QModelIndex& index) const {
  if (At(index.row()) == nullptr) return Qt::NoItemFlags;
  return Qt::ItemIsEnabled | Qt::ItemIsSelectable;
}

}  // namespace q40
