#include "tests/windows/dialogs/library_under_test.h"

#include <sstream>

namespace kx::test {
namespace {

template <class Function>
void Find(HMODULE module, const char* name, Function& function) {
    function = reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(module, name)));
}

}  // namespace

std::string ProgramFolder() {
    char path[MAX_PATH] = {};
    GetModuleFileNameA(nullptr, path, MAX_PATH);
    const std::string text = path;
    return text.substr(0, text.find_last_of('\\'));
}

LibraryUnderTest::LibraryUnderTest(SystemModule system, const char* dll) {
    const std::string folder = ProgramFolder();
    const std::string laid = folder + "\\kxsys.dll";
    DeleteFileA(laid.c_str());
    if (system != SystemModule::kMissing) {
        const char* name = system == SystemModule::kCurrent ? "\\kxsys_current.dll" : "\\kxsys_outdated.dll";
        CopyFileA((folder + name).c_str(), laid.c_str(), FALSE);
        spy_ = LoadLibraryA(laid.c_str());
    }
    module_ = LoadLibraryA((folder + dll).c_str());
    Find(module_, "LIBSTART", exports_.start);
    Find(module_, "LIBSTOP", exports_.stop);
    Find(module_, "TABLEDIALOG", exports_.table);
    Find(module_, "GENERALMORPHDIALOG", exports_.generalMorph);
    Find(module_, "PMORPHDIALOG", exports_.pMorph);
    Find(module_, "QRSMORPHDIALOG", exports_.qrsMorph);
    Find(module_, "TMORPHDIALOG", exports_.tMorph);
    Find(module_, "HYPERTROPHYDIALOG", exports_.hypertrophy);
    Find(module_, "INTERPRETATIONDIALOG", exports_.interpretation);
    Find(module_, "EDITINTERPRETATION", exports_.editInterpretation);
}

LibraryUnderTest::~LibraryUnderTest() {
    FreeLibrary(module_);
    // A test that left the library started leaves its binding loaded as well.
    while (HMODULE left = GetModuleHandleA("kxsys.dll")) {
        FreeLibrary(left);
    }
}

std::vector<std::string> LibraryUnderTest::TakeLog() {
    std::vector<std::string> lines;
    if (spy_ == nullptr) {
        return lines;
    }
    const char*(__stdcall * log)() = nullptr;
    void(__stdcall * clear)() = nullptr;
    Find(spy_, "SPY_LOG", log);
    Find(spy_, "SPY_CLEAR", clear);
    std::istringstream text(log());
    for (std::string line; std::getline(text, line);) {
        lines.push_back(line);
    }
    clear();
    return lines;
}

}  // namespace kx::test
