#include "dialogs/statements/statement_reader.h"

#include <algorithm>
#include <cstring>

namespace kx {
namespace {

constexpr char kSource[] = "interp";
constexpr std::uint32_t kNoReadLine = 299;

constexpr std::size_t kElementLimit = 511;
constexpr std::string_view kSectionStart = "<H1>";
constexpr std::string_view kSectionEnd = "</H1>";
constexpr std::string_view kEntryStart = "<P>";
constexpr std::string_view kEntryEnd = "</P>";

std::string_view UpTo(std::string_view text, char end, std::size_t limit) {
    const std::size_t length = std::min(text.size(), limit);
    const void* const found = length > 0 ? std::memchr(text.data(), end, length) : nullptr;
    return text.substr(0, found != nullptr
                              ? static_cast<std::size_t>(static_cast<const char*>(found) - text.data())
                              : length);
}

// As much of an element's content as is looked at.
std::string_view Shown(std::string_view content) {
    return UpTo(content, '\0', kElementLimit);
}

void StoreEntry(StatementLibrary& library, std::size_t section, std::size_t entry, std::string_view content) {
    const std::string_view text = UpTo(content, '^', content.size());
    library.SetText(section, entry, text);
    if (text.size() < content.size()) {
        const std::string_view rest = content.substr(text.size() + 1);
        library.SetCode(section, entry, UpTo(rest, '^', rest.size()));
    }
}

}  // namespace

bool StatementReader::Load(ByteSource& file) {
    SetContent({});
    if (!file.LoadAll(nullptr)) {
        if (Log() != nullptr) {
            Log()->LOGOEMERROR(kSource, kNoReadLine, "no read");
        }
        return false;
    }
    SetContent({file.Content(), file.Length()});
    return true;
}

bool StatementReader::Read(ByteSource& file, StatementLibrary& library) {
    library.Clear();
    if (!Load(file)) {
        return false;
    }
    Parse(library);
    SetContent({});
    return true;
}

void StatementReader::Parse(StatementLibrary& library) const {
    constexpr std::size_t kNone = std::string_view::npos;
    const std::uint32_t body = FindBody(0);
    std::size_t at = body != 0 ? FindMark(Content(), body, kSectionStart) : kNone;
    std::size_t entryEnd = 0;  // of the last search, so that an end far away is looked for once
    for (std::size_t section = 0; section < StatementLibrary::kSections && at != kNone; ++section) {
        const std::size_t title = at + kSectionStart.size();
        at = FindMark(Content(), title, kSectionEnd);
        if (at == kNone) {
            return;
        }
        library.SetTitle(section, Shown(Content().substr(title, at - title)));
        std::size_t entry = 0;
        for (at = NextTag(at + 1); at != kNone && !StartsAt(at, kSectionStart); at = NextTag(at)) {
            const std::size_t content = at + kEntryStart.size();
            const bool statement = entry < StatementLibrary::kEntries && StartsAt(at, kEntryStart);
            if (statement && entryEnd != kNone && entryEnd < content) {
                entryEnd = FindMark(Content(), content, kEntryEnd);
            }
            if (!statement || entryEnd == kNone) {
                ++at;
                continue;
            }
            const std::string_view element = Content().substr(content, entryEnd - content);
            StoreEntry(library, section, entry++, Shown(element));
            // A statement that was not closed in time runs over titles, which are sections all the same.
            const std::size_t inner = FindMark(element, 0, kSectionStart);
            at = inner != kNone ? content + inner : entryEnd + kEntryEnd.size();
        }
    }
}

}  // namespace kx
