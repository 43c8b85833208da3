#include "bench/loaded_library.h"

namespace kx::bench {
namespace {

// The library and the suite's modules stand in the folder "bin" beside that of the benchmarks.
std::string BinFolder() {
    char path[MAX_PATH] = {};
    GetModuleFileNameA(nullptr, path, MAX_PATH);
    const std::string text = path;
    return text.substr(0, text.find_last_of('\\')) + "\\..\\bin";
}

template <class Function>
Function FindIn(HMODULE module, const char* name) {
    return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(module, name)));
}

}  // namespace

LoadedLibrary::LoadedLibrary() : beat_(analysis::SyntheticBeat{.rate = 1000}) {
    const std::string folder = BinFolder();
    SetDllDirectoryA(folder.c_str());
    module_ = LoadLibraryA("kxdialogs.dll");
    const HMODULE engine = LoadLibraryA("kxanalyze.dll");
    if (module_ == nullptr || engine == nullptr) {
        return;
    }
    const auto measure = FindIn<std::uint32_t(__stdcall*)(KxEpisodeRecord*)>(engine, "MEASUREEPISODE");
    host_.handle = CreateWindowExA(0, "STATIC", "", WS_POPUP | WS_VISIBLE | WS_CLIPCHILDREN, 0, 0, 1300, 800,
                                   nullptr, nullptr, GetModuleHandleA(nullptr), nullptr);
    record_.testType = KX_TEST_RESTING;
    record_.episodeCount = 1;
    record_.episodes[0] = beat_.Get();
    ready_ = host_.handle != nullptr && measure(beat_.Get()) != 0;
    FreeLibrary(engine);
    FindIn<decltype(&::LIBSTART)>(module_, "LIBSTART")();
    DrainQueue();
}

LoadedLibrary::~LoadedLibrary() {
    DestroyWindow(Parent());
    if (module_ != nullptr) {
        FindIn<decltype(&::LIBSTOP)>(module_, "LIBSTOP")();
        FreeLibrary(module_);
    }
}

LoadedLibrary::PaneExport LoadedLibrary::Find(const char* name) const {
    return FindIn<PaneExport>(module_, name);
}

HWND LoadedLibrary::Open(PaneExport open) {
    const std::uint32_t handle = open(&host_, &record_);
    return handle == 0
               ? nullptr
               : static_cast<HWND>(
                     reinterpret_cast<const KxHostWindow*>(static_cast<std::uintptr_t>(handle))->handle);
}

void LoadedLibrary::Close(HWND pane) {
    DestroyWindow(pane);
    DrainQueue();
}

void DrainQueue() {
    MSG message;
    while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
        DispatchMessageA(&message);
    }
    GdiFlush();
}

LibraryControls::LibraryControls(HMODULE module) {
    ACTCTXA request{};
    request.cbSize = sizeof request;
    request.dwFlags = ACTCTX_FLAG_HMODULE_VALID | ACTCTX_FLAG_RESOURCE_NAME_VALID;
    request.hModule = module;
    request.lpResourceName = MAKEINTRESOURCEA(2);
    context_ = CreateActCtxA(&request);
    ActivateActCtx(context_, &cookie_);
}

LibraryControls::~LibraryControls() {
    DeactivateActCtx(0, cookie_);
    ReleaseActCtx(context_);
}

}  // namespace kx::bench
