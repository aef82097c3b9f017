// The browser line: opens an address in the automation browser and waits
// for the page; the tab it opened becomes the one "chrome" paths act on.
#include "page/browser_open.h"
#include "player/line_runner.h"

namespace kx {

void LineRunner::OpenBrowser(std::string_view address) {
  const PlayerOptions& options = p_.options_;
  const BrowserRequest request{address, options.browser, options.devToolsPort,
                               options.browserWaitMs};
  const BrowserOutcome outcome =
      OpenInBrowser(request, sys_.browser, sys_.files, sys_.clock, p_.playing_);
  // A tab that was opened is the one later lines mean, loaded or not.
  if (!outcome.tab.empty()) p_.browserTab_ = outcome.tab;
  p_.currentValue_ = CurrentValue::Boolean(outcome.result == BrowserResult::kLoaded);
  sys_.notify.SetStatusText(outcome.message);
}

}  // namespace kx
