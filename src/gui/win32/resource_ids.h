#pragma once
// Resource ids of Kestrelix.exe (src/gui/res/kestrelix.rc).

namespace kx::win32 {

inline constexpr int kAppIconId = 1;
inline constexpr int kFolderIconId = 2;
inline constexpr int kMacroIconId = 3;

}  // namespace kx::win32
