// kxhost: a small workstation that shows the panes of kxdialogs.dll on a recording, and its batch forms.
#include <windows.h>

#include <commctrl.h>
#include <shellapi.h>

#include <algorithm>
#include <exception>
#include <string>
#include <vector>

#include "host/batch/archive_forms.h"
#include "host/batch/batch_forms.h"
#include "host/batch/batch_shot.h"
#include "host/batch/command_line.h"
#include "host/batch/standard_output.h"
#include "host/clients/system_log.h"
#include "host/frame/frame_window.h"
#include "host/windows/text_conversion.h"

namespace kxhost {
namespace {

constexpr int kDone = 0;
constexpr int kFailed = 1;
constexpr int kMisused = 2;

std::vector<std::string> Arguments() {
    int count = 0;
    wchar_t** words = CommandLineToArgvW(GetCommandLineW(), &count);
    std::vector<std::string> arguments;
    for (int i = 1; i < count; ++i) {
        arguments.push_back(ToUtf8(words[i]));
    }
    LocalFree(words);
    return arguments;
}

void InitialiseControls() {
    INITCOMMONCONTROLSEX controls{};
    controls.dwSize = sizeof controls;
    controls.dwICC = ICC_WIN95_CLASSES | ICC_DATE_CLASSES | ICC_STANDARD_CLASSES;
    InitCommonControlsEx(&controls);
}

int RunWindow(const OpenWorkstation& command, int showCommand) {
    InitialiseControls();
    const UiMetrics metrics;
    // The log first and last: the library and the analysis speak to it as long as they are loaded.
    SystemLog log;
    const AnalysisClient analysis;
    const LibraryClient library;
    const ArchiveClient archive(command.archive);
    FrameWindow frame(library, analysis, archive, metrics);
    const LogListening listening(log, [&frame](const std::wstring& kind, const std::wstring& text) {
        frame.AppendReport(kind, text);
    });
    ShowWindow(frame.Window(), showCommand);
    UpdateWindow(frame.Window());
    if (command.builtin || !command.record.path.empty()) {
        frame.OpenRecordForUser(command.record);
    } else {
        frame.SelectPane(PaneKind::Worklist);
    }

    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        if (!frame.TranslateKeys(message)) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
        frame.ShowChanges();
    }
    return kDone;
}

// No message box of the system or of the suite appears, and nothing waits for a person.
template <class Work>
int RunBatch(Work work) {
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX | SEM_NOOPENFILEERRORBOX);
    SystemLog log;
    log.SetBatchMode();
    try {
        return work(log);
    } catch (const std::exception& failure) {
        // The promise is one line, whatever a file's name holds.
        std::string line = std::string("kxhost: ") + failure.what();
        std::replace_if(
            line.begin(), line.end(), [](char c) { return c == '\n' || c == '\r'; }, ' ');
        WriteError(line + '\n');
        return kFailed;
    }
}

int Run(const Measure& command) {
    return RunBatch([&](SystemLog&) { return RunMeasure(command, AnalysisClient()); });
}

int Run(const InterpretRecord& command) {
    return RunBatch([&](SystemLog&) { return RunInterpret(command, AnalysisClient()); });
}

int Run(const Shot& command) {
    return RunBatch([&](SystemLog& log) {
        InitialiseControls();
        const AnalysisClient analysis;
        const LibraryClient library;
        return RunShot(command, log, library, analysis, UiMetrics());
    });
}

int Run(const ListFields& command) {
    return RunBatch([&](SystemLog&) { return RunListFields(command, AnalysisClient()); });
}

int Run(const Expand& command) {
    return RunBatch([&](SystemLog&) { return RunExpand(command, AnalysisClient()); });
}

int Run(const ExportTable& command) {
    return RunBatch([&](SystemLog&) { return RunExportTable(command, AnalysisClient()); });
}

int Run(const PrintToFile& command) {
    return RunBatch([&](SystemLog&) { return RunPrintToFile(command, AnalysisClient()); });
}

int Run(const PrintToPrinter& command) {
    return RunBatch([&](SystemLog&) { return RunPrintToPrinter(command, AnalysisClient()); });
}

int Run(const ExportSignal& command) {
    return RunBatch([&](SystemLog&) { return RunExportSignal(command, AnalysisClient()); });
}

int Run(const ImportRecords& command) {
    return RunBatch([&](SystemLog& log) { return RunImport(command, log, AnalysisClient()); });
}

int Run(const ListTests& command) {
    return RunBatch([&](SystemLog& log) { return RunListTests(command, log); });
}

int Run(const ExportTest& command) {
    return RunBatch([&](SystemLog& log) { return RunExportTest(command, log); });
}

int Run(const ShowVersion&) {
    WriteOutput("kxhost " KX_VERSION_TEXT "\n");
    return kDone;
}

int Run(const ShowHelp&) {
    WriteOutput(UsageText());
    return kDone;
}

int Run(const UsageError& error) {
    WriteError("kxhost: " + error.text + "\nkxhost --help lists what can be asked for\n");
    return kMisused;
}

int RunProgram(int showCommand) {
    const Command command = ParseCommandLine(Arguments());
    if (const auto* show = std::get_if<OpenWorkstation>(&command)) {
        return RunWindow(*show, showCommand);
    }
    return std::visit(
        [](const auto& batch) -> int {
            if constexpr (std::is_same_v<std::decay_t<decltype(batch)>, OpenWorkstation>) {
                return kFailed;
            } else {
                return Run(batch);
            }
        },
        command);
}

}  // namespace
}  // namespace kxhost

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int showCommand) {
    try {
        return kxhost::RunProgram(showCommand);
    } catch (const std::exception& failure) {
        kxhost::WriteError(std::string("kxhost: ") + failure.what() + '\n');
        return kxhost::kFailed;
    }
}
