// The entry of every test program: no abort box, no "press OK" box and no debugger may stop an unattended run.
#include <gtest/gtest.h>

#ifdef _WIN32
#include <windows.h>

#include <cstdio>

namespace {

// The first to be asked: the system passes over what a window procedure that it has called does not handle.
LONG WINAPI EndAtOnce(EXCEPTION_POINTERS* failure) {
    const EXCEPTION_RECORD& record = *failure->ExceptionRecord;
    if (record.ExceptionCode != EXCEPTION_ACCESS_VIOLATION && record.ExceptionCode != EXCEPTION_STACK_OVERFLOW &&
        record.ExceptionCode != STATUS_HEAP_CORRUPTION) {
        return EXCEPTION_CONTINUE_SEARCH;
    }
    HMODULE module = nullptr;
    GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       static_cast<const char*>(record.ExceptionAddress), &module);
    char path[MAX_PATH] = {};
    GetModuleFileNameA(module, path, sizeof path);
    std::fprintf(stderr, "ended by exception %08lX of data %08lX in %s at %lX from its base\n", record.ExceptionCode,
                 static_cast<unsigned long>(record.NumberParameters > 1 ? record.ExceptionInformation[1] : 0), path,
                 static_cast<unsigned long>(static_cast<const char*>(record.ExceptionAddress) - reinterpret_cast<const char*>(module)));
    std::fflush(nullptr);
    TerminateProcess(GetCurrentProcess(), 3);
    return EXCEPTION_CONTINUE_SEARCH;
}

}  // namespace
#endif

int main(int argc, char** argv) {
#ifdef _WIN32
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX | SEM_NOOPENFILEERRORBOX);
    AddVectoredExceptionHandler(TRUE, EndAtOnce);
#endif
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
