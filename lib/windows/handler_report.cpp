#include "lib/windows/handler_report.h"

#include <cstdio>
#include <cstring>

#include "lib/windows/window.h"
#include "lib/windows/window_class.h"

namespace kx {
namespace {

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

}  // namespace

HandlerReport::HandlerReport(const Window& object, Reporter* reporter) noexcept
    : type_(&typeid(object)), reporter_(reporter) {}

void HandlerReport::Exception() const noexcept {
    char name[64];
    ClassName(type_->name(), name, sizeof name);
    Reporter* const reporter = reporter_ != nullptr ? reporter_ : class_registry::AnyReporter();
    if (reporter != nullptr) {
        reporter->LOGEXCEPTION(name);
    }
}

// Two forms are read: "class kx::MarkerView", and the mangled one, where each name stands behind its length:
// "N2kx10MarkerViewE", "10MarkerView".
void ClassName(const char* typeName, char* buffer, std::size_t size) noexcept {
    const char* last = "Window";
    std::size_t length = std::strlen(last);
    if (std::strchr(typeName, ' ') != nullptr || std::strchr(typeName, ':') != nullptr) {
        const char* const end = typeName + std::strlen(typeName);
        const char* start = end;
        while (start != typeName && start[-1] != ':' && start[-1] != ' ') {
            --start;
        }
        last = start;
        length = static_cast<std::size_t>(end - start);
    } else {
        const char* at = typeName;
        while (*at != '\0') {
            if (!IsDigit(*at)) {
                ++at;
                continue;
            }
            std::size_t count = 0;
            for (; IsDigit(*at); ++at) {
                count = count * 10 + static_cast<std::size_t>(*at - '0');
            }
            if (count == 0 || count > std::strlen(at)) {
                break;
            }
            last = at;
            length = count;
            at += count;
        }
    }
    std::snprintf(buffer, size, "%.*s", static_cast<int>(length), last);
}

}  // namespace kx
