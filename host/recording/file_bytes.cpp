#include "host/recording/file_bytes.h"

#include <fstream>
#include <system_error>

namespace kx::recording {

std::string PathText(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

std::optional<std::vector<std::uint8_t>> ReadFileBytes(const std::filesystem::path& file,
                                                       std::uint64_t largest, std::string& error) {
    const auto fail = [&](const char* reason) {
        error = PathText(file) + ": " + reason;
        return std::nullopt;
    };
    std::error_code failed;
    if (!std::filesystem::exists(file, failed)) {
        return fail("there is no such file");
    }
    if (!std::filesystem::is_regular_file(file, failed)) {
        return fail("is not a file");
    }
    const std::uintmax_t size = std::filesystem::file_size(file, failed);
    if (failed) {
        return fail("its size cannot be told");
    }
    if (size > largest) {
        return fail("is too large");
    }
    std::ifstream stream(file, std::ios::binary);
    if (!stream) {
        return fail("cannot be opened");
    }
    std::vector<std::uint8_t> bytes(static_cast<std::size_t>(size));
    stream.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    if (stream.gcount() != static_cast<std::streamsize>(bytes.size())) {
        return fail("cannot be read to its end");
    }
    return bytes;
}

}  // namespace kx::recording
