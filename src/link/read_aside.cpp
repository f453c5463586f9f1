#include "link/read_aside.h"

namespace q40 {
namespace {

// Tells of the reads as of one.
class AsideWatcher final : public SequenceWatcher {
 public:
  AsideWatcher(SequenceWatcher& watcher, Half half, Sequence as)
      : watcher_(watcher), half_(half), as_(as) {}

  [[nodiscard]] SequenceReport Judged(SequenceReport report) const {
    if (report.outcome == Outcome::kDone && last_half_ && !report.damaged.empty()) {
      report.outcome = Outcome::kCommunicationError;
      report.why = DamageText(report.damaged);
      report.remedy = kCheckTheCable;
      report.where = as_ == Sequence::kBackUp ? "backup" : "comparison";
    }
    return report;
  }

  void Begin(Sequence sequence) override {
    last_half_ = half_ == Half::kSettings || sequence == Sequence::kReadMemory;
    watcher_.Begin(as_);
  }
  void ShowProgress(const SequenceProgress& progress) override {
    SequenceProgress shown = progress;
    shown.sequence = as_;
    watcher_.ShowProgress(shown);
  }
  void End(const SequenceReport& report) override { watcher_.End(Judged(report)); }

 private:
  SequenceWatcher& watcher_;
  const Half half_;
  const Sequence as_;
  bool last_half_ = false;
};

}  // namespace

SequenceReport ReadAside(Link& link, CloneDocument& radio, SequenceWatcher& watcher, Half half,
                         Sequence as) {
  AsideWatcher aside(watcher, half, as);
  Sequences sequences(link, radio, aside);
  switch (half) {
    case Half::kSettings: return aside.Judged(sequences.ReadSettings());
    case Half::kMemory: return aside.Judged(sequences.ReadMemory());
    default: return aside.Judged(sequences.ReadAll());
  }
}

}  // namespace q40
