#pragma once
// The recording started with "/rec" is saved when the program ends.
#include <string>
#include <string_view>

#include "sys/file_port.h"

namespace kx {

// The program's folder followed by "\Macro\Rec.ksx" when Linkage is 8 (the
// .ksx association), else "\Macro\Rec.txt".
std::string RecordingAutosavePath(FilePort& files, int linkage);

// Writes the editor's text there as every macro is saved, over any old file
// without asking; false when it could not be written.
bool AutosaveRecording(FilePort& files, int linkage, std::string_view editorText);

}  // namespace kx
