// The lists of the archive: filters as SQL over the indexes, and the rows of one page.
#include <array>
#include <sstream>

#include "suite/kxdb/archive/archive.h"
#include "suite/kxdb/archive/folded_text.h"

namespace kx::db {

namespace {

struct Condition {
    std::string sql = " FROM tests WHERE deleted = 0";
    std::vector<std::string> words;

    void Bind(Statement& statement) const {
        for (std::size_t i = 0; i < words.size(); ++i) {
            statement.Bind(static_cast<int>(i) + 1, std::string_view(words[i]));
        }
    }
};

constexpr std::int64_t kDay = 1'000'000;  // of yyyymmddhhmmss

std::string DayOf(std::uint16_t year, std::uint16_t monthDay, int days) {
    return std::to_string((std::int64_t{year} * 10'000 + monthDay + days) * kDay);
}

std::string_view WordsOf(const ArchiveFilter& filter) {
    const std::string_view field(filter.words, sizeof filter.words);
    return field.substr(0, field.find('\0'));
}

Condition ConditionOf(const ArchiveFilter& filter) {
    Condition condition;
    if (filter.states != 0) {
        condition.sql += " AND (" + std::to_string(filter.states) + " >> state) & 1";
    }
    if (filter.testTypes != 0) {
        condition.sql += " AND (" + std::to_string(filter.testTypes) + " >> type) & 1";
    }
    if (filter.fromYear != 0) {
        condition.sql += " AND time >= " + DayOf(filter.fromYear, filter.fromMonthDay, 0);
    }
    if (filter.toYear != 0) {
        condition.sql += " AND time < " + DayOf(filter.toYear, filter.toMonthDay, 1);
    }
    std::istringstream words(Folded(WordsOf(filter)));
    for (std::string word; words >> word;) {
        condition.words.push_back(word);
        condition.sql += " AND instr(words, ?) > 0";
    }
    return condition;
}

// By ArchiveOrder; a tie is settled the same way in every page.
constexpr std::array kOrders{"time DESC, id DESC", "time, id", "name, time, id", "patient, time, id"};

}  // namespace

std::int64_t Archive::Count(const ArchiveFilter& filter) {
    const Condition condition = ConditionOf(filter);
    std::int64_t count = 0;
    Read([&](ArchiveFile& file) {
        Statement statement = file.Connection().Prepare("SELECT count(*)" + condition.sql);
        condition.Bind(statement);
        count = statement.Step() ? statement.Number(0) : 0;
    });
    return count;
}

std::vector<ListingRow> Archive::List(const ArchiveFilter& filter, ArchiveOrder order, std::int64_t first,
                                      std::int64_t capacity) {
    const Condition condition = ConditionOf(filter);
    const auto index = static_cast<std::size_t>(order) < kOrders.size() ? static_cast<std::size_t>(order) : 0;
    const std::string sql = "SELECT id" + condition.sql + " ORDER BY " + kOrders[index] + " LIMIT " +
                            std::to_string(capacity) + " OFFSET " + std::to_string(first);
    std::vector<ListingRow> rows;
    Read([&](ArchiveFile& file) {
        rows.clear();
        Statement statement = file.Connection().Prepare(sql);
        condition.Bind(statement);
        while (statement.Step()) {
            if (std::optional<ListingRow> row = file.FindListing(statement.Number(0))) {
                rows.push_back(std::move(*row));
            }
        }
    });
    return rows;
}

}  // namespace kx::db
