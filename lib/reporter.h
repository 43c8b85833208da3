// The way every file of the library says that something went wrong, without knowing who listens.
#pragma once

#include <cstdint>

namespace kx {

// A report sink. On Windows it is the binding to the suite's system services (lib/modules/system_services.h),
// whose exports these methods are named after; tests collect the reports. A report never throws and never
// changes the caller's state; nobody tests its result. Texts are zero-terminated Windows-1252 and are not
// kept after the call.
class Reporter {
  public:
    // A failed allocation or creation. source: the constant name of the reporting source; line: a constant
    // beside it.
    virtual std::uint32_t LOGMEMORYERROR(const char* source, std::uint32_t line) = 0;
    // A program error: an argument or a stored value is invalid; text says which.
    virtual std::uint32_t LOGOEMERROR(const char* source, std::uint32_t line, const char* text) = 0;
    // An exception that was caught at a boundary; context: the dialog's class name or the operation's.
    virtual std::uint32_t LOGEXCEPTION(const char* context) = 0;
    // A failed system call or file operation.
    virtual std::uint32_t LOGSYSTEMERROR(const char* text) = 0;

  protected:
    Reporter() = default;
    Reporter(const Reporter&) = default;
    Reporter& operator=(const Reporter&) = default;
    ~Reporter() = default;
};

// Where nobody listens.
class SilentReporter final : public Reporter {
  public:
    std::uint32_t LOGMEMORYERROR(const char*, std::uint32_t) override { return 0; }
    std::uint32_t LOGOEMERROR(const char*, std::uint32_t, const char*) override { return 0; }
    std::uint32_t LOGEXCEPTION(const char*) override { return 0; }
    std::uint32_t LOGSYSTEMERROR(const char*) override { return 0; }
};

}  // namespace kx
