// Any bytes as a report script, into buffers of several sizes: the report stays inside and is the longer
// one's beginning.
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "suite/kxrender/script.h"

namespace {

class FuzzValues final : public kx::render::ScriptValues {
  public:
    std::string Field(int code) const override {
        return code % 3 == 0 ? "" : code % 3 == 1 ? " -1.5 mm @ 3:10 [V5] " : "Load";
    }
    std::string WithPatient(const std::string& text) const override { return text; }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    kx::SilentReporter log;
    const std::string_view script(reinterpret_cast<const char*>(data), size);
    std::vector<char> whole(32 * size + 64);
    if (!kx::render::RunScript(script, FuzzValues(), whole.data(), whole.size(), log)) {
        std::abort();
    }
    for (const std::size_t room : {1u, 7u, 40u}) {
        std::vector<char> part(room);
        if (!kx::render::RunScript(script, FuzzValues(), part.data(), room, log) ||
            std::strncmp(part.data(), whole.data(), std::strlen(part.data())) != 0) {
            std::abort();
        }
    }
    return 0;
}
