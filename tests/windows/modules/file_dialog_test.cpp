// The open and save dialogs, answered by a timer as a user would with the keyboard.
#include <gtest/gtest.h>
#include <windows.h>

#include <commdlg.h>
#include <dlgs.h>

#include <string>

#include "lib/fileutil.h"
#include "tests/rig/recorded_reports.h"
#include "tests/windows/modules/temp_folder.h"

namespace kx::test {
namespace {

constexpr char kTitle[] = "Scelta del file di prova";

// Answers the next dialog with the title kTitle: types a name, if any, and presses a button.
class Answer {
  public:
    Answer(WORD button, const char* typed) : button_(button), typed_(typed != nullptr ? typed : "") {
        current = this;
        timer_ = SetTimer(nullptr, 0, 50, OnTimer);
    }
    ~Answer() {
        KillTimer(nullptr, timer_);
        current = nullptr;
    }
    Answer(const Answer&) = delete;
    Answer& operator=(const Answer&) = delete;

    bool seen = false;
    bool hadHelp = false;
    HWND owner = nullptr;

  private:
    // The edit in the combo box for the file name, or the plain edit of dialogs without one.
    static HWND FileNameEdit(HWND dialog) {
        HWND edit = GetDlgItem(dialog, cmb13);
        if (edit == nullptr) {
            return GetDlgItem(dialog, edt1);
        }
        for (HWND inner = edit; inner != nullptr; inner = GetWindow(inner, GW_CHILD)) {
            edit = inner;
        }
        return edit;
    }

    static void CALLBACK OnTimer(HWND, UINT, UINT_PTR, DWORD) {
        HWND const dialog = FindWindowA("#32770", kTitle);
        if (dialog == nullptr || !IsWindowVisible(dialog) || current == nullptr) {
            return;
        }
        Answer& answer = *current;
        // A second turn means that the dialog did not take the answer.
        const WORD button = answer.seen ? static_cast<WORD>(IDCANCEL) : answer.button_;
        if (!answer.seen && !answer.typed_.empty()) {
            SetWindowTextA(FileNameEdit(dialog), answer.typed_.c_str());
        }
        answer.seen = true;
        answer.owner = GetWindow(dialog, GW_OWNER);
        HWND const help = GetDlgItem(dialog, pshHelp);
        answer.hadHelp = help != nullptr && (GetWindowLongA(help, GWL_STYLE) & WS_VISIBLE) != 0;
        PostMessageA(dialog, WM_COMMAND, button, 0);
    }

    static inline Answer* current = nullptr;
    UINT_PTR timer_ = 0;
    WORD button_;
    std::string typed_;
};

class FileDialogTest : public testing::Test {
  protected:
    FileDialogTest() {
        WriteBytes(folder.Named("a.txt"), "1");
        WriteBytes(folder.Named("b.txt"), "2");
        owner = CreateWindowExA(0, "STATIC", "owner", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 700, 500, nullptr, nullptr,
                                GetModuleHandleA(nullptr), nullptr);
    }
    ~FileDialogTest() override { DestroyWindow(owner); }

    bool Open(const char* name, bool multiSelect) {
        return file.ChooseOpen(owner, kTitle, folder.Path().c_str(), name, "Testo^*.txt^Tutti i file^*.*", &log, multiSelect);
    }

    TempFolder folder;
    RecordedReports log;
    DataFile file;
    HWND owner;
};

TEST_F(FileDialogTest, TakesTheOneFileThatWasChosen) {
    const Answer answer(IDOK, nullptr);
    ASSERT_TRUE(Open("a.txt", false));
    EXPECT_TRUE(answer.seen);
    EXPECT_TRUE(answer.hadHelp);
    EXPECT_EQ(answer.owner, owner);
    EXPECT_STREQ(file.FileName(0), folder.Named("a.txt").c_str());
    EXPECT_EQ(file.FileName(1), nullptr);
    EXPECT_TRUE(file.ReadAll(0, 0, &log));
    EXPECT_STREQ(file.Content(), "1");
}

TEST_F(FileDialogTest, KeepsTheNameWhenTheUserCancels) {
    ASSERT_TRUE(file.SetName(folder.Named("a.txt").c_str()));
    {
        const Answer answer(IDCANCEL, nullptr);
        EXPECT_FALSE(Open("b.txt", false));
        EXPECT_TRUE(answer.seen);
    }
    {
        const Answer answer(IDCANCEL, nullptr);
        // The title alone is what the answering timer knows the dialog by.
        const std::string longText(1000, 'x');
        EXPECT_FALSE(file.ChooseSave(nullptr, kTitle, longText.c_str(), nullptr, longText.c_str(), nullptr));
        EXPECT_TRUE(answer.seen);
    }
    EXPECT_STREQ(file.FileName(0), folder.Named("a.txt").c_str());
}

TEST_F(FileDialogTest, TakesSeveralFiles) {
    const Answer answer(IDOK, "\"a.txt\" \"b.txt\"");
    ASSERT_TRUE(Open(nullptr, true));
    EXPECT_STREQ(file.FileName(0), folder.Named("a.txt").c_str());
    EXPECT_STREQ(file.FileName(1), folder.Named("b.txt").c_str());
    EXPECT_EQ(file.FileName(2), nullptr);
    EXPECT_TRUE(file.ReadAll(1, 10, &log));
    EXPECT_STREQ(file.Content(), "2");
    // An edit is of the file that was read, not of the first.
    EXPECT_TRUE(file.InsertAt(1, "3", 1));
    file.Close();
    EXPECT_EQ(ReadBytes(folder.Named("a.txt")), "1");
    EXPECT_EQ(ReadBytes(folder.Named("b.txt")), "23");
}

}  // namespace
}  // namespace kx::test
