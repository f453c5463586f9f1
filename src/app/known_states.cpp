#include "app/known_states.h"

#include <algorithm>

#include <QTime>

#include "app/file_commands.h"
#include "app/list_commands.h"
#include "app/radio_commands.h"
#include "app/session.h"
#include "document/document_units.h"
#include "link/write_plan.h"
#include "widgets/paths.h"

namespace q40 {
namespace {

QString Now() { return QTime::currentTime().toString(QStringLiteral("HH:mm")); }

void CopyMemory(const CloneImage& from, CloneImage& to) {
  to.MemoryTable = from.MemoryTable;
  std::copy_n(from.ChannelInUse.begin(), kMemoryChannelCount, to.ChannelInUse.begin());
}

void CopyHalf(const CloneData& from, Half half, CloneData& to) {
  CloneData copy = from;
  if (half == Half::kMemory) {
    copy = to;
    CopyMemory(from.image, copy.image);
  } else if (half == Half::kSettings) {
    CopyMemory(to.image, copy.image);
  }
  copy.model = from.model;
  copy.image.VersionA = from.image.VersionA;
  to = std::move(copy);
}

// As a read would bring them back. What cannot be decoded is never written.
void LoadUnits(const std::vector<UnitData>& units, CloneData& data) {
  for (const UnitData& unit : units) static_cast<void>(LoadUnit(unit, data));
}

}  // namespace

KnownStates::KnownStates(Session& session, FileCommands& files, ListCommands& lists,
                         RadioCommands& radio, QObject* parent)
    : QObject(parent), session_(session) {
  KeepNew();
  connect(&session, &Session::changed, this, [this](const DocumentChange& change) {
    if (change.anew) KeepNew();
  });
  connect(&files, &FileCommands::fileHeld, this, &KnownStates::KeepFile);
  connect(&lists, &ListCommands::importing, this, &KnownStates::KeepBeforeImport);
  connect(&radio, &RadioCommands::told, this, &KnownStates::NoteSequence);
  // Where a comparison has found differences, the radio is not what was written.
  connect(&radio, &RadioCommands::writeTold, this,
          [this](const QString& /*text*/, const QStringList& differences) {
            if (!differences.isEmpty()) ForgetRadio(Half::kBoth);
          });
}

std::vector<CellDifference> KnownStates::ChangesOfWrite(Half half) const {
  const CloneData& loaded = session_.document().data();
  CloneData after = radio_->data;
  after.model = loaded.model;
  const WritePlan plan = MakeWritePlan(loaded, half);
  LoadUnits(plan.settings, after);
  LoadUnits(plan.memory, after);
  return DifferencesOf(radio_->data, after, half);
}

bool KnownStates::KnowsRadio(Half half) const {
  return radio_ && (radio_->half == Half::kBoth || radio_->half == half);
}

void KnownStates::KeepNew() {
  file_ = {tr("The new data, as it began"), session_.document().data()};
  has_file_ = false;
  ForgetIncoming();
  emit changed();
}

void KnownStates::KeepFile(bool saved) {
  const QString name = Shown(FileName(session_.path()));
  file_ = {(saved ? tr("%1, as last saved") : tr("%1, as opened")).arg(name),
           session_.document().data()};
  has_file_ = true;
  if (!saved) ForgetIncoming();
  emit changed();
}

void KnownStates::KeepBeforeImport(const std::string& path) {
  before_import_ = {tr("Before the import of %1").arg(Shown(FileName(path))),
                    session_.document().data()};
  emit changed();
}

void KnownStates::KeepBeforePaste(const CloneImage& before) {
  before_paste_ = {tr("Before the paste"), session_.document().data()};
  before_paste_->data.image = before;
  emit changed();
}

// They tell about other data.
void KnownStates::ForgetIncoming() {
  before_import_.reset();
  before_paste_.reset();
}

void KnownStates::NoteSequence(Sequence sequence, const SequenceReport& report) {
  const bool reads = sequence == Sequence::kReadSettings || sequence == Sequence::kReadMemory;
  const bool writes = sequence == Sequence::kWriteSettings || sequence == Sequence::kWriteMemory;
  if (!reads && !writes) return;
  const bool memory = sequence == Sequence::kReadMemory || sequence == Sequence::kWriteMemory;
  const Half half = memory ? Half::kMemory : Half::kSettings;
  const bool touched = !report.acknowledged.empty() || report.in_flight;
  if (report.outcome == Outcome::kDone && report.damaged.empty()) {
    // What was written is not all that is loaded: RPT has a frequency of its own, steps are lost.
    CloneData data = session_.document().data();
    LoadUnits(report.acknowledged, data);
    KeepRadio(data, half, reads ? tr("read") : tr("written"));
  } else if (report.outcome == Outcome::kDone || touched) {
    ForgetRadio(half);
  }
}

void KnownStates::KeepRadio(const CloneData& data, Half half, const QString& how) {
  const bool same_radio = radio_ && radio_->data.model == data.model;
  if (!same_radio) radio_ = State{{}, data, half};
  CopyHalf(data, half, radio_->data);
  if (radio_->half != half) radio_->half = Half::kBoth;
  radio_how_ = tr("%1 at %2").arg(how, Now());
  NameRadio();
}

void KnownStates::ForgetRadio(Half half) {
  if (!radio_ || half == Half::kBoth || radio_->half == half) {
    radio_.reset();
  } else {
    radio_->half = half == Half::kMemory ? Half::kSettings : Half::kMemory;
  }
  NameRadio();
}

void KnownStates::NameRadio() {
  if (radio_) {
    radio_->name = tr("The radio, as %1").arg(radio_how_);
    if (radio_->half == Half::kSettings) radio_->name += tr(" (settings)");
    if (radio_->half == Half::kMemory) radio_->name += tr(" (channels)");
  }
  emit changed();
}

}  // namespace q40
