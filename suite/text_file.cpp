#include "suite/text_file.h"

#include "lib/text_encoding.h"

namespace kx::suite {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

}  // namespace

std::string TextOfFile(std::string_view file) {
    std::string_view rest = file;
    if (rest.starts_with(kByteOrderMark)) {
        rest.remove_prefix(kByteOrderMark.size());
    }
    std::string text;
    text.reserve(rest.size());
    while (!rest.empty()) {
        const auto code = TakeUtf8(rest);
        if (!code) {
            return std::string(file);
        }
        text += ToWindows1252(*code).value_or('?');
    }
    return text;
}

}  // namespace kx::suite
