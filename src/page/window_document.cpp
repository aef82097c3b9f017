#include "page/window_document.h"

namespace kx {

std::unique_ptr<PageDocument> DocumentOfWindow(WindowPort& windows, DocumentPort& documents,
                                               WindowHandle window, int devToolsPort) {
  if (!window) return nullptr;
  WindowHandle top = window;
  for (WindowHandle up = windows.Parent(top); up; up = windows.Parent(top)) top = up;
  if (windows.ClassName(top) == kChromiumFrameClass)
    return documents.FromDevTools(devToolsPort, {});
  return documents.FromWindow(window);
}

}  // namespace kx
