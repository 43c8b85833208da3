#include "dialogs/interpretation/comment_library_tree.h"

#include <cstring>
#include <utility>

#include "dialogs/resources/picture_ids.h"
#include "dialogs/statements/interp_report.h"
#include "dialogs/statements/statement_files.h"
#include "lib/windows/gdi_handles.h"

namespace kx {
namespace {

constexpr std::uint32_t kNoFolderLine = 681;
constexpr std::uint32_t kTestTypeLine = 690;
constexpr std::uint32_t kEntryPoolLine = 720;
constexpr std::uint32_t kSectionPoolLine = 723;
constexpr std::uint32_t kNoReadLine = 727;

constexpr std::uint32_t kIcons[] = {IDI_BUTTON_INSERT_LIBRARY_ENTRY, IDI_BUTTON_INSERT_AUTOMATIC,
                                    IDI_BUTTON_DICTIONARY};
constexpr int kIconSide = 16;  // pixels
// Positions of the images among the icons.
constexpr int kStatementImage = 0;
constexpr int kSectionImage = 2;

std::string EntryText(const StatementLibrary& statements, std::size_t section, std::size_t entry) {
    std::string text = statements.Text(section, entry);
    if (const char* const code = statements.Code(section, entry); !IsHidden(code)) {
        text += " [";
        text += code;
        text += ']';
    }
    return text;
}

}  // namespace

CommentLibraryTree::CommentLibraryTree(const LibraryModule& library, Window* dialog, std::uint32_t controlId,
                                       std::uint32_t testType, Reporter& log)
    : TreeView(library, dialog, controlId), module_(&library), log_(&log) {
    LoadIcons();
    Rebuild(testType);
}

CommentLibraryTree::CommentLibraryTree(const LibraryModule& library, Window* parent, std::uint32_t controlId,
                                       const RECT& area, std::uint32_t testType, Reporter& log)
    : TreeView(library, parent, controlId, static_cast<int>(area.left), static_cast<int>(area.top),
               static_cast<int>(area.right - area.left), static_cast<int>(area.bottom - area.top)),
      module_(&library),
      log_(&log) {
    LoadIcons();
    Rebuild(testType);
}

void CommentLibraryTree::LoadIcons() {
    UniqueImageList images(ImageList_Create(kIconSide, kIconSide, ILC_COLOR32 | ILC_MASK,
                                            static_cast<int>(std::size(kIcons)), 0));
    for (const std::uint32_t id : kIcons) {
        const UniqueIcon icon(static_cast<HICON>(
            module_->instance.LoadImageById(id, IMAGE_ICON, kIconSide, kIconSide, LR_DEFAULTCOLOR)));
        if (images == nullptr || icon == nullptr || ImageList_AddIcon(images.get(), icon.get()) < 0) {
            return;  // an index without its image would show another one
        }
    }
    SetImages(std::move(images));
}

void CommentLibraryTree::Rebuild(std::uint32_t testType) {
    Clear();
    selectedText_.clear();  // clearing may have passed the selection on from item to item
    poolUsed_ = 0;
    const char* const fileName = StatementFileName(testType, StatementUse::kLibrary);
    char path[MAX_PATH];
    // A module without a folder is reported before a type without a file.
    if (!PathBesideLibrary(module_->instance.Handle(), fileName != nullptr ? fileName : "", kNoFolderLine,
                           *log_, path)) {
        return;
    }
    if (fileName == nullptr) {
        log_->LOGOEMERROR(kInterpSource, kTestTypeLine, "ptype");
        return;
    }
    StatementLibrary statements;
    if (!ReadStatementFile(path, statements, log_)) {
        log_->LOGOEMERROR(kInterpSource, kNoReadLine, "no read");
        return;
    }
    SendMsg(WM_SETREDRAW, FALSE);
    Fill(statements);
    SendMsg(WM_SETREDRAW, TRUE);
}

void CommentLibraryTree::Fill(const StatementLibrary& statements) {
    for (std::size_t section = 0; section < StatementLibrary::kSections; ++section) {
        if (IsHidden(statements.Title(section))) {
            continue;
        }
        const char* const title = Pooled(statements.Title(section), kSectionPoolLine);
        if (title == nullptr) {
            continue;
        }
        const HTREEITEM parent =
            InsertTopItem(title, kSectionImage, kSectionImage, reinterpret_cast<LPARAM>(title));
        for (std::size_t entry = 0; entry < StatementLibrary::kEntries; ++entry) {
            if (IsHidden(statements.Text(section, entry))) {
                continue;
            }
            if (const char* const text = Pooled(EntryText(statements, section, entry), kEntryPoolLine)) {
                InsertItem(parent, text, kStatementImage, kStatementImage, reinterpret_cast<LPARAM>(text));
            }
        }
    }
}

const char* CommentLibraryTree::Pooled(std::string_view text, std::uint32_t fullLine) {
    if (text.size() >= kPoolSize - poolUsed_) {
        log_->LOGMEMORYERROR(kInterpSource, fullLine);
        return nullptr;
    }
    char* const copy = pool_ + poolUsed_;
    std::memcpy(copy, text.data(), text.size());
    copy[text.size()] = '\0';
    poolUsed_ += text.size() + 1;
    return copy;
}

bool CommentLibraryTree::OnSelectionChanged(const NMTREEVIEWA& change, LRESULT&) {
    if (const auto* const text = reinterpret_cast<const char*>(change.itemNew.lParam); text != nullptr) {
        selectedText_ = text;
    }
    return false;
}

}  // namespace kx
