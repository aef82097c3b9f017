#pragma once
// The common controls' declarations, after the Windows headers they need.
// clang-format off
#include "sys/win32/windows_api.h"
#include <commctrl.h>
// clang-format on
