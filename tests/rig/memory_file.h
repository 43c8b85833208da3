// A file in memory.
#pragma once

#include <string>
#include <string_view>

#include "lib/byte_stream.h"

namespace kx::test {

class MemoryFile final : public ByteSink, public ByteSource {
  public:
    MemoryFile() = default;
    explicit MemoryFile(std::string_view content) : bytes(content) {}

    bool CreateAlways(Reporter* log) override {
        if (refuses && log != nullptr) {
            log->LOGSYSTEMERROR("refused");
        }
        if (!refuses) {
            bytes.clear();
        }
        return !refuses;
    }
    bool Write(const void* data, std::uint32_t count) override {
        const bool fits = count <= room - bytes.size();
        bytes.append(static_cast<const char*>(data), fits ? count : 0);
        return fits;
    }
    bool LoadAll(Reporter* log) override {
        if (refuses && log != nullptr) {
            log->LOGSYSTEMERROR("refused");
        }
        return !refuses;
    }
    const char* Content() const override { return bytes.c_str(); }
    std::uint32_t Length() const override { return static_cast<std::uint32_t>(bytes.size()); }

    std::string bytes;
    bool refuses = false;  // neither to be created nor to be loaded
    std::size_t room = std::string::npos;
};

}  // namespace kx::test
