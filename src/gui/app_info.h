#pragma once
// The program's name, version and where its home page is.
#include "kx_version.h"

namespace kx::gui {

inline constexpr char kAppTitle[] = "Kestrelix";
inline constexpr char kHomePageUrl[] = "https://github.com/kestrelix/kestrelix";
inline constexpr char kVersion[] = KX_VERSION_STRING;

}  // namespace kx::gui
