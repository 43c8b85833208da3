// The comment library: the ready-made statements of a test type as a tree.
#pragma once

#include <windows.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "dialogs/statements/statement_library.h"
#include "lib/reporter.h"
#include "lib/windows/tree_view.h"

namespace kx {

// Sections at the root, their statements below, each with its code in brackets: "Ritmo sinusale. [RS]".
// Owned by whoever made it, as every TreeView. What goes wrong is reported as "interp" and leaves items out
// or the tree empty.
class CommentLibraryTree final : public TreeView {
  public:
    // Adopts item `controlId` of a dialog and fills it. library and log outlive the tree.
    CommentLibraryTree(const LibraryModule& library, Window* dialog, std::uint32_t controlId,
                       std::uint32_t testType, Reporter& log);
    // Creates the control, area in pixels of the parent's client area, and fills it.
    CommentLibraryTree(const LibraryModule& library, Window* parent, std::uint32_t controlId,
                       const RECT& area, std::uint32_t testType, Reporter& log);

    // Reads the statement file of the test type anew. Nothing is selected afterwards.
    void Rebuild(std::uint32_t testType);

    // The text of the item selected last since the tree was built; empty when there was none.
    const std::string& SelectedText() const { return selectedText_; }

    // Remembers the text; not consumed, so that the parent may act on the notification as well.
    bool OnSelectionChanged(const NMTREEVIEWA& change, LRESULT& result) override;

  private:
    static constexpr std::size_t kPoolSize = 32000;

    void LoadIcons();
    void Fill(const StatementLibrary& statements);
    // Copies text into the pool; null, reported, when it has no room.
    const char* Pooled(std::string_view text, std::uint32_t fullLine);

    const LibraryModule* module_;
    Reporter* log_;
    std::string selectedText_;
    // The texts that the items hold the addresses of.
    std::size_t poolUsed_ = 0;
    char pool_[kPoolSize];
};

}  // namespace kx
