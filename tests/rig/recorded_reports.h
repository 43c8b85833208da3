// A reporter that takes down what is reported, one line a report, in the order of arrival.
#pragma once

#include <string>
#include <vector>

#include "lib/reporter.h"

namespace kx::test {

class RecordedReports final : public Reporter {
  public:
    std::uint32_t LOGMEMORYERROR(const char* source, std::uint32_t line) override {
        return Add(std::string("memory ") + source + " " + std::to_string(line));
    }
    std::uint32_t LOGOEMERROR(const char* source, std::uint32_t line, const char* text) override {
        return Add(std::string("oem ") + source + " " + std::to_string(line) + " " + text);
    }
    std::uint32_t LOGEXCEPTION(const char* context) override { return Add(std::string("exception ") + context); }
    std::uint32_t LOGSYSTEMERROR(const char* text) override { return Add(std::string("system ") + text); }

    // The reports since the last call.
    std::vector<std::string> Take() { return std::move(lines_); }

  private:
    std::uint32_t Add(std::string line) {
        lines_.push_back(std::move(line));
        return 1;
    }

    std::vector<std::string> lines_;
};

}  // namespace kx::test
