// kxrender.dll: the suite's report renderer. No script engine is attached yet: nothing is rendered and
// every answer is 0.
#include "suite/unattached.h"

extern "C" void __stdcall LIBSTART() {}
extern "C" void __stdcall LIBSTOP() {}

KX_UNATTACHED_5(RENDEROUTPUT)
KX_UNATTACHED_6(CREATEIMAGE)
KX_UNATTACHED_6(CREATETEXT)
KX_UNATTACHED_4(CREATEIMAGEEX)
