// Numbers out of bytes, one after another.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "host/recording/read_failure.h"

namespace kx::recording {

// Little-endian; reading beyond the end throws ReadFailure: "WHAT ends too early".
class ByteReader {
  public:
    ByteReader(std::span<const std::uint8_t> bytes, std::string_view what) : bytes_(bytes), what_(what) {}

    std::size_t Left() const { return bytes_.size(); }

    std::span<const std::uint8_t> Take(std::size_t count) {
        if (count > bytes_.size()) {
            Refuse(what_ + " ends too early");
        }
        const auto taken = bytes_.first(count);
        bytes_ = bytes_.subspan(count);
        return taken;
    }

    std::uint8_t U8() { return Take(1)[0]; }
    std::uint16_t U16() {
        const auto b = Take(2);
        return static_cast<std::uint16_t>(b[0] | b[1] << 8);
    }
    std::int16_t I16() { return static_cast<std::int16_t>(U16()); }
    std::uint32_t U32() {
        const std::uint32_t low = U16();
        return low | std::uint32_t{U16()} << 16;
    }

  private:
    std::span<const std::uint8_t> bytes_;
    std::string what_;
};

// Bytes as characters.
inline std::string_view AsText(std::span<const std::uint8_t> bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

}  // namespace kx::recording
