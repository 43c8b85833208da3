#include "tests/rig/window_shot.h"

#include <filesystem>

#include "host/windows/png_writer.h"
#include "host/windows/window_picture.h"

namespace kx::test {

bool Shoot(HWND window, const std::string& name) {
    // The tests run under Wine, where drive Z is the machine's own tree.
    const std::filesystem::path folder = std::filesystem::path("Z:" KX_SOURCE_DIR) / "build" / "shots";
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    kxhost::WaitUntilPainted(window);
    const kxhost::GdiPlusSession gdiPlus;
    const kxhost::UniqueBitmap picture = kxhost::TakePicture(window);
    return gdiPlus.IsStarted() && picture && kxhost::WritePng(picture.get(), folder / (name + ".png"));
}

}  // namespace kx::test
