// The lists of the archive: filters as SQL over the indexes, and the rows of one page.
#include <algorithm>
#include <array>
#include <sstream>

#include "suite/kxdb/archive/archive.h"
#include "suite/kxdb/archive/folded_text.h"

namespace kx::db {

namespace {

constexpr std::int64_t kDay = 1'000'000;  // of yyyymmddhhmmss

std::string DayOf(std::uint16_t year, std::uint16_t monthDay, int days) {
    return std::to_string((std::int64_t{year} * 10'000 + monthDay + days) * kDay);
}

std::string_view WordsOf(const ArchiveFilter& filter) {
    const std::string_view field(filter.words, sizeof filter.words);
    return field.substr(0, field.find('\0'));
}

// By ArchiveOrder; a tie is settled the same way in every page.
constexpr std::array kOrders{"time DESC, id DESC", "time, id", "name, time, id", "patient, time, id"};

}  // namespace

bool Archive::Passes(const ArchiveFilter& filter, const Match& match) {
    return (filter.states == 0 || (filter.states >> match.state & 1) != 0) &&
           (filter.testTypes == 0 || (filter.testTypes >> match.type & 1) != 0);
}

// Lists and counts of one search differ by states and types alone while somebody types: the index is read
// once for all.
const std::vector<Archive::Match>& Archive::Matches(ArchiveFile& file, const ArchiveFilter& filter,
                                                    ArchiveOrder order) {
    const auto index = static_cast<std::size_t>(order) < kOrders.size() ? static_cast<std::size_t>(order) : 0;
    std::string sql = "SELECT id, state, type FROM tests WHERE deleted = 0";
    if (filter.fromYear != 0) {
        sql += " AND time >= " + DayOf(filter.fromYear, filter.fromMonthDay, 0);
    }
    if (filter.toYear != 0) {
        sql += " AND time < " + DayOf(filter.toYear, filter.toMonthDay, 1);
    }
    std::vector<std::string> words;
    std::istringstream text(Folded(WordsOf(filter)));
    for (std::string word; text >> word;) {
        words.push_back(word);
        sql += " AND instr(words, ?) > 0";
    }
    sql += std::string(" ORDER BY ") + kOrders[index];
    const std::int64_t sequence = file.Sequence();
    if (search_.sql == sql && search_.words == words && search_.sequence == sequence) {
        return search_.matches;
    }
    search_ = Search{{}, {}, -1, order, {}};
    Statement statement = file.Connection().Prepare(sql);
    for (std::size_t i = 0; i < words.size(); ++i) {
        statement.Bind(static_cast<int>(i) + 1, std::string_view(words[i]));
    }
    while (statement.Step()) {
        search_.matches.push_back({statement.Number(0), static_cast<std::uint8_t>(statement.Number(1)),
                                   static_cast<std::uint8_t>(statement.Number(2))});
    }
    search_.sql = std::move(sql);
    search_.words = std::move(words);
    search_.sequence = sequence;
    return search_.matches;
}

std::int64_t Archive::Count(const ArchiveFilter& filter) {
    std::int64_t count = 0;
    Read([&](ArchiveFile& file) {
        const std::vector<Match>& matches = Matches(file, filter, search_.order);
        count = std::count_if(matches.begin(), matches.end(),
                              [&](const Match& match) { return Passes(filter, match); });
    });
    return count;
}

std::vector<ListingRow> Archive::List(const ArchiveFilter& filter, ArchiveOrder order, std::int64_t first,
                                      std::int64_t capacity) {
    std::vector<ListingRow> rows;
    Read([&](ArchiveFile& file) {
        rows.clear();
        std::int64_t skip = first;
        for (const Match& match : Matches(file, filter, order)) {
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
