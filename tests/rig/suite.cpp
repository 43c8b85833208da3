#include "tests/rig/suite.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <iterator>

#include "include/kxdialogs.h"

namespace kx::test {
namespace {

SpyingSuite* g_suite = nullptr;

// What stands beside the program now.
std::map<std::string, Sibling>& Laid() {
    static std::map<std::string, Sibling> laid;
    return laid;
}

const char* SourceOf(Sibling kind) {
    return kind == Sibling::kOutdated         ? "..\\rig\\spying_outdated.dll"
           : kind == Sibling::kWithoutExports ? "..\\rig\\spying_bare.dll"
                                              : "..\\rig\\spying_current.dll";
}

template <std::size_t kSize>
void Fill(char (&field)[kSize], const char* text) {
    std::memcpy(field, text, std::min(std::strlen(text), kSize));
}

std::uint32_t ListTechnicians(SpyingSuite::Arguments arguments) {
    auto* const records = Address<TechnicianRecord>(arguments[0]);
    records[0] = Technician("Anna", "B", "Rossi");
    records[1] = Technician("Carlo", "", "Verdi");
    return 2;
}

std::uint32_t ListPhysicians(SpyingSuite::Arguments arguments) {
    auto* const records = Address<PhysicianRecord>(arguments[1]);
    records[0] = Physician("Nicol\xF2", "B", "Rossi", "");
    records[1] = Physician("Anna", "", "Bianchi", "Dr");
    return 2;
}

std::uint32_t Interpret(SpyingSuite::Arguments arguments) {
    Fill(Address<KxInterpretationResult>(arguments[1])->text, "Ritmo sinusale.");
    return 1;
}

std::uint32_t CreateText(SpyingSuite::Arguments arguments) {
    std::strcpy(Address<char>(arguments[1]), "Prova da sforzo.");
    return 1;
}

std::string Quoted(const char* text) { return text == nullptr ? "\"(null)\"" : "\"" + std::string(text) + "\""; }

std::string Caption(std::uint32_t owner) {
    char caption[128] = {};
    if (owner != 0) {
        GetWindowTextA(static_cast<HWND>(Address<KxHostWindow>(owner)->handle), caption, sizeof caption);
    }
    return caption;
}

}  // namespace

std::string ProgramFolder() {
    char path[MAX_PATH] = {};
    GetModuleFileNameA(nullptr, path, MAX_PATH);
    const std::string text = path;
    return text.substr(0, text.find_last_of('\\'));
}

std::string Beside(const std::string& name) { return ProgramFolder() + "\\" + name; }

SpyingSuite::SpyingSuite() {
    EXPECT_EQ(g_suite, nullptr) << "one suite at a time";
    g_suite = this;
    for (const char* const fileName : kSiblings) {
        Lay(fileName, Sibling::kSpying);
    }
    On("TECH_LIST", ListTechnicians);
    On("PHYS_LIST", ListPhysicians);
    On("INTERPRET", Interpret);
    On("CREATETEXT", CreateText);
    On("UPDATEDETECTION", [](Arguments) { return 1u; });
}

SpyingSuite::~SpyingSuite() { g_suite = nullptr; }

void SpyingSuite::Lay(const std::string& fileName, Sibling kind) {
    const auto laid = Laid().find(fileName);
    if (laid != Laid().end() && laid->second == kind) {
        return;
    }
    // A refused module stays mapped.
    while (const HMODULE left = GetModuleHandleA(fileName.c_str())) {
        FreeLibrary(left);
    }
    DeleteFileA(Beside(fileName).c_str());
    if (kind != Sibling::kMissing) {
        ASSERT_TRUE(CopyFileA(Beside(SourceOf(kind)).c_str(), Beside(fileName).c_str(), FALSE)) << fileName;
    }
    Laid()[fileName] = kind;
}

void SpyingSuite::On(const char* exportName, Answer answer) { answers_[exportName] = std::move(answer); }

void SpyingSuite::AnswerGarbage() {
    // The arguments that say where it may write and how much of what size (below 0: one).
    const struct {
        const char* exportName;
        int place, count;
        std::size_t size, offset;
    } rows[] = {
        {"TECH_LIST", 0, 1, sizeof(TechnicianRecord), 0},
        {"PHYS_LIST", 1, 2, sizeof(PhysicianRecord), 0},
        {"INTERPRET", 1, -1, sizeof(KxInterpretationResult), 0},
        {"CREATETEXT", 1, 2, 1, 0},
        {"UPDATEDETECTION", 0, -1, sizeof(KxMeasurementSet), offsetof(KxEpisodeRecord, measurements)},
    };
    for (const auto& row : rows) {
        On(row.exportName, [row](Arguments a) {
            std::memset(Address<char>(a[row.place]) + row.offset, 0xFF, row.size * (row.count < 0 ? 1 : a[row.count]));
            return 0xFFFFFFFFu;
        });
    }
}

int SpyingSuite::Calls(const std::string& exportName) const {
    const auto found = calls_.find(exportName);
    return found == calls_.end() ? 0 : found->second;
}

int SpyingSuite::Uses(const std::string& fileName) const {
    const auto found = uses_.find(fileName);
    return found == uses_.end() ? 0 : found->second;
}

std::vector<std::string> SpyingSuite::TakeReports() { return std::exchange(reports_, {}); }

std::uint32_t SpyingSuite::Take(const std::string& module, const std::string& name, const char* kinds, Arguments arguments) {
    ++calls_[name];
    uses_[module] += name == "LIBSTART" ? 1 : name == "LIBSTOP" ? -1 : 0;
    if (module == "kxsys.dll") {
        std::string line = name;
        for (int i = 0; kinds[i] != '\0'; ++i) {
            const bool isOwner = i == 0 && kinds[i] == 'n' && kinds[i + 1] == 't';
            line += ' ';
            line += kinds[i] == 't' ? Quoted(Address<char>(arguments[i]))
                    : isOwner       ? Quoted(Caption(arguments[i]).c_str())
                                    : std::to_string(arguments[i]);
        }
        reports_.push_back(line);
    }
    if (onCall) {
        onCall(name);
    }
    const auto answer = answers_.find(name);
    if (answer == answers_.end()) {
        return module == "kxsys.dll" ? 1 : 0;
    }
    const Answer kept = answer->second;  // it may replace itself
    return kept(arguments);
}

TechnicianRecord Technician(const char* first, const char* initial, const char* last) {
    TechnicianRecord record{};
    Fill(record.firstName, first);
    Fill(record.initial, initial);
    Fill(record.lastName, last);
    return record;
}

PhysicianRecord Physician(const char* first, const char* initial, const char* last, const char* title) {
    PhysicianRecord record{};
    Fill(record.firstName, first);
    Fill(record.initial, initial);
    Fill(record.lastName, last);
    Fill(record.title, title);
    return record;
}

}  // namespace kx::test

extern "C" __declspec(dllexport) std::uint32_t
    RIG_SUITE_CALL(HMODULE module, const char* name, const char* kinds, const std::uint32_t* arguments) {
    char path[MAX_PATH] = {};
    GetModuleFileNameA(module, path, MAX_PATH);
    const std::string text = path;
    return kx::test::g_suite == nullptr ? 0 : kx::test::g_suite->Take(text.substr(text.find_last_of('\\') + 1), name, kinds, arguments);
}
