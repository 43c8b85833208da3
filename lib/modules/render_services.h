// The binding to the suite's report renderer.
#pragma once

#include <cstdint>

#include "include/kxdialogs.h"
#include "lib/modules/module_binder.h"

namespace kx {

// Each method is the export of kxrender.dll of the same name and returns its result, or 0 when the module or
// the export is missing (ErrorText says which).
class RenderServices final : public ModuleBinder {
  public:
    RenderServices() noexcept : ModuleBinder("kxrender.dll", kMinimumModuleVersion) {}

    // Runs a report script (its text, zero-terminated) over a test and writes the resulting text, terminated,
    // into buffer of bufferSize bytes; the last two values are 0. Nonzero on success.
    std::uint32_t CREATETEXT(const char* script, char* buffer, std::uint32_t bufferSize, KxTestRecord* test,
                             std::uint32_t fifth, std::uint32_t sixth) {
        return Call("CREATETEXT", script, buffer, bufferSize, test, fifth, sixth);
    }

    // Not used by this library: the values pass through.
    std::uint32_t RENDEROUTPUT(std::uint32_t first, std::uint32_t second, std::uint32_t third,
                               std::uint32_t fourth, std::uint32_t fifth) {
        return Call("RENDEROUTPUT", first, second, third, fourth, fifth);
    }
    std::uint32_t CREATEIMAGE(std::uint32_t first, std::uint32_t second, std::uint32_t third,
                              std::uint32_t fourth, std::uint32_t fifth, std::uint32_t sixth) {
        return Call("CREATEIMAGE", first, second, third, fourth, fifth, sixth);
    }
    std::uint32_t CREATEIMAGEEX(std::uint32_t first, std::uint32_t second, std::uint32_t third,
                                std::uint32_t fourth) {
        return Call("CREATEIMAGEEX", first, second, third, fourth);
    }
};

}  // namespace kx
