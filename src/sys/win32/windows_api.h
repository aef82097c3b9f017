#pragma once
// The Windows headers, as every Win32 file here includes them. The macro
// MessageBox is removed: it would rename the dialog port's method of that
// name in some files and not in others.
#include <windows.h>
#undef MessageBox
