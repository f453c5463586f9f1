#include "app/safety_net.h"

#include "app/main_menus.h"
#include "app/radio_commands.h"
#include "app/radio_display.h"
#include "app/session.h"

namespace q40 {

SafetyNet::SafetyNet(const Parts& at, QWidget& window)
    : QObject(&window),
      units_(at.session, at.prompts, at.radio),
      backups_(*new BackupsCommand({at.session, at.prompts, at.files, at.radio, units_, at.may_run},
                                   window)),
      stop_(*new StopControl(at.session, at.radio, at.status, window)) {
  connect(&units_, &UnitCommands::told, &at.display, &RadioDisplay::ShowReport);
  connect(&at.display, &RadioDisplay::restWanted, this, &SafetyNet::restWanted);
  connect(&at.display, &RadioDisplay::forgetWanted, &units_, [this, may = at.may_run] {
    if (may()) units_.ForgetRest();
  });
  const auto show = [&session = at.session, &menus = at.menus] {
    menus.SetEnabled(kWriteRestEntry, session.unfinished().pending().has_value());
  };
  connect(&at.session.unfinished(), &UnfinishedWork::changed, this, show);
  show();
}

}  // namespace q40
