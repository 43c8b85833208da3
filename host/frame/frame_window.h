// The workstation's window: patient strip, tabs with the pane in the middle, messages, status bar.
#pragma once

#include <windows.h>

#include <shellapi.h>

#include <array>
#include <cstddef>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "host/batch/command_line.h"
#include "host/clients/library_client.h"
#include "host/frame/host_window.h"
#include "host/frame/log_pane.h"
#include "host/frame/patient_strip.h"
#include "host/frame/print_dialog.h"
#include "host/panes/pane_host.h"
#include "host/session/record_session.h"
#include "host/windows/ui_metrics.h"

namespace kxhost {

class FrameWindow final : public HostWindow, private WorklistActions {
  public:
    // The references outlive the window. The window is made hidden and empty.
    FrameWindow(const LibraryClient& library, const AnalysisClient& analysis, const ArchiveClient& archive,
                const UiMetrics& metrics);
    ~FrameWindow() override;

    // Opens a recording in place of the one shown. Throws RecordError when it cannot be read; the one shown
    // stays.
    void OpenRecord(const RecordRequest& request);
    // The same for a user: a message box says what is wrong, and changes are not lost without a question.
    void OpenRecordForUser(const RecordRequest& request);
    void SelectPane(PaneKind kind);
    void AppendReport(const std::wstring& kind, const std::wstring& text);

    // Offers a message to accelerators, pane and dialog keys before it is dispatched. True: it has been dealt
    // with.
    bool TranslateKeys(MSG& message);
    // Shows what the library has changed in the record since the last call. Cheap when nothing has.
    void ShowChanges();

  private:
    // What the strip and the status bar show, to see without work whether it has changed.
    struct Snapshot {
        std::array<unsigned char, offsetof(KxMeasurementSet, leads)> measured{};
        std::array<unsigned char, offsetof(KxTestRecord, text268)> patient{};
        bool changed = false;
        uint8_t reportState = 0;
        bool manualMarkers = false;

        bool operator==(const Snapshot&) const = default;
    };

    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnCommand(int id);
    void OnDropFiles(HDROP drop);
    void OnGetMinMaxInfo(MINMAXINFO& info) const;
    void OnOpenFile();
    // Whether the record is saved now.
    bool OnSave();
    void OnSaveEpisode();
    void ImportFiles(const std::vector<std::filesystem::path>& files);
    void OpenArchivedTest(const ArchivedKey& key) override;
    void DeleteArchivedTest(const ArchivedKey& key, const std::wstring& name) override;
    void ImportFilesForUser() override;
    void TakeSession(std::unique_ptr<RecordSession> opened);
    void OnExportTable();
    void OnExport();
    void OnPrint();
    void PrintLead(const PrintChoice& choice);
    void PrintWholeTracing(const PrintChoice& choice);
    void SayPrinterRefuses(const std::wstring& printer, const std::wstring& reason) const;
    void OnSavePicture();
    // Before the menu opens: what there is to undo or do again.
    void ShowEditing() const;
    void OnEditReport(uint32_t mode);
    void OnShowLog();
    void OnHelp();
    void OnAbout();

    void CreateChildren();
    void Layout();
    // The chosen tab's.
    PaneKind ShownPane() const;
    void ShowPane();
    void ShowRecord();
    void ShowStatus();
    // A remark on what was just done, beside the recording's name until the pane changes.
    void ShowNote(std::wstring text);
    void StepPane(int step);
    void FocusNextPart();
    void OnSetFocus();
    void OnTabChosen();
    bool ConfirmLoss();
    void StoreShown();
    void Say(const std::wstring& text, UINT icon) const;
    Snapshot TakeSnapshot() const;

    const LibraryClient& library_;
    const AnalysisClient& analysis_;
    const ArchiveClient& archive_;
    const UiMetrics& metrics_;
    HACCEL accelerators_;
    HWND tabs_ = nullptr;
    HWND status_ = nullptr;
    HWND lastFocus_ = nullptr;  // the control that had the keyboard last
    bool logShown_ = false;
    std::unique_ptr<PatientStrip> strip_;
    std::unique_ptr<LogPane> log_;
    Snapshot shown_;
    std::wstring note_;
    PrintChoice printed_{
        KX_LEAD_II, Paper::kA4, true, {}};  // what printing begins with; the lead is the pane's
    std::unique_ptr<RecordSession> session_;
    // Last, so that the pane goes before the record that it shows.
    std::unique_ptr<PaneHost> paneHost_;
};

}  // namespace kxhost
