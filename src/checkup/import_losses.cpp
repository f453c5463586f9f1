#include "checkup/import_losses.h"

#include "checkup/checkup.h"

namespace q40 {

void AddLosses(const CloneData& document, ImportReport& report) {
  for (const Finding& finding : CheckUp(document)) {
    const bool memory = finding.place.where == Place::Where::kMemory;
    const bool channel = memory || finding.place.where == Place::Where::kSpecial;
    if (!channel || RowOf(finding.kind).severity != Severity::kLoss) continue;
    report.AddLoss({memory ? ChannelKind::kMemory : ChannelKind::kSpecial, finding.place.band,
                    finding.place.index},
                   finding.field, finding.text);
  }
}

}  // namespace q40
