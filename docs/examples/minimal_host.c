/* The smallest host: loads kxdialogs.dll, shows the hypertrophy pane for one record, and ends with its
 * window. Build with any 32-bit Windows C compiler and the folder of kxdialogs.h as include folder; run
 * beside kxdialogs.dll. */
#include <windows.h>

#include "kxdialogs.h"

typedef void(KX_CALL* ControlFunction)(void);
typedef uint32_t(KX_CALL* PaneFunction)(KxHostWindow*, KxTestRecord*);

static KxEpisodeRecord episode;
static KxTestRecord record;

/* One median beat whose voltages are above both limits. */
static void FillRecord(void) {
    episode.totalSize = KX_EPISODE_FIXED_SIZE;
    episode.formatVersion = KX_EPISODE_FORMAT_VERSION;
    episode.measurements.size = KX_MEASUREMENT_SET_SIZE;
    episode.measurements.measured = 1;
    episode.measurements.qrsDuration = 96;
    episode.measurements.leads[KX_LEAD_V5].aR = 1800;
    episode.measurements.leads[KX_LEAD_V6].aR = 2100;
    episode.measurements.leads[KX_LEAD_V1].aS = -1500;
    record.testType = KX_TEST_RESTING;
    record.sex = KX_SEX_FEMALE;
    record.episodeCount = 1;
    record.episodes[0] = &episode;
}

/* The dialog manager makes OK and Cancel of these keys, and both end a pane: its window would be hidden for
 * good. */
static int IsEndingKey(const MSG* message) {
    return message->message == WM_KEYDOWN && (message->wParam == VK_RETURN || message->wParam == VK_ESCAPE);
}

static LRESULT CALLBACK OnMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_DESTROY) {
        PostQuitMessage(0);
    }
    return DefWindowProcA(window, message, wParam, lParam);
}

int main(void) {
    WNDCLASSA windowClass = {0};
    HMODULE library = LoadLibraryA("kxdialogs.dll");
    if (library == NULL) {
        return 1;
    }
    ControlFunction start = (ControlFunction)(void (*)(void))GetProcAddress(library, "LIBSTART");
    ControlFunction stop = (ControlFunction)(void (*)(void))GetProcAddress(library, "LIBSTOP");
    PaneFunction open = (PaneFunction)(void (*)(void))GetProcAddress(library, "HYPERTROPHYDIALOG");
    if (start == NULL || stop == NULL || open == NULL) {
        return 1;
    }

    windowClass.lpfnWndProc = OnMessage;
    windowClass.lpszClassName = "MinimalHost";
    windowClass.hbrBackground = (HBRUSH)(COLOR_BTNFACE + 1);
    RegisterClassA(&windowClass);
    KxHostWindow host = {
        NULL, CreateWindowA("MinimalHost", "Minimal host", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, 40, 40, 760,
                            420, NULL, NULL, NULL, NULL)};
    FillRecord();
    start();
    uint32_t pane = open(&host, &record); /* shown inside the window; destroyed with it */
    HWND paneWindow = pane == 0 ? NULL : ((KxHostWindow*)(uintptr_t)pane)->handle;
    ShowWindow(host.handle, SW_SHOW);

    MSG message;
    while (GetMessageA(&message, NULL, 0, 0) > 0) {
        if (IsWindow(paneWindow) && !IsEndingKey(&message) && IsDialogMessageA(paneWindow, &message)) {
            continue;
        }
        TranslateMessage(&message);
        DispatchMessageA(&message);
    }
    stop(); /* after the last pane is gone */
    FreeLibrary(library);
    return 0;
}
