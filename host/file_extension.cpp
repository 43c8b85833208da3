#include "host/file_extension.h"

#include <algorithm>

namespace kxhost {

bool HasExtension(std::string_view file, std::string_view extension) {
    if (file.size() <= extension.size())
        return false;
    const std::string_view end = file.substr(file.size() - extension.size());
    return std::equal(end.begin(), end.end(), extension.begin(), [](char written, char small) {
        return (written >= 'A' && written <= 'Z' ? written - 'A' + 'a' : written) == small;
    });
}

}  // namespace kxhost
