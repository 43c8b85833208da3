// The dialog's dispatcher: which message reaches which handler, and what its sender gets back.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "lib/windows/device_context.h"
#include "lib/windows/dialog.h"
#include "tests/windows/framework/templates.h"
#include "tests/windows/framework/test_library.h"

namespace {

using kx::Dialog;
using kx::Window;
using kx::test::HostFrame;
using kx::test::ThisLibrary;
using testing::ElementsAre;
using testing::IsEmpty;

class RecordingDialog final : public Dialog {
  public:
    using Dialog::Dialog;
    ~RecordingDialog() { Destroy(); }

    bool handled = false;
    std::vector<std::string> calls;

    INT_PTR OnDialogCommand(WPARAM wParam) override {
        Note("OnDialogCommand", wParam);
        return handled ? TRUE : FALSE;
    }
    bool OnDialogNotify(UINT_PTR id, NMHDR* header, LRESULT& result) override {
        Note("OnDialogNotify", id, header == nullptr ? 0 : header->code);
        result = 77;
        return handled;
    }
    bool OnDrawItem(UINT id, DRAWITEMSTRUCT*) override {
        Note("OnDrawItem", id);
        return handled;
    }
    void OnSize(UINT sizeType, int width, int height) override { Note("OnSize", sizeType, width, height); }
    void OnDialogHotKey(int id, LPARAM lParam) override { Note("OnDialogHotKey", id, lParam); }
    bool OnEraseBackground(kx::DeviceContext& context) override {
        Note("OnEraseBackground", context.Handle() != nullptr);
        return handled;
    }
    HBRUSH OnCtlColorStatic(HDC, HWND) override {
        Note("OnCtlColorStatic");
        return handled ? static_cast<HBRUSH>(GetStockObject(DKGRAY_BRUSH)) : nullptr;
    }
    LRESULT OnMeasureItem(UINT id, MEASUREITEMSTRUCT*) override {
        Note("OnMeasureItem", id);
        return 1;
    }
    void OnClose() override { Note("OnClose"); }
    void OnDeviceChange(UINT event, LPARAM data) override { Note("OnDeviceChange", event, data); }
    bool OnOK() override {
        Note("OnOK");
        return true;
    }
    bool OnCancel() override {
        Note("OnCancel");
        return true;
    }

  private:
    template <class... Arguments>
    void Note(const char* handler, Arguments... arguments) {
        std::string line = handler;
        ((line += ' ', line += std::to_string(static_cast<long long>(arguments))), ...);
        calls.push_back(line);
    }
};

class DialogDispatch : public testing::Test {
  protected:
    DialogDispatch() {
        dialog_.CreateModeless(IDD_PLAIN_CHILD, &dialog_);
        kx::test::PumpMessages();
        dialog_.calls.clear();
    }

    HostFrame frame_;
    RecordingDialog dialog_{ThisLibrary(), &frame_, nullptr, nullptr};
};

TEST_F(DialogDispatch, EveryMessageReachesItsHandlerAndReturnsItsResult) {
    NMHDR header{};
    header.code = 3;
    const HDC screen = GetDC(nullptr);
    const auto brush = reinterpret_cast<INT_PTR>(GetStockObject(DKGRAY_BRUSH));
    constexpr LRESULT kUntouched = 5;
    const struct {
        UINT message;
        WPARAM wParam;
        LPARAM lParam;
        const char* call;
        INT_PTR handled;        // what the dialog procedure returns then
        LRESULT handledResult;  // and the message's result
        INT_PTR declined;
    } rows[] = {
        {WM_COMMAND, 0x12345, 0, "OnDialogCommand 74565", TRUE, kUntouched, FALSE},
        {WM_NOTIFY, 40001, reinterpret_cast<LPARAM>(&header), "OnDialogNotify 40001 3", TRUE, 77, FALSE},
        {WM_DRAWITEM, 40001, 0, "OnDrawItem 40001", TRUE, 1, FALSE},
        {WM_SIZE, SIZE_MINIMIZED, MAKELPARAM(300, 40000), "OnSize 1 300 40000", FALSE, kUntouched, FALSE},
        {WM_HOTKEY, 0xC001, 9, "OnDialogHotKey 49153 9", FALSE, kUntouched, FALSE},
        {WM_ERASEBKGND, reinterpret_cast<WPARAM>(screen), 0, "OnEraseBackground 1", TRUE, 1, FALSE},
        {WM_CTLCOLORSTATIC, 0, 0, "OnCtlColorStatic", brush, kUntouched, FALSE},
        {WM_MEASUREITEM, 40001, 0, "OnMeasureItem 40001", FALSE, kUntouched, FALSE},
        {WM_CLOSE, 0, 0, "OnClose", FALSE, kUntouched, FALSE},
        {WM_DEVICECHANGE, 7, 8, "OnDeviceChange 7 8", FALSE, kUntouched, FALSE},
        {WM_MOUSEMOVE, 0, 0, nullptr, FALSE, kUntouched, FALSE},
        {WM_TIMER, 1, 0, nullptr, FALSE, kUntouched, FALSE},
    };
    const auto procedure = reinterpret_cast<DLGPROC>(GetWindowLongA(dialog_.Handle(), DWLP_DLGPROC));
    for (const auto& row : rows) {
        for (const bool handled : {true, false}) {
            dialog_.handled = handled;
            dialog_.SetMsgResult(kUntouched);
            const INT_PTR returned = procedure(dialog_.Handle(), row.message, row.wParam, row.lParam);
            EXPECT_EQ(returned, handled ? row.handled : row.declined) << "message " << row.message;
            EXPECT_EQ(GetWindowLongA(dialog_.Handle(), DWLP_MSGRESULT),
                      handled ? row.handledResult : kUntouched)
                << "message " << row.message;
            if (row.call == nullptr) {
                EXPECT_THAT(dialog_.calls, IsEmpty()) << "message " << row.message;
            } else {
                EXPECT_THAT(dialog_.calls, ElementsAre(row.call));
            }
            dialog_.calls.clear();
        }
    }
    ReleaseDC(nullptr, screen);
}

TEST_F(DialogDispatch, WithoutAnObjectOnlyItemHeightsAreAnswered) {
    const HWND window = dialog_.Handle();
    dialog_.Attach(nullptr);
    MEASUREITEMSTRUCT item{};
    EXPECT_EQ(SendMessageA(window, WM_MEASUREITEM, 40001, reinterpret_cast<LPARAM>(&item)), 1);
    EXPECT_EQ(item.itemHeight, 150u);
    const auto procedure = reinterpret_cast<DLGPROC>(GetWindowLongA(window, DWLP_DLGPROC));
    EXPECT_EQ(procedure(window, WM_MEASUREITEM, 40001, 0), FALSE);
    EXPECT_EQ(procedure(window, WM_INITDIALOG, 0, 0), FALSE);
    EXPECT_EQ(procedure(window, WM_COMMAND, IDOK, 0), FALSE);
    EXPECT_THAT(dialog_.calls, IsEmpty());
}

}  // namespace
