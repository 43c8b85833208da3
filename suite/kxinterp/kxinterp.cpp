// kxinterp.dll: the suite's interpretation engine. No interpreter is attached yet: nothing is interpreted
// and every answer is 0.
#include "suite/unattached.h"

extern "C" void __stdcall LIBSTART() {}
extern "C" void __stdcall LIBSTOP() {}

KX_UNATTACHED_6(INTERPRET)
