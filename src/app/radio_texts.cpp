#include "app/radio_texts.h"

#include <algorithm>

#include <QCoreApplication>

#include "base/hex.h"
#include "link/write_texts.h"
#include "radio/models.h"
#include "widgets/paths.h"

namespace q40 {
namespace {

QString tr(const char* text) { return QCoreApplication::translate("RadioTexts", text); }

QString RadioText(int model, char version_letter) {
  const std::string_view name = ModelName(model);
  return tr("%1 version %2")
      .arg(QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size())),
           QLatin1String(version_letter == 'A' ? "A" : "0"));
}

QString RestoreText(const Backup& backup) {
  if (backup.path.isEmpty()) return {};
  return tr("choose Backups in the Tools menu. It is\n%1").arg(backup.path);
}

QString GoOnText() { return tr("choose Write the Rest, here or in the Radio menu."); }

// All of the settings are one thing.
QString TextOf(std::vector<UnitData> units) {
  const auto memory = std::find_if(units.begin(), units.end(), [](const UnitData& data) {
    return data.unit.kind() == Unit::Kind::kMemory;
  });
  const bool settings = memory - units.begin() == kSettingsUnits;
  if (settings) units.erase(units.begin(), memory);
  QStringList parts;
  if (settings) parts << tr("settings");
  if (!units.empty()) parts << QString::fromStdString(UnitsText(units));
  return parts.join(tr(", "));
}

QString GoodText(const WriteResult& result, const Backup& backup) {
  using Stage = WriteResult::Stage;
  if (result.stage == Stage::kCompare) {
    return tr("The radio holds all of it already. Nothing was written.");
  }
  QString text = result.stage == Stage::kVerify ? tr("Written and verified.") : tr("Written.");
  if (!result.half) {
    text = tr("Written and verified: %1.").arg(TextOf(result.write.acknowledged));
  }
  if (!backup.name.isEmpty()) {
    text += tr(" Before, the radio held %1 (Tools, Backups).").arg(backup.name);
  }
  return text;
}

QString BadText(const WriteResult& result, const Backup& backup) {
  const QString restore = RestoreText(backup);
  if (result.last.outcome == Outcome::kNotAsKnown) {
    return tr(
        "Nothing was written: the radio does not hold what it was known to hold. These are the "
        "differences between what was known and what it holds. Read it, or write everything.");
  }
  if (result.last.outcome == Outcome::kDone) {
    QString text =
        tr("The radio did not keep everything. These are the differences between what was "
           "written and what it holds.");
    if (!restore.isEmpty()) text += tr(" To bring the backup back: ") + restore;
    return text;
  }
  QString aftermath = QString::fromStdString(
      AftermathText(result, {restore.toStdString(), GoOnText().toStdString()}));
  if (result.TouchedRadio() && !result.backup_kept && !restore.isEmpty()) {
    aftermath += tr(" To go back to the last backup of a whole radio: ") + restore;
  }
  if (result.last.outcome == Outcome::kWrongModel) return WrongModelText(result.last, aftermath);
  return ReasonText(result.last) + QLatin1Char(' ') + aftermath;
}

// What is worth telling although it ended well: one more sentence.
QString NoteText(const SequenceReport& report) {
  return QLatin1Char(' ') + QString::fromStdString(report.note) + QLatin1Char('.');
}

}  // namespace

bool MovesMemory(Sequence sequence) {
  return sequence == Sequence::kReadMemory || sequence == Sequence::kWriteMemory;
}

bool Writes(Sequence sequence) {
  return sequence == Sequence::kWriteSettings || sequence == Sequence::kWriteMemory ||
         sequence == Sequence::kRestore || sequence == Sequence::kWriteUnits;
}

QString DoingText(Sequence sequence) {
  switch (sequence) {
    case Sequence::kReadSettings: return tr("Reading settings");
    case Sequence::kReadMemory: return tr("Reading memory");
    case Sequence::kWriteSettings: return tr("Writing settings");
    case Sequence::kWriteMemory: return tr("Writing memory");
    case Sequence::kBackUp: return tr("Backing up the radio");
    case Sequence::kLookUp: return tr("Reading what the radio holds");
    case Sequence::kVerify: return tr("Verifying");
    case Sequence::kCompare: return tr("Comparing");
    case Sequence::kRestore: return tr("Restoring the radio");
    case Sequence::kWriteUnits: return tr("Writing changes");
    default: return tr("Identifying the radio");
  }
}

QString ProgressText(const SequenceProgress& progress) {
  return tr("%1 (%2): %3, %4 of %5")
      .arg(DoingText(progress.sequence), RadioText(progress.radio_model, progress.version_letter),
           QString::fromStdString(progress.where))
      .arg(progress.done + 1)
      .arg(progress.total);
}

QString ReasonText(const SequenceReport& report) {
  std::string text = report.why + '.';
  if (report.outcome == Outcome::kInterrupted && !report.where.empty()) {
    text = report.why + " before " + report.where + '.';
  }
  if (report.outcome == Outcome::kCommunicationError || report.outcome == Outcome::kDataError) {
    text = report.where + ": " + text;
  }
  if (!report.remedy.empty()) text += ' ' + report.remedy;
  if (!report.note.empty() && !report.note.starts_with(report.why)) text += ' ' + report.note + '.';
  text[0] = UpperCase(text[0]);
  return QString::fromStdString(text);
}

QString UnfinishedText(const UnfinishedWrite& write, const Backup& backup) {
  std::vector<UnitData> units;
  for (const UnitSwap& swap : write.swaps) units.push_back(swap.target);
  QString text =
      tr("A write to an %1 that began on %2 was not finished: the program ended in the middle of "
         "it. The radio may hold a part of it. It was to write: %3.\nTo go on: %4")
          .arg(Shown(ModelName(write.model)), TimeText(write.time), TextOf(units), GoOnText());
  const QString restore = RestoreText(backup);
  if (!restore.isEmpty()) text += tr(" To go back to the last backup of a whole radio: ") + restore;
  return text;
}

QString TimeText(const std::string& time) {
  return Shown(time.substr(0, 10)) + Shown(time.substr(std::min<std::size_t>(time.size(), 10)))
                                         .replace(QLatin1Char('.'), QLatin1Char(':'));
}

QString WrongModelText(const SequenceReport& report, const QString& aftermath) {
  return tr("%1 %2 Choosing a model starts anew, as does Auto Select: save first.")
      .arg(ReasonText(report), aftermath);
}

QString ReadText(Sequence sequence, const SequenceReport& report) {
  const QString radio = RadioText(report.radio_model, report.version_letter);
  return sequence == Sequence::kAutoSelect
             ? tr("The radio is an %1. Started anew with the defaults of its model.").arg(radio)
             : tr("Read from an %1.").arg(radio);
}

void PartialRead::Begin(Sequence sequence) {
  sequence_ = sequence;
  now_ = {};
}

void PartialRead::End(const SequenceReport& report) {
  const bool whole = report.outcome == Outcome::kDone;
  if (sequence_ == Sequence::kReadSettings) {
    kept_.settings = !whole && (kept_.settings || now_.settings);
  } else if (sequence_ == Sequence::kReadMemory) {
    kept_.channels = whole ? 0 : std::max(kept_.channels, now_.channels);
  }
}

QString PartialRead::Text() const {
  QStringList parts;
  if (kept_.settings) parts << tr("a part of the settings is the radio's, the rest is not");
  if (kept_.channels == 1) parts << tr("channel 0 is the radio's, the others are not");
  if (kept_.channels > 1) {
    parts << tr("channels 0 to %1 are the radio's, the others are not")
                 .arg(QString::fromStdString(ChannelTitle(kept_.channels - 1)));
  }
  if (parts.isEmpty()) return {};
  return tr("The read broke off: %1.").arg(parts.join(QLatin1String("; ")));
}

WriteAccount AccountOf(const WriteResult& result, const Backup& backup) {
  WriteAccount account;
  for (const CellDifference& difference : result.differences) {
    account.differences << QString::fromStdString(DifferenceText(difference));
  }
  const bool done = result.last.outcome == Outcome::kDone;
  const bool kept = done && account.differences.isEmpty();
  account.text = kept ? GoodText(result, backup) : BadText(result, backup);
  if (done && !result.last.note.empty()) account.text += NoteText(result.last);
  account.good = kept && result.last.note.empty();
  account.at_length = !account.good && (result.TouchedRadio() || result.backup_kept ||
                                        result.last.outcome == Outcome::kNotAsKnown);
  return account;
}

}  // namespace q40
