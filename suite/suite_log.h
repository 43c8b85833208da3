// How a module of the suite reports: through the system services, when the program has loaded them.
#pragma once

#include "lib/reporter.h"

namespace kx::suite {

// Looks kxsys.dll up at every report and never loads it: a module of the suite serves programs that have no
// log, too.
class SuiteLog final : public Reporter {
  public:
    std::uint32_t LOGMEMORYERROR(const char* source, std::uint32_t line) override;
    std::uint32_t LOGOEMERROR(const char* source, std::uint32_t line, const char* text) override;
    std::uint32_t LOGEXCEPTION(const char* context) override;
    std::uint32_t LOGSYSTEMERROR(const char* text) override;
};

}  // namespace kx::suite
