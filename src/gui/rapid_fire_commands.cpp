// Rapid fire as the main window drives it.
#include "gui/main_controller.h"

namespace kx::gui {

bool MainController::RapidFireTakesHotkey(int) {
  return false;
}

}  // namespace kx::gui
