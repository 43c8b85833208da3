// Why a recording cannot be read.
#pragma once

#include <string>
#include <string_view>

namespace kx::recording {

// Thrown by the readers and caught where a file is opened (open_recording.h): one sentence without a line
// break, which says what is wrong and where in the file; the file's name is put before it there.
struct ReadFailure {
    std::string text;
};

[[noreturn]] inline void Refuse(std::string reason) {
    throw ReadFailure{std::move(reason)};
}

// A text from a file as part of a message: in quotes, cut, without control characters.
inline std::string Quoted(std::string_view text) {
    constexpr std::size_t kMost = 40;
    std::string quoted = "'";
    for (const char c : text.substr(0, kMost)) {
        quoted += static_cast<unsigned char>(c) < ' ' || c == 0x7F ? ' ' : c;
    }
    return quoted + (text.size() > kMost ? "...'" : "'");
}

}  // namespace kx::recording
