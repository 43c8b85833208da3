#include "dialogs/statements/statement_reader.h"

#include <algorithm>
#include <cstring>

#include "dialogs/statements/interp_report.h"

namespace kx {
namespace {

constexpr std::uint32_t kNoReadLine = 299;

constexpr std::size_t kNone = std::string_view::npos;
constexpr std::size_t kElementLimit = 511;
constexpr std::string_view kSectionStart = "<H1>";
constexpr std::string_view kSectionEnd = "</H1>";
constexpr std::string_view kEntryStart = "<P>";
constexpr std::string_view kEntryEnd = "</P>";

// One pass over the content of a file.
class Parser {
  public:
    Parser(std::string_view content, StatementLibrary& library) : content_(content), library_(library) {}

    // From the start of the body on.
    void ReadSections(std::size_t body);

  private:
    std::size_t ReadEntries(std::size_t section, std::size_t at);
    void FindEntryEnd(std::size_t content, std::size_t tag);
    void StoreEntry(std::size_t section, std::size_t entry, std::string_view content);

    std::size_t NextTag(std::size_t from) const { return content_.find('<', from); }
    // The same where it is expected close by: behind a line end and a tab.
    std::size_t NextTagNear(std::size_t from) const {
        const std::size_t end = std::min(from + 4, content_.size());
        while (from < end && content_[from] != '<') {
            ++from;
        }
        return from < end ? from : NextTag(from);
    }
    bool StartsAt(std::size_t at, std::string_view mark) const {
        return content_.size() - at >= mark.size() &&
               std::memcmp(content_.data() + at, mark.data(), mark.size()) == 0;
    }
    // As much of the content of an element as is looked at.
    std::string_view Shown(std::size_t from, std::size_t to) const {
        return {content_.data() + from, std::min(to - from, kElementLimit)};
    }

    std::string_view content_;
    std::size_t entryEnd_ = 0;  // that was found last; kNone: there is none any more
    StatementLibrary& library_;
};

void Parser::ReadSections(std::size_t body) {
    std::size_t at = content_.find(kSectionStart, body);
    for (std::size_t section = 0; section < StatementLibrary::kSections && at != kNone; ++section) {
        const std::size_t title = at + kSectionStart.size();
        const std::size_t end = content_.find(kSectionEnd, title);
        if (end == kNone) {
            return;
        }
        library_.SetTitle(section, Shown(title, end));
        at = ReadEntries(section, end + kSectionEnd.size());
    }
}

// Returns where the next section begins.
std::size_t Parser::ReadEntries(std::size_t section, std::size_t at) {
    std::size_t entry = 0;
    for (at = NextTagNear(at); at != kNone && !StartsAt(at, kSectionStart); at = NextTagNear(at)) {
        if (entry == StatementLibrary::kEntries || entryEnd_ == kNone || !StartsAt(at, kEntryStart)) {
            ++at;
            continue;
        }
        const std::size_t content = at + kEntryStart.size();
        const std::size_t tag = NextTag(content);
        FindEntryEnd(content, tag);
        if (entryEnd_ == kNone) {
            continue;
        }
        StoreEntry(section, entry++, Shown(content, entryEnd_));
        // A statement that was not closed in time runs over titles, which are sections all the same.
        const std::size_t inner =
            tag < entryEnd_ ? content_.substr(0, entryEnd_).find(kSectionStart, tag) : kNone;
        at = inner != kNone ? inner : entryEnd_ + kEntryEnd.size();
    }
    return at;
}

// The next tag is the end, but in a damaged file; an end that is far away is looked for once.
void Parser::FindEntryEnd(std::size_t content, std::size_t tag) {
    if (tag == kNone || StartsAt(tag, kEntryEnd)) {
        entryEnd_ = tag;
    } else if (entryEnd_ < content) {
        entryEnd_ = content_.find(kEntryEnd, tag);
    }
}

void Parser::StoreEntry(std::size_t section, std::size_t entry, std::string_view content) {
    const std::size_t mark = std::min(content.find('^'), content.size());
    std::string_view code = content.substr(mark, StatementLibrary::kCodeSize);
    code.remove_prefix(std::min<std::size_t>(code.size(), 1));
    library_.SetEntry(section, entry, content.substr(0, mark),
                      {code.begin(), std::find(code.begin(), code.end(), '^')});
}

}  // namespace

bool StatementReader::Load(ByteSource& file) {
    SetContent({});
    if (!file.LoadAll(nullptr)) {
        if (Log() != nullptr) {
            Log()->LOGOEMERROR(kInterpSource, kNoReadLine, "no read");
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
    if (const std::uint32_t body = FindBody(0); body != 0) {
        Parser(Content(), library).ReadSections(body);
    }
    SetContent({});
    return true;
}

}  // namespace kx
