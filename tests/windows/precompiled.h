// What nearly every window test includes, compiled once for all of them. Each file still names what it uses.
#pragma once

#include <windows.h>
// What it leaves out and window code uses.
#include <commctrl.h>

#include "tests/precompiled.h"
