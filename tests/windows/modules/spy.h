// The tests' side of the spy modules, and a reporter that remembers.
#pragma once

#include <windows.h>

#include <cstdint>
#include <string>
#include <vector>

#include "lib/reporter.h"

namespace kxtest {

template <class Function>
Function FindExport(HMODULE module, const char* name) {
    return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(module, name)));
}

// Holds a spy loaded, so that its notes outlive the binding that is tested. Begins with no notes.
class Spy {
  public:
    explicit Spy(const char* fileName, std::uint32_t answer = 0) : module_(LoadLibraryA(fileName)) {
        Reset(answer);
    }
    Spy(const Spy&) = delete;
    Spy& operator=(const Spy&) = delete;
    ~Spy() { FreeLibrary(module_); }

    void Reset(std::uint32_t answer) const {
        if (const auto reset = FindExport<void(__stdcall*)(std::uint32_t)>(module_, "SPYRESET")) {
            reset(answer);
        }
    }
    std::string Calls() const {
        const auto calls = FindExport<const char*(__stdcall*)()>(module_, "SPYCALLS");
        return calls != nullptr ? calls() : "no spy";
    }

  private:
    HMODULE module_;
};

class Reports final : public kx::Reporter {
  public:
    std::uint32_t LOGMEMORYERROR(const char* source, std::uint32_t line) override {
        return Add("memory", std::string(source) + " " + std::to_string(line));
    }
    std::uint32_t LOGOEMERROR(const char*, std::uint32_t, const char* text) override {
        return Add("program", text);
    }
    std::uint32_t LOGEXCEPTION(const char* context) override { return Add("exception", context); }
    std::uint32_t LOGSYSTEMERROR(const char* text) override { return Add("system", text); }

    std::vector<std::string> texts;
    static constexpr std::uint32_t kResult = 0x87654321;

  private:
    std::uint32_t Add(const char* kind, const std::string& text) {
        texts.push_back(std::string(kind) + ": " + text);
        return kResult;
    }
};

}  // namespace kxtest
