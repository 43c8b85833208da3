#include "tests/windows/statement_editor/editor_fixture.h"

namespace kx::test {

StatementEditorTest::StatementEditorTest() {
    SetWindowPos(static_cast<HWND>(parent_.handle), nullptr, corner_.x, corner_.y, 700, 480, SWP_NOZORDER);
    answers_.physicians = [](std::uint32_t, PhysicianRecord* records, std::uint32_t) {
        records[0] = Physician("Nicol\xF2", "B", "Rossi", "");
        records[1] = Physician("Anna", "", "Bianchi", "Dr");
        return 2u;
    };
    record_->SetOriginalInterpretation(nullptr, "Testo di prima.");
    record_->SetConfirmedBy("Bruni");
    record_->ClearModified();
}

std::uint32_t StatementEditorTest::Run(std::uint32_t mode, const std::function<void(HWND)>& script) {
    HoldModules();
    Reports();
    std::uint32_t result = 99;
    EXPECT_TRUE(DriveModal(
        [&] { result = library_->editInterpretation(&parent_, record_.get(), &area_, mode); }, script));
    return result;
}

std::string EditText(HWND editor) {
    std::string text(8192, '\0');
    text.resize(static_cast<std::size_t>(
        GetWindowTextA(Item(editor, kEditId), text.data(), static_cast<int>(text.size()))));
    return text;
}

RECT PlaceOf(HWND editor, HWND child) {
    RECT area = ScreenPlaceOf(child);
    MapWindowPoints(nullptr, editor, reinterpret_cast<POINT*>(&area), 2);
    return area;
}

RECT ScreenPlaceOf(HWND window) {
    RECT area{};
    GetWindowRect(window, &area);
    return area;
}

bool IsProposing() {
    const HWND popup = FindWindowA("CompletionPopup", nullptr);
    return popup != nullptr && IsWindowVisible(popup);
}

}  // namespace kx::test
