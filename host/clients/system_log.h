// kxsys.dll as this workstation uses it: what the library and its sibling modules report is heard here.
#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "host/clients/suite_module.h"

namespace kxhost {

// While the object lives it hears every report; one such object at a time. Reports before Listen wait for it.
// Without the module nothing is heard, which is itself the first report.
class SystemLog {
  public:
    // kind and text: Italian, one report.
    using Listener = std::function<void(const std::wstring& kind, const std::wstring& text)>;

    SystemLog();
    SystemLog(const SystemLog&) = delete;
    SystemLog& operator=(const SystemLog&) = delete;
    ~SystemLog();

    // Hands the waiting reports over and every later one as it comes; an empty listener ends that.
    void Listen(Listener listener);
    // From now on no message box of the suite appears; what it would have asked is answered by its default.
    void SetBatchMode() const;

  private:
    // Given to SETLISTENER of the module.
    static void __stdcall Hear(void* context, const char* line);
    void Report(std::wstring kind, std::wstring text);

    SuiteModule module_;
    Listener listener_;
    std::vector<std::pair<std::wstring, std::wstring>> waiting_;
};

// Listens for as long as it lives; to be made after what hears, so that nothing is told to it once it is
// gone.
class LogListening {
  public:
    LogListening(SystemLog& log, SystemLog::Listener listener) : log_(log) {
        log_.Listen(std::move(listener));
    }
    LogListening(const LogListening&) = delete;
    LogListening& operator=(const LogListening&) = delete;
    ~LogListening() { log_.Listen({}); }

  private:
    SystemLog& log_;
};

}  // namespace kxhost
