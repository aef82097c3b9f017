#pragma once
// The .ksx file association: the class keys that let a double click on a
// macro file play it, written for the current user, and their removal.
#include <string>
#include <string_view>

#include "sys/registry_port.h"

namespace kx::gui {

inline constexpr char kMacroExtension[] = "ksx";
inline constexpr char kMacroFileDescription[] = "Kestrelix マクロファイル";
inline constexpr char kProgramFileName[] = "Kestrelix.exe";
// The program's own icon, the first of its resources.
inline constexpr int kMacroFileIconIndex = 0;

// The extension lower-cased, a leading "." dropped, + "_auto_file".
std::string AssociationClassName(std::string_view extension);

// Writes ".ksx", the class, its icon and its open command, in that order;
// stops (false) when ".ksx" cannot be written. The keys after it are written
// whatever becomes of each.
bool AssociateMacroFiles(RegistryPort& registry, std::string_view programPath);

// Deletes the keys deepest first, then ".ksx"; keys that are not there are
// passed over.
void RemoveMacroFileAssociation(RegistryPort& registry);

}  // namespace kx::gui
