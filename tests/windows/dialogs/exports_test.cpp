// The library's frame as a host meets it: its exports, its counted use, its reports.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

#include "tests/windows/dialogs/library_under_test.h"
#include "tests/windows/dialogs/pe_file.h"

namespace {

using kx::test::Exports;
using kx::test::LibraryUnderTest;
using kx::test::SystemModule;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::MatchesRegex;
using testing::UnorderedElementsAre;

struct HostObjects {
    KxHostWindow parent{nullptr, nullptr};
    std::unique_ptr<KxTestRecord> test = std::make_unique<KxTestRecord>();
    std::uint32_t options[4] = {};
    KxRect area{0, 0, 100, 100};
};

// Every dialog export with the arguments that a bit mask leaves non-null: 1 parent, 2 record, 4 third
// argument.
struct DialogExport {
    const char* name;
    std::uint32_t (*call)(const Exports&, HostObjects&, unsigned given);
    unsigned needed;
    const char* nullReport;
};

template <auto member>
std::uint32_t CallPane(const Exports& exports, HostObjects& host, unsigned given) {
    return (exports.*member)(given & 1 ? &host.parent : nullptr, given & 2 ? host.test.get() : nullptr);
}

std::uint32_t CallInterpretation(const Exports& exports, HostObjects& host, unsigned given) {
    return exports.interpretation(given & 1 ? &host.parent : nullptr, given & 2 ? host.test.get() : nullptr,
                                  given & 4 ? host.options : nullptr);
}

std::uint32_t CallEditor(const Exports& exports, HostObjects& host, unsigned given) {
    return exports.editInterpretation(given & 1 ? &host.parent : nullptr,
                                      given & 2 ? host.test.get() : nullptr, &host.area, 0);
}

const DialogExport kDialogExports[] = {
    {"TABLEDIALOG", CallPane<&Exports::table>, 3, "LOGOEMERROR \"mrphlist\" 162 \"no Wpar or tst\""},
    {"GENERALMORPHDIALOG", CallPane<&Exports::generalMorph>, 3,
     "LOGOEMERROR \"genmorph\" 478 \"no Wpar or tst\""},
    {"PMORPHDIALOG", CallPane<&Exports::pMorph>, 3, "LOGOEMERROR \"pmorph\" 480 \"no Wpar or tst\""},
    {"QRSMORPHDIALOG", CallPane<&Exports::qrsMorph>, 3, "LOGOEMERROR \"qrsmrph\" 740 \"no Wpar or tst\""},
    {"TMORPHDIALOG", CallPane<&Exports::tMorph>, 3, "LOGOEMERROR \"tmorph\" 487 \"no Wpar or tst\""},
    {"HYPERTROPHYDIALOG", CallPane<&Exports::hypertrophy>, 3,
     "LOGOEMERROR \"hyptrphy\" 422 \"no Wpar or tst\""},
    {"INTERPRETATIONDIALOG", CallInterpretation, 7, "LOGOEMERROR \"interp\" 2167 \"no Wpar or tst\""},
    {"EDITINTERPRETATION", CallEditor, 3, "LOGOEMERROR \"interp\" 2176 \"no Wpar or tst\""},
};

TEST(DllFile, ExportsExactlyTheTenNames) {
    LibraryUnderTest library(SystemModule::kMissing);
    ASSERT_TRUE(library.IsLoaded());
    EXPECT_THAT(kx::test::ExportNames(library.Module()),
                UnorderedElementsAre("LIBSTART", "LIBSTOP", "TABLEDIALOG", "GENERALMORPHDIALOG",
                                     "PMORPHDIALOG", "QRSMORPHDIALOG", "TMORPHDIALOG", "HYPERTROPHYDIALOG",
                                     "INTERPRETATIONDIALOG", "EDITINTERPRETATION"));
}

TEST(DllFile, ImportsSystemModulesOnly) {
    LibraryUnderTest library(SystemModule::kMissing);
    ASSERT_TRUE(library.IsLoaded());
    const std::vector<std::string> imports = kx::test::ImportNames(library.Module());
    EXPECT_THAT(imports, testing::IsSupersetOf({"kernel32.dll", "user32.dll"}));
    EXPECT_THAT(imports, testing::IsSubsetOf({"kernel32.dll", "user32.dll", "gdi32.dll", "comctl32.dll",
                                              "advapi32.dll", "msvcrt.dll", "version.dll", "gdiplus.dll",
                                              "msimg32.dll", "winspool.drv", "comdlg32.dll", "ole32.dll",
                                              "shell32.dll"}));
}

TEST(LibraryUse, DialogsAreRefusedInSilenceWithoutLibrary) {
    LibraryUnderTest library(SystemModule::kCurrent);
    HostObjects host;
    for (const DialogExport& dialog : kDialogExports) {
        EXPECT_EQ(dialog.call(*library, host, 7), 0u) << dialog.name;
        EXPECT_EQ(dialog.call(*library, host, 0), 0u) << dialog.name;
    }
    EXPECT_THAT(library.TakeLog(), IsEmpty());
    library->start();
    library->stop();
    library.TakeLog();
    for (const DialogExport& dialog : kDialogExports) {
        EXPECT_EQ(dialog.call(*library, host, 0), 0u) << dialog.name;
    }
    EXPECT_THAT(library.TakeLog(), IsEmpty());
}

TEST(LibraryUse, BannerIsTheSameOnStartAndStop) {
    LibraryUnderTest library(SystemModule::kCurrent);
    library->start();
    const std::vector<std::string> started = library.TakeLog();
    library->stop();
    const std::vector<std::string> stopped = library.TakeLog();
    ASSERT_THAT(started, ElementsAre("LIBSTART",
                                     MatchesRegex("LOGSERVICESTART \"ECG review dialogs \\(\\w+ - "
                                                  "\\w\\w\\w .\\d \\d\\d\\d\\d \\d\\d:\\d\\d:\\d\\d\\)\"")));
    ASSERT_EQ(stopped.size(), 2u);
    EXPECT_EQ(stopped[0], "LOGSERVICESTOP" + started[1].substr(std::string("LOGSERVICESTART").size()));
    EXPECT_EQ(stopped[1], "LIBSTOP");
}

TEST(LibraryUse, CountsStartsAndStops) {
    // S: LIBSTART, P: LIBSTOP. Whether a library exists afterwards shows in whether a null argument is
    // reported.
    const struct {
        const char* calls;
        bool exists;
    } rows[] = {
        {"", false},     {"S", true},     {"SS", true},    {"SSP", true},   {"SSPP", false},
        {"SP", false},   {"SPS", true},   {"P", false},    {"PS", false},   {"PSS", true},
        {"PSSP", false}, {"PPSS", false}, {"PPSSS", true}, {"SPPS", false}, {"SPPSS", true},
    };
    for (const auto& row : rows) {
        LibraryUnderTest library(SystemModule::kCurrent);
        int live = 0;
        int open = 0;
        for (const char* call = row.calls; *call != 0; ++call) {
            (*call == 'S' ? library->start : library->stop)();
            open += *call == 'S' ? 1 : -1;
            for (const std::string& line : library.TakeLog()) {
                live += line == "LIBSTART";
                live -= line == "LIBSTOP";
            }
        }
        EXPECT_EQ(live, row.exists ? 1 : 0) << row.calls;
        library->hypertrophy(nullptr, nullptr);
        EXPECT_EQ(library.TakeLog().size(), row.exists ? 1u : 0u) << row.calls;
        for (; open > 0; --open) {
            library->stop();
        }
    }
}

TEST(LibraryUse, EveryMissingArgumentIsReportedWithItsPlace) {
    LibraryUnderTest library(SystemModule::kCurrent);
    HostObjects host;
    library->start();
    library.TakeLog();
    for (const DialogExport& dialog : kDialogExports) {
        for (unsigned given = 0; given < 8; ++given) {
            if ((given & dialog.needed) == dialog.needed) {
                continue;
            }
            EXPECT_EQ(dialog.call(*library, host, given), 0u) << dialog.name << " given " << given;
            EXPECT_THAT(library.TakeLog(), ElementsAre(dialog.nullReport))
                << dialog.name << " given " << given;
        }
    }
    library->stop();
}

TEST(LibraryUse, GoesOnWithoutSystemServices) {
    for (const SystemModule system : {SystemModule::kMissing, SystemModule::kOutdated}) {
        LibraryUnderTest library(system);
        HostObjects host;
        library->start();
        for (const DialogExport& dialog : kDialogExports) {
            EXPECT_EQ(dialog.call(*library, host, 0), 0u) << dialog.name;
        }
        library->stop();
        EXPECT_THAT(library.TakeLog(), IsEmpty());
    }
}

}  // namespace
