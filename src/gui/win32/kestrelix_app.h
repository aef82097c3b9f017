#pragma once
// The program from start-up to shutdown.
#include "sys/win32/windows_api.h"

namespace kx::win32 {

// Runs Kestrelix and returns the process exit code.
int RunKestrelix(HINSTANCE instance, int show);

}  // namespace kx::win32
