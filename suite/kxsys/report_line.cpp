#include "suite/kxsys/report_line.h"

#include <cstdio>

namespace kx::sys {

void TidyText(char* text) {
    const char* read = text;
    const auto isBlank = [](char c) { return static_cast<unsigned char>(c) <= ' ' || c == '\x7F'; };
    while (*read != '\0' && isBlank(*read)) {
        ++read;
    }
    char* write = text;
    char* end = text;
    for (; *read != '\0'; ++read) {
        const bool blank = isBlank(*read);
        *write++ = blank ? ' ' : *read;
        if (!blank) {
            end = write;
        }
    }
    *end = '\0';
}

std::size_t ComposeLine(char (&line)[kLineSize], const ReportTime& time, const char* kind, const char* text) {
    const int length =
        std::snprintf(line, kLineSize, "%04u-%02u-%02u %02u:%02u:%02u.%03u\t%s\t%s", time.year, time.month,
                      time.day, time.hour, time.minute, time.second, time.millisecond, kind, text);
    if (length < 0) {
        line[0] = '\0';
        return 0;
    }
    return static_cast<std::size_t>(length) < kLineSize ? static_cast<std::size_t>(length) : kLineSize - 1;
}

}  // namespace kx::sys
