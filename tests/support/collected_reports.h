// A reporter that keeps what it is told, for portable tests.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "lib/reporter.h"

namespace kx::test {

class CollectedReports final : public Reporter {
  public:
    std::uint32_t LOGMEMORYERROR(const char* source, std::uint32_t) override {
        lines.push_back(std::string(source) + ": memory");
        return 1;
    }
    std::uint32_t LOGOEMERROR(const char* source, std::uint32_t, const char* text) override {
        lines.push_back(std::string(source) + ": " + text);
        return 1;
    }
    std::uint32_t LOGEXCEPTION(const char* context) override {
        lines.push_back(std::string("exception: ") + context);
        return 1;
    }
    std::uint32_t LOGSYSTEMERROR(const char* text) override {
        lines.push_back(text);
        return 1;
    }

    // What came since the last call.
    std::vector<std::string> Take() { return std::exchange(lines, {}); }

    std::vector<std::string> lines;  // "source: text"
};

}  // namespace kx::test
