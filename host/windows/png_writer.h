// A bitmap as a PNG file, by the system's GDI+.
#pragma once

#include <windows.h>

#include <filesystem>

namespace kxhost {

// GDI+ for as long as the object lives.
class GdiPlusSession {
  public:
    GdiPlusSession();
    GdiPlusSession(const GdiPlusSession&) = delete;
    GdiPlusSession& operator=(const GdiPlusSession&) = delete;
    ~GdiPlusSession();
    bool IsStarted() const { return token_ != 0; }

  private:
    ULONG_PTR token_ = 0;
};

// Writes the bitmap, which no device context may hold at the time. dotsPerInch: of what is drawn to a true
// size; 0: of the screen. False when the file could not be written;
// nothing is left behind then. Needs a GdiPlusSession.
bool WritePng(HBITMAP bitmap, const std::filesystem::path& file, int dotsPerInch = 0);

}  // namespace kxhost
