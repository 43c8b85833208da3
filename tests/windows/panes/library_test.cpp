// The library's frame as a host meets it: its file, its counted use, its reports.
#include <gmock/gmock.h>

#include <cstring>

#include "tests/rig/library_memory.h"
#include "tests/rig/pane.h"

namespace kx::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

template <class T>
const T* At(DWORD address) {
    return reinterpret_cast<const T*>(reinterpret_cast<const BYTE*>(LibraryModuleHandle()) + address);
}

DWORD Directory(int index) {
    return At<IMAGE_NT_HEADERS32>(static_cast<DWORD>(At<IMAGE_DOS_HEADER>(0)->e_lfanew))
        ->OptionalHeader.DataDirectory[index]
        .VirtualAddress;
}

TEST(Library, ExportsTheTenNamesAndNeedsTheSystemAlone) {
    const auto& table = *At<IMAGE_EXPORT_DIRECTORY>(Directory(IMAGE_DIRECTORY_ENTRY_EXPORT));
    std::vector<std::string> names;
    for (DWORD i = 0; i < table.NumberOfNames; ++i) {
        names.emplace_back(At<char>(At<DWORD>(table.AddressOfNames)[i]));
    }
    EXPECT_THAT(names,
                testing::UnorderedElementsAre("LIBSTART", "LIBSTOP", "TABLEDIALOG", "GENERALMORPHDIALOG", "PMORPHDIALOG", "QRSMORPHDIALOG",
                                              "TMORPHDIALOG", "HYPERTROPHYDIALOG", "INTERPRETATIONDIALOG", "EDITINTERPRETATION"));
    for (auto* entry = At<IMAGE_IMPORT_DESCRIPTOR>(Directory(IMAGE_DIRECTORY_ENTRY_IMPORT)); entry->Name != 0; ++entry) {
        std::string name = At<char>(entry->Name);
        CharLowerA(name.data());
        EXPECT_THAT(name, testing::AnyOf("kernel32.dll", "user32.dll", "gdi32.dll", "comctl32.dll", "advapi32.dll", "msvcrt.dll",
                                         "version.dll", "gdiplus.dll", "msimg32.dll", "winspool.drv", "comdlg32.dll"));
    }
}

// Every dialog export with the arguments that a bit mask leaves non-null: 1 parent, 2 record, 4 third argument.
struct HostObjects {
    KxHostWindow parent{nullptr, nullptr};
    std::unique_ptr<KxTestRecord> test = std::make_unique<KxTestRecord>();
    std::uint32_t options[4] = {};
    KxRect area{0, 0, 100, 100};
};
template <auto kMember>
std::uint32_t CallPane(HostObjects& host, unsigned given) {
    return (LibraryExports().*kMember)(given & 1 ? &host.parent : nullptr, given & 2 ? host.test.get() : nullptr);
}
std::uint32_t CallInterpretation(HostObjects& host, unsigned given) {
    return LibraryExports().interpretation(given & 1 ? &host.parent : nullptr, given & 2 ? host.test.get() : nullptr,
                                           given & 4 ? host.options : nullptr);
}
std::uint32_t CallEditor(HostObjects& host, unsigned given) {
    return LibraryExports().editInterpretation(given & 1 ? &host.parent : nullptr, given & 2 ? host.test.get() : nullptr, &host.area, 0);
}
const struct {
    std::uint32_t (*call)(HostObjects&, unsigned given);
    unsigned needed;
    const char* place;
} kDialogs[] = {
    {CallPane<&Exports::table>, 3, "\"mrphlist\" 162"}, {CallPane<&Exports::generalMorph>, 3, "\"genmorph\" 478"},
    {CallPane<&Exports::pMorph>, 3, "\"pmorph\" 480"},  {CallPane<&Exports::qrsMorph>, 3, "\"qrsmrph\" 740"},
    {CallPane<&Exports::tMorph>, 3, "\"tmorph\" 487"},  {CallPane<&Exports::hypertrophy>, 3, "\"hyptrphy\" 422"},
    {CallInterpretation, 7, "\"interp\" 2167"},         {CallEditor, 3, "\"interp\" 2176"},
};

TEST(Library, RefusesWithoutUseAndReportsEveryMissingArgument) {
    SpyingSuite suite;
    HostObjects host;
    for (const auto& dialog : kDialogs) {
        EXPECT_EQ(dialog.call(host, 7), 0u) << dialog.place;
        EXPECT_EQ(dialog.call(host, 0), 0u) << dialog.place;
    }
    EXPECT_THAT(suite.TakeReports(), IsEmpty());
    LibraryExports().start();
    suite.TakeReports();
    for (const auto& dialog : kDialogs) {
        for (unsigned given = 0; given < 8; ++given) {
            if ((given & dialog.needed) != dialog.needed) {
                EXPECT_EQ(dialog.call(host, given), 0u) << dialog.place << given;
                EXPECT_THAT(suite.TakeReports(), ElementsAre("LOGOEMERROR " + std::string(dialog.place) + " \"no Wpar or tst\"")) << given;
            }
        }
    }
    LibraryExports().stop();
    for (const Sibling system : {Sibling::kMissing, Sibling::kOutdated}) {
        suite.Lay("kxsys.dll", system);
        suite.TakeReports();
        LibraryExports().start();
        for (const auto& dialog : kDialogs) {
            EXPECT_EQ(dialog.call(host, 0), 0u) << dialog.place;
        }
        LibraryExports().stop();
        EXPECT_THAT(suite.TakeReports(), IsEmpty());
    }
}

// S: LIBSTART, P: LIBSTOP. Whether the library exists afterwards shows in whether a null argument is reported.
TEST(Library, CountsStartsAndStops) {
    const std::pair<const char*, bool> rows[] = {
        {"", false},   {"S", true},   {"SS", true},    {"SSP", true},   {"SSPP", false}, {"SP", false},   {"SPS", true},   {"P", false},
        {"PS", false}, {"PSS", true}, {"PSSP", false}, {"PPSS", false}, {"PPSSS", true}, {"SPPS", false}, {"SPPSS", true},
    };
    SpyingSuite suite;
    for (const auto& [calls, exists] : rows) {
        int balance = 0;
        for (const char* call = calls; *call != '\0'; ++call) {
            (*call == 'S' ? LibraryExports().start : LibraryExports().stop)();
            balance += *call == 'S' ? 1 : -1;
        }
        EXPECT_EQ(suite.Uses("kxsys.dll"), exists ? 1 : 0) << calls;
        suite.TakeReports();
        LibraryExports().hypertrophy(nullptr, nullptr);
        EXPECT_EQ(suite.TakeReports().size(), exists ? 1u : 0u) << calls;
        for (; balance != 0; balance -= balance > 0 ? 1 : -1) {
            (balance > 0 ? LibraryExports().stop : LibraryExports().start)();
        }
    }
}

TEST(Library, UndoesItsStartWhereverMemoryRunsOut) {
    SpyingSuite suite;
    LibraryMemory memory;
    int created = 0;
    int refused = 0;
    for (int allocations = 0; allocations < 40; ++allocations) {
        memory.Limit(allocations);
        LibraryExports().start();
        memory.Limit(-1);
        suite.TakeReports();
        LibraryExports().hypertrophy(nullptr, nullptr);
        const bool exists = !suite.TakeReports().empty();
        EXPECT_LE(suite.Uses("kxsys.dll"), exists ? 1 : 0) << allocations;
        (exists ? created : refused) += 1;
        LibraryExports().stop();
        EXPECT_EQ(suite.Uses("kxsys.dll"), 0) << allocations;
        EXPECT_EQ(suite.Calls("LOGSERVICESTART"), suite.Calls("LOGSERVICESTOP")) << allocations;
        EXPECT_EQ(memory.Held(), 0) << allocations;
    }
    EXPECT_GT(created, 0);
    EXPECT_GT(refused, 0);
}

}  // namespace
}  // namespace kx::test
