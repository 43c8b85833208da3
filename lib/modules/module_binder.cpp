#include "lib/modules/module_binder.h"

#include <cstdio>
#include <cstring>
#include <new>

#include "lib/modules/system_message.h"
#include "lib/modules/version_info.h"

namespace kx {
namespace {

// Short memory leaves a null text: the binding then counts as one that has not failed, and its next call
// fails again.
template <class... Values>
std::unique_ptr<char[]> FormatText(const char* format, Values... values) {
    const int length = std::snprintf(nullptr, 0, format, values...);
    if (length < 0) {
        return nullptr;
    }
    const std::size_t size = static_cast<std::size_t>(length) + 1;
    std::unique_ptr<char[]> text(new (std::nothrow) char[size]);
    if (text) {
        std::snprintf(text.get(), size, format, values...);
    }
    return text;
}

}  // namespace

ModuleBinder::ModuleBinder(const char* fileName, std::uint32_t minimumVersion)
    : module_(new (std::nothrow) ModuleInstance) {
    if (!module_) {
        return;
    }
    if (!module_->Load(fileName)) {
        RecordError(fileName);
        return;
    }
    const std::uint32_t version = VersionInfo(module_->Handle()).PackedVersion();
    if (version < minimumVersion) {
        // The module stays mapped: it was never started, so nothing is known of what its unloading would do.
        module_.reset();
        RecordOldVersion(fileName, version, minimumVersion);
        return;
    }
    CallControl("LIBSTART");
}

ModuleBinder::~ModuleBinder() {
    if (module_ && module_->Handle() != nullptr) {
        errorText_.reset();
        CallControl("LIBSTOP");
        module_->Free();
    }
}

void ModuleBinder::CallControl(const char* exportName) {
    using Control = void(__stdcall*)();
    if (const FARPROC address = GetProc(exportName)) {
        reinterpret_cast<Control>(reinterpret_cast<void*>(address))();
    }
}

FARPROC ModuleBinder::GetProc(const char* exportName) {
    if (errorText_) {
        return nullptr;
    }
    if (!module_) {
        RecordError("FATAL 1");
        return nullptr;
    }
    const FARPROC address = module_->GetProc(exportName);
    if (address == nullptr) {
        RecordError(exportName);
    }
    return address;
}

void ModuleBinder::RecordError(const char* name) {
    const DWORD code = GetLastError();
    if (!module_) {
        errorText_.reset();
        return;
    }
    if (code == 0) {
        return;
    }
    char message[kSystemMessageSize];
    SystemMessage(code, "LE: %d", message);
    message[std::strcspn(message, "\r")] = '\0';
    errorText_ = FormatText("%s (%s)", static_cast<const char*>(message), name);
}

void ModuleBinder::RecordOldVersion(const char* fileName, std::uint32_t version,
                                    std::uint32_t minimumVersion) {
    errorText_ = FormatText("%s V = %lX, (V%lX)", fileName, static_cast<unsigned long>(version),
                            static_cast<unsigned long>(minimumVersion));
}

void ModuleBinder::ReportError(Reporter& services) {
    if (errorText_) {
        services.LOGSYSTEMERROR(errorText_.get());
        errorText_.reset();
        return;
    }
    ModuleInstance::LogLastSystemError(services);
}

}  // namespace kx
