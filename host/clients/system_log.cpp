#include "host/clients/system_log.h"

#include <cstdint>
#include <string_view>

#include "host/windows/text_conversion.h"

namespace kxhost {
namespace {

// Exports of kxsys.dll beyond the suite's contract, as that module's kxsys.h declares them.
using SetListenerFunction = std::uint32_t(__stdcall*)(void(__stdcall* callback)(void* context,
                                                                                const char* line),
                                                      void* context);
using SetBatchModeFunction = std::uint32_t(__stdcall*)(std::uint32_t flag);

// Nobody listens in the batch forms: what waits for a listener must not grow without end.
constexpr std::size_t kMostWaiting = 1000;

}  // namespace

SystemLog::SystemLog() : module_(L"kxsys.dll") {
    if (!module_.IsLoaded()) {
        Report(L"Stazione", module_.FailureText());
    } else if (const auto setListener = module_.Find<SetListenerFunction>("SETLISTENER")) {
        setListener(Hear, this);
    } else {
        Report(L"Stazione", L"kxsys.dll: SETLISTENER non esportata");
    }
}

SystemLog::~SystemLog() {
    if (const auto setListener = module_.Find<SetListenerFunction>("SETLISTENER")) {
        setListener(nullptr, nullptr);
    }
}

void SystemLog::Listen(Listener listener) {
    listener_ = std::move(listener);
    if (!listener_) {
        return;
    }
    for (const auto& [kind, text] : std::exchange(waiting_, {})) {
        listener_(kind, text);
    }
}

void SystemLog::SetBatchMode() const {
    if (const auto setBatchMode = module_.Find<SetBatchModeFunction>("SETBATCHMODE")) {
        setBatchMode(1);
    }
}

// A line is time, kind and text with tabs between. Called by the module: nothing may be thrown back into it.
void __stdcall SystemLog::Hear(void* context, const char* line) {
    try {
        const std::string_view whole(line);
        const std::size_t first = whole.find('\t');
        const std::size_t second = first == std::string_view::npos ? first : whole.find('\t', first + 1);
        auto* log = static_cast<SystemLog*>(context);
        if (second == std::string_view::npos) {
            log->Report({}, FromRecordText(whole));
        } else {
            log->Report(FromRecordText(whole.substr(first + 1, second - first - 1)),
                        FromRecordText(whole.substr(second + 1)));
        }
    } catch (...) {
        OutputDebugStringA(line);
    }
}

void SystemLog::Report(std::wstring kind, std::wstring text) {
    if (listener_) {
        listener_(kind, text);
    } else if (waiting_.size() < kMostWaiting) {
        waiting_.emplace_back(std::move(kind), std::move(text));
    }
}

}  // namespace kxhost
