#include "suite/kxdb/archive/catalogue.h"

#include <algorithm>
#include <array>

namespace kx::db {

namespace {

// By ArchiveOrder; a tie is settled the same way every time.
constexpr std::array kOrders{"time DESC, id DESC", "time, id", "name, time, id", "patient, time, id"};

// Beyond these the whole index is read at once.
constexpr std::int64_t kMostLaterSaves = 1000;

bool IsByTime(ArchiveOrder order) {
    return order == kArchiveNewestFirst || order == kArchiveOldestFirst;
}

}  // namespace

void Catalogue::Update(ArchiveFile& file, ArchiveOrder order) {
    const std::int64_t sequence = file.Sequence();
    const ArchiveOrder known = static_cast<std::size_t>(order) < kOrders.size() ? order : kArchiveNewestFirst;
    if (sequence == sequence_ && known == order_) {
        return;
    }
    const bool few = sequence_ >= 0 && sequence > sequence_ && sequence - sequence_ <= kMostLaterSaves;
    if (!few || known != order_ || !IsByTime(known) || !TakeLaterSaves(file)) {
        Read(file, known);
    }
    sequence_ = sequence;
}

// The columns id, time, state, type, words.
Catalogue::Row Catalogue::Take(const Statement& row) {
    const std::string_view words = row.TextView(4);
    const Row taken{row.Number(0),
                    row.Number(1),
                    static_cast<std::uint32_t>(words_.size()),
                    static_cast<std::uint32_t>(words.size()),
                    static_cast<std::uint8_t>(row.Number(2)),
                    static_cast<std::uint8_t>(row.Number(3))};
    words_ += words;
    return taken;
}

void Catalogue::Read(ArchiveFile& file, ArchiveOrder order) {
    sequence_ = -1;
    rows_.clear();
    words_.clear();
    Statement statement = file.Connection().Prepare(
        std::string("SELECT id, time, state, type, words FROM tests WHERE deleted = 0 ORDER BY ") +
        kOrders[order]);
    while (statement.Step()) {
        rows_.push_back(Take(statement));
    }
    order_ = order;
}

// False when the words have grown too much by rows that were saved again.
bool Catalogue::TakeLaterSaves(ArchiveFile& file) {
    constexpr std::size_t kMostWords = 1 << 28;
    if (words_.size() > kMostWords) {
        return false;
    }
    Statement statement = file.Connection().Prepare(
        "SELECT id, time, state, type, words, deleted FROM tests WHERE sequence > ?");
    statement.Bind(1, sequence_);
    const bool newestFirst = order_ == kArchiveNewestFirst;
    const auto precedes = [newestFirst](const Row& a, const Row& b) {
        const bool earlier = a.time != b.time ? a.time < b.time : a.id < b.id;
        return newestFirst ? !earlier : earlier;
    };
    while (statement.Step()) {
        const std::int64_t id = statement.Number(0);
        std::erase_if(rows_, [id](const Row& row) { return row.id == id; });
        if (statement.Number(5) == 0) {
            const Row row = Take(statement);
            rows_.insert(std::lower_bound(rows_.begin(), rows_.end(), row, precedes), row);
        }
    }
    return true;
}

}  // namespace kx::db
