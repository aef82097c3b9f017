#pragma once
// The Windows headers, as every Win32 file here includes them. Macros that
// share a name with a port's method are removed: they would rename that
// method in some files and not in others.
#include <windows.h>
#undef MessageBox
#undef VkKeyScan
#undef IsCharUpper
#undef DeleteFile
