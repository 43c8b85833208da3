// The lists of the archive: filters over the catalogue, and the rows of one page.
#include <algorithm>
#include <limits>
#include <sstream>

#include "suite/kxdb/archive/archive.h"
#include "suite/kxdb/archive/folded_text.h"

namespace kx::db {

namespace {

constexpr std::int64_t kDay = 1'000'000;  // of yyyymmddhhmmss

// The limit of a day as a time.
std::int64_t DayOf(std::uint16_t year, std::uint16_t monthDay, int days) {
    return (std::int64_t{year} * 10'000 + monthDay + days) * kDay;
}

std::string_view WordsOf(const ArchiveFilter& filter) {
    const std::string_view field(filter.words, sizeof filter.words);
    return field.substr(0, field.find('\0'));
}

}  // namespace

bool Archive::Passes(const ArchiveFilter& filter, const Catalogue::Row& match) {
    return (filter.states == 0 || (filter.states >> match.state & 1) != 0) &&
           (filter.testTypes == 0 || (filter.testTypes >> match.type & 1) != 0);
}

// Lists and counts of one search differ by states and types alone while somebody types: the words are looked
// for once for all.
const std::vector<std::uint32_t>& Archive::Matches(ArchiveFile& file, const ArchiveFilter& filter,
                                                   ArchiveOrder order) {
    catalogue_.Update(file, order);
    Search search;
    std::istringstream text(Folded(WordsOf(filter)));
    for (std::string word; text >> word;) {
        search.words.push_back(word);
    }
    search.from = filter.fromYear != 0 ? DayOf(filter.fromYear, filter.fromMonthDay, 0) : 0;
    search.to = filter.toYear != 0 ? DayOf(filter.toYear, filter.toMonthDay, 1)
                                   : std::numeric_limits<std::int64_t>::max();
    search.sequence = catalogue_.Sequence();
    search.order = catalogue_.Order();
    if (search == search_) {
        return matches_;
    }
    matches_.clear();
    const std::vector<Catalogue::Row>& rows = catalogue_.Rows();
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const std::string_view words = catalogue_.Words(rows[i]);
        if (rows[i].time >= search.from && rows[i].time < search.to &&
            std::all_of(search.words.begin(), search.words.end(),
                        [words](const std::string& word) { return words.find(word) != words.npos; })) {
            matches_.push_back(static_cast<std::uint32_t>(i));
        }
    }
    search_ = std::move(search);
    return matches_;
}

std::int64_t Archive::Count(const ArchiveFilter& filter) {
    std::int64_t count = 0;
    Read([&](ArchiveFile& file) {
        const auto& matches = Matches(file, filter, catalogue_.Order());
        count = std::count_if(matches.begin(), matches.end(),
                              [&](std::uint32_t match) { return Passes(filter, catalogue_.Rows()[match]); });
    });
    return count;
}

std::vector<ListingRow> Archive::List(const ArchiveFilter& filter, ArchiveOrder order, std::int64_t first,
                                      std::int64_t capacity) {
    std::vector<ListingRow> rows;
    Read([&](ArchiveFile& file) {
        rows.clear();
        std::int64_t skip = first;
        for (const std::uint32_t place : Matches(file, filter, order)) {
            const Catalogue::Row& match = catalogue_.Rows()[place];
            if (static_cast<std::int64_t>(rows.size()) == capacity) {
                break;
            }
            if (!Passes(filter, match) || skip-- > 0) {
                continue;
            }
            if (std::optional<ListingRow> row = file.FindListing(match.id)) {
                rows.push_back(std::move(*row));
            }
        }
    });
    return rows;
}

}  // namespace kx::db
