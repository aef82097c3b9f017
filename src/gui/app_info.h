#pragma once
// The program's name and where its home page is.
namespace kx::gui {

inline constexpr char kAppTitle[] = "Kestrelix";
inline constexpr char kHomePageUrl[] = "https://github.com/kestrelix/kestrelix";
inline constexpr char kVersion[] = "0.9.0";

}  // namespace kx::gui
