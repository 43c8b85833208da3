// A reporter that keeps what it is told.
#pragma once

#include <string>
#include <vector>

#include "lib/reporter.h"

namespace kx::test {

struct CollectedReports final : Reporter {
    std::vector<std::string> texts;  // "source: text", or the text alone where there is no source

    std::uint32_t LOGMEMORYERROR(const char* source, std::uint32_t) override {
        texts.push_back(std::string(source) + ": memory");
        return 0;
    }
    std::uint32_t LOGOEMERROR(const char* source, std::uint32_t, const char* text) override {
        texts.push_back(std::string(source) + ": " + text);
        return 0;
    }
    std::uint32_t LOGEXCEPTION(const char* context) override {
        texts.push_back(context);
        return 0;
    }
    std::uint32_t LOGSYSTEMERROR(const char* text) override {
        texts.push_back(text);
        return 0;
    }
    std::string Only() const { return texts.empty() ? "" : texts.size() == 1 ? texts[0] : "several reports"; }
};

}  // namespace kx::test
