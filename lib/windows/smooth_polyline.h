// The use of GDI+ by DeviceContext::DrawSmoothPolyline.
#pragma once

namespace kx {

// Starts GDI+ for the module when that has not happened yet; false when it cannot be started. GDI+ is started
// by the first line that is drawn and not with the module, whose entry must not wait for another module. It
// starts no thread.
bool StartSmoothDrawing() noexcept;

// Ends the use of GDI+, if there was one; the next line starts it anew. For the library's end, because GDI+
// must not be left running in a module that may be unloaded.
void StopSmoothDrawing() noexcept;

}  // namespace kx
