#include "host/batch/batch_shot.h"

#include <algorithm>

#include "host/frame/frame_window.h"
#include "host/windows/png_writer.h"
#include "host/windows/text_conversion.h"
#include "host/windows/window_picture.h"

namespace kxhost {
namespace {

// A bare window, without a frame, that holds one pane.
class ShotWindow final : public HostWindow {
  public:
    ShotWindow() { Create({L"KxShot", L"kxhost", WS_POPUP | WS_CLIPCHILDREN, 0, nullptr, 0, 0, nullptr}); }

  private:
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (message == WM_GETMINMAXINFO) {
            reinterpret_cast<MINMAXINFO*>(lParam)->ptMaxTrackSize = {kLargestShot, kLargestShot};
            return 0;
        }
        return HostWindow::OnMessage(message, wParam, lParam);
    }
};

void Save(HWND window, const std::string& file) {
    WaitUntilPainted(window);
    const GdiPlusSession gdiPlus;
    const UniqueBitmap picture = TakePicture(window);
    if (!gdiPlus.IsStarted() || !picture || !WritePng(picture.get(), PathFromUtf8(file))) {
        throw RecordError(file + ": the picture could not be written");
    }
}

void ShootWindow(const Shot& command, SystemLog& log, const LibraryClient& library,
                 const AnalysisClient& analysis, const UiMetrics& metrics) {
    const ArchiveClient archive(command.archive);
    FrameWindow frame(library, analysis, archive, metrics);
    // Title bar and border are not the program's to draw everywhere: the picture begins with the menu.
    SetWindowLongW(frame.Window(), GWL_STYLE, static_cast<LONG>(WS_POPUP | WS_CLIPCHILDREN));
    const UINT keepSize = command.width == 0 ? SWP_NOSIZE : 0;
    SetWindowPos(frame.Window(), nullptr, 0, 0, command.width, command.height,
                 SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED | keepSize);
    const LogListening listening(log, [&frame](const std::wstring& kind, const std::wstring& text) {
        frame.AppendReport(kind, text);
    });
    frame.OpenRecord(command.record);
    if (command.pane) {
        frame.SelectPane(*command.pane);
    }
    ShowWindow(frame.Window(), SW_SHOWNOACTIVATE);
    Save(frame.Window(), command.file);
}

void ShootPane(const Shot& command, const LibraryClient& library, const AnalysisClient& analysis,
               const UiMetrics& metrics) {
    const auto session = RecordSession::Open(command.record, analysis);
    ShotWindow window;
    PaneHost host(window.Window(), library, metrics);
    if (!host.Open(*command.pane, session->Test())) {
        const std::string name(RowOf(*command.pane).name);
        throw RecordError(library.IsLoaded() ? name + ": the library makes no such pane for this recording"
                                             : ToUtf8(library.FailureText()));
    }
    const SIZE natural = host.NaturalSize();
    const int width =
        command.width != 0 ? command.width : std::clamp<int>(natural.cx, kSmallestShot, kLargestShot);
    const int height =
        command.height != 0 ? command.height : std::clamp<int>(natural.cy, kSmallestShot, kLargestShot);
    SetWindowPos(window.Window(), nullptr, 0, 0, width, height,
                 SWP_NOZORDER | SWP_NOACTIVATE | SWP_SHOWWINDOW);
    SetWindowPos(host.Window(), nullptr, 0, 0, width, height, SWP_NOZORDER);
    Save(window.Window(), command.file);
    host.Close();
}

}  // namespace

int RunShot(const Shot& command, SystemLog& log, const LibraryClient& library, const AnalysisClient& analysis,
            const UiMetrics& metrics) {
    // The worklist is the workstation's, not the test's: it is shown in its window.
    if (command.pane && *command.pane != PaneKind::Worklist) {
        ShootPane(command, library, analysis, metrics);
    } else {
        ShootWindow(command, log, library, analysis, metrics);
    }
    return 0;
}

}  // namespace kxhost
