#include "app/change_marks.h"

#include <QAction>
#include <QTimer>
#include <QWidget>

#include "app/known_states.h"
#include "app/main_pages.h"
#include "app/routing.h"
#include "app/session.h"
#include "pages/memory_page.h"
#include "pages/settings_page1.h"
#include "pages/settings_page2.h"
#include "pages/special_channels.h"
#include "widgets/change_mark.h"
#include "widgets/paths.h"

namespace q40 {
namespace {

QString InQuotes(const std::string& value) { return QStringLiteral("\"%1\"").arg(Shown(value)); }

// What the rows of a channel tell, as one line; empty without any.
QString WasText(const std::vector<const CellDifference*>& cells) {
  QStringList parts;
  QStringList values;  // of a channel that is gone
  for (const CellDifference* cell : cells) {
    if (!cell->at.field) {
      if (cell->name == "In use" && cell->a == "no") return ChangeMarks::tr("was empty");
      if (cell->name != "In use") parts << ChangeMarks::tr("was empty, with other stored data");
      continue;
    }
    const bool tells = *cell->at.field == Field::kFrequency || *cell->at.field == Field::kName;
    if (tells && !cell->a.empty()) values << Shown(cell->a);
    parts << ChangeMarks::tr("%1 was %2").arg(Shown(cell->name), InQuotes(cell->a));
  }
  const bool gone = !cells.empty() && cells.front()->name == "In use";
  if (gone) return ChangeMarks::tr("was %1").arg(values.join(QLatin1Char(' ')));
  return parts.join(QStringLiteral(", "));
}

}  // namespace

ChangeMarks::ChangeMarks(Session& session, const MainPages& pages, const KnownStates& states,
                         QWidget& window)
    : QObject(&window),
      session_(session),
      pages_(pages),
      states_(states),
      entry_(window.findChild<QAction*>(QLatin1String(kMarkChangesEntry))),
      mark_(new QTimer(this)) {
  const auto control = [&](const QString& name) {
    auto* on_first = pages.settings1().findChild<QWidget*>(name);
    return on_first != nullptr ? on_first : pages.settings2().findChild<QWidget*>(name);
  };
  for (const Setting& setting : Settings()) controls_.push_back(control(Shown(setting.control)));
  for (int index = 0; index < kDialCount; ++index) {
    controls_.push_back(control(QStringLiteral("txtDial_%1").arg(index)));
  }
  mark_->setSingleShot(true);
  mark_->setInterval(0);
  connect(mark_, &QTimer::timeout, this, &ChangeMarks::Mark);
  connect(entry_, &QAction::toggled, this, &ChangeMarks::Ask);
  connect(&session, &Session::changed, this, &ChangeMarks::Ask);
  connect(&session, &Session::busyChanged, this, &ChangeMarks::Ask);
  connect(&states, &KnownStates::changed, this, &ChangeMarks::Ask);
}

// One comparison for however many changes come at once, and none while the radio talks.
void ChangeMarks::Ask() {
  if (entry_->isChecked() || marked_) mark_->start();
}

void ChangeMarks::Mark() {
  if (session_.busy() == Session::Busy::kTalking) return;
  std::vector<CellDifference> differences;
  marked_ = entry_->isChecked() && states_.has_file();
  if (marked_) differences = DifferencesOf(states_.file().data, session_.document().data());
  MarkRows(differences);
  MarkControls(differences);
}

void ChangeMarks::MarkRows(const std::vector<CellDifference>& differences) {
  std::vector<std::vector<const CellDifference*>> memory(kMemoryChannelCount);
  std::vector<std::vector<const CellDifference*>> special(kSpecialChannelCount);
  for (const CellDifference& one : differences) {
    if (!one.at.unit) continue;
    const Unit unit = *one.at.unit;
    const auto row = static_cast<std::size_t>(unit.index());
    if (unit.kind() == Unit::Kind::kMemory) memory[row].push_back(&one);
    const bool shown =
        unit.kind() == Unit::Kind::kSpecial && unit.band() == session_.document().image().ShownBand;
    if (shown) special[row].push_back(&one);
  }
  const auto show = [](const auto& rows, ChannelGridModel& cells) {
    for (std::size_t row = 0; row < rows.size(); ++row) {
      cells.MarkTitle(static_cast<int>(row), WasText(rows[row]));
    }
  };
  show(memory, pages_.memory().grid().cells());
  show(special, pages_.special().grid().cells());
}

void ChangeMarks::MarkControls(const std::vector<CellDifference>& differences) {
  std::vector<QString> was(controls_.size());
  for (const CellDifference& one : differences) {
    const bool dial = one.at.unit && one.at.unit->kind() == Unit::Kind::kDialer;
    if (one.at.setting == nullptr && !dial) continue;
    const auto at =
        dial ? std::ssize(Settings()) + one.at.index : one.at.setting - Settings().data();
    was[static_cast<std::size_t>(at)] = tr("was %1").arg(InQuotes(one.a));
  }
  for (std::size_t i = 0; i < controls_.size(); ++i) ChangeMark::Show(*controls_[i], was[i]);
}

}  // namespace q40
