#include "dialogs/statements/statement_merge.h"

#include <cstring>
#include <optional>

namespace kx {
namespace {

bool IsSame(const char* a, const char* b) {
    return std::strcmp(a, b) == 0;
}

// Texts of one place of a library.
struct Statement {
    const char* text;
    const char* code;

    bool IsHidden() const { return kx::IsHidden(text); }
    // The code of a hidden statement is not written.
    bool operator==(const Statement& other) const {
        return IsSame(text, other.text) && (IsHidden() || IsSame(code, other.code));
    }
};

Statement At(const StatementLibrary& library, std::size_t section, std::size_t entry) {
    return {library.Text(section, entry), library.Code(section, entry)};
}

std::optional<std::size_t> FindSection(const StatementLibrary& library, const char* title) {
    for (std::size_t section = 0; section < StatementLibrary::kSections; ++section) {
        if (IsSame(library.Title(section), title)) {
            return section;
        }
    }
    return std::nullopt;
}

std::optional<std::size_t> FindEntry(const StatementLibrary& library, std::size_t section,
                                     const Statement& wanted) {
    for (std::size_t entry = 0; entry < StatementLibrary::kEntries; ++entry) {
        if (At(library, section, entry) == wanted) {
            return entry;
        }
    }
    return std::nullopt;
}

bool IsSameSection(const StatementLibrary& a, std::size_t sectionOfA, const StatementLibrary& b,
                   std::size_t sectionOfB) {
    for (std::size_t entry = 0; entry < StatementLibrary::kEntries; ++entry) {
        const Statement ofA = At(a, sectionOfA, entry);
        const Statement ofB = At(b, sectionOfB, entry);
        if ((!ofA.IsHidden() && !FindEntry(b, sectionOfB, ofA)) ||
            (!ofB.IsHidden() && !FindEntry(a, sectionOfA, ofB))) {
            return false;
        }
    }
    return true;
}

// Where there is what base had, mine takes its place; mine is added where there is not.
bool MergeEntry(const Statement& base, const Statement& mine, StatementLibrary& theirs, std::size_t section) {
    std::optional<std::size_t> place;
    if (!base.IsHidden()) {
        place = FindEntry(theirs, section, base);
    }
    if (!place && (mine.IsHidden() || FindEntry(theirs, section, mine))) {
        return true;
    }
    if (!place) {
        place = FindEntry(theirs, section, {kHiddenText, kHiddenText});
    }
    if (place) {
        theirs.SetEntry(section, *place, mine.text, IsHidden(mine.code) ? "" : mine.code);
    }
    return place.has_value();
}

bool IsChanged(const StatementLibrary& base, const StatementLibrary& mine, std::size_t section) {
    if (!IsSame(base.Title(section), mine.Title(section))) {
        return true;
    }
    for (std::size_t entry = 0; entry < StatementLibrary::kEntries; ++entry) {
        if (!(At(base, section, entry) == At(mine, section, entry))) {
            return true;
        }
    }
    return false;
}

// Where theirs has a section that is `title` now and that base may have under another one.
std::optional<std::size_t> PlaceOf(const StatementLibrary& base, std::size_t section, const char* title,
                                   const StatementLibrary& theirs) {
    const char* const before = base.Title(section);
    std::optional<std::size_t> place = FindSection(theirs, IsHidden(before) ? title : before);
    if (!place && !IsHidden(title)) {
        place = FindSection(theirs, title);
    }
    // Renamed by them: a title that base does not have, in the same place.
    if (!place && IsSame(before, title) && !FindSection(base, theirs.Title(section))) {
        place = section;
    }
    return place;
}

// What a hidden section held is written by nobody.
std::optional<std::size_t> ClearedPlace(StatementLibrary& theirs) {
    const std::optional<std::size_t> place = FindSection(theirs, kHiddenText);
    for (std::size_t entry = 0; place && entry < StatementLibrary::kEntries; ++entry) {
        theirs.SetEntry(*place, entry, "", "");
    }
    return place;
}

bool MergeSection(const StatementLibrary& base, const StatementLibrary& mine, std::size_t section,
                  StatementLibrary& theirs) {
    const char* const title = mine.Title(section);
    std::optional<std::size_t> place = PlaceOf(base, section, title, theirs);
    if (IsHidden(title)) {
        if (place && IsSameSection(base, section, theirs, *place)) {
            theirs.SetTitle(*place, "");
        }
        return true;
    }
    if (!place) {
        place = ClearedPlace(theirs);
    }
    if (!place) {
        return false;
    }
    if (!IsSame(base.Title(section), title) || IsHidden(theirs.Title(*place))) {
        theirs.SetTitle(*place, title);
    }
    for (std::size_t entry = 0; entry < StatementLibrary::kEntries; ++entry) {
        const Statement ofBase = At(base, section, entry);
        const Statement ofMine = At(mine, section, entry);
        if (!(ofBase == ofMine) && !MergeEntry(ofBase, ofMine, theirs, *place)) {
            return false;
        }
    }
    return true;
}

}  // namespace

bool MergeStatements(const StatementLibrary& base, const StatementLibrary& mine, StatementLibrary& theirs) {
    for (std::size_t section = 0; section < StatementLibrary::kSections; ++section) {
        // A section that neither has is written by nobody.
        const bool isThere = !IsHidden(base.Title(section)) || !IsHidden(mine.Title(section));
        if (isThere && IsChanged(base, mine, section) && !MergeSection(base, mine, section, theirs)) {
            return false;
        }
    }
    return true;
}

}  // namespace kx
