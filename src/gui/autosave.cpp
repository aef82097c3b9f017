#include "gui/autosave.h"

#include "settings/settings.h"
#include "text/macro_text.h"

namespace kx {

std::string RecordingAutosavePath(FilePort& files, int linkage) {
  const char separator = files.Separator();
  return files.AppFolder() + separator + "Macro" + separator +
         (linkage == kLinkageAssociated ? "Rec.ksx" : "Rec.txt");
}

bool AutosaveRecording(FilePort& files, int linkage, std::string_view editorText) {
  return sWriteText(files, RecordingAutosavePath(files, linkage), editorText);
}

}  // namespace kx
