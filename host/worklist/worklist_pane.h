// The workstation's first tab: the tests of the archive, to search, open and delete.
#pragma once

#include <array>
#include <map>
#include <string>
#include <vector>

#include "host/clients/archive_client.h"
#include "host/frame/host_window.h"
#include "host/windows/ui_metrics.h"

namespace kxhost {

// What the worklist asks of the workstation.
class WorklistActions {
  public:
    virtual void OpenArchivedTest(const ArchivedKey& key) = 0;
    // Asks first; `name` is the patient's.
    virtual void DeleteArchivedTest(const ArchivedKey& key, const std::wstring& name) = 0;
    virtual void ImportFilesForUser() = 0;

  protected:
    ~WorklistActions() = default;
};

// A search edit that lists as one types, the states with their counts, the list. Enter and a double click
// open, Delete asks and deletes, a click on a column sorts by it.
class WorklistPane final : public HostWindow {
  public:
    // The references outlive the pane.
    WorklistPane(HWND parent, const UiMetrics& metrics, const ArchiveClient& archive,
                 WorklistActions& actions);

    static SIZE NaturalSize(const UiMetrics& metrics);

  private:
    static constexpr std::size_t kStates = 4;  // all, original, overread, confirmed

    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    LRESULT OnNotify(const NMHDR& header);
    void OnCommand(HWND control, WORD code);
    void OnColumn(int column);
    void CreateChildren();
    void Layout() const;
    void Search();
    void OpenChosen();
    static LRESULT CALLBACK SearchKeys(HWND search, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                       DWORD_PTR pane) noexcept;
    void DeleteChosen();
    kx::ArchiveFilter Filter(std::size_t state) const;
    // Null when there is no such row, or no longer.
    const ArchivedLine* Line(std::uint32_t row);
    const ArchivedLine* Chosen();
    const std::wstring& Cell(const ArchivedLine& line, int column);

    const UiMetrics& metrics_;
    const ArchiveClient& archive_;
    WorklistActions& actions_;
    HWND search_ = nullptr;
    HWND import_ = nullptr;
    HWND count_ = nullptr;
    HWND list_ = nullptr;
    std::array<HWND, kStates> states_{};
    std::size_t state_ = 0;
    kx::ArchiveOrder order_ = kx::kArchiveNewestFirst;
    std::uint32_t rows_ = 0;
    std::map<std::uint32_t, std::vector<ArchivedLine>> pages_;  // as they were asked for, by their first row
    std::wstring cell_;
};

}  // namespace kxhost
