// What lists and searches look in, kept in memory in the order of the list: a search while somebody types
// then reads no file. A hundred thousand tests take about 12 MB.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "lib/modules/archive_records.h"
#include "suite/kxdb/archive/archive_file.h"

namespace kx::db {

class Catalogue {
  public:
    struct Row {
        std::int64_t id;
        std::int64_t time;  // yyyymmddhhmmss
        std::uint32_t wordsAt;
        std::uint32_t wordsLength;
        std::uint8_t state;
        std::uint8_t type;
    };

    // Brings it to what the file holds now, in that order. Throws SqliteError.
    void Update(ArchiveFile& file, ArchiveOrder order);

    const std::vector<Row>& Rows() const { return rows_; }
    std::string_view Words(const Row& row) const {
        return std::string_view(words_).substr(row.wordsAt, row.wordsLength);
    }
    // The file's number of the last save that is in here; -1 before the first update.
    std::int64_t Sequence() const { return sequence_; }
    ArchiveOrder Order() const { return order_; }

  private:
    Row Take(const Statement& row);
    void Read(ArchiveFile& file, ArchiveOrder order);
    bool TakeLaterSaves(ArchiveFile& file);

    std::vector<Row> rows_;
    std::string words_;  // of all rows; of those that were saved again also what they had before
    std::int64_t sequence_ = -1;
    ArchiveOrder order_ = kArchiveNewestFirst;
};

}  // namespace kx::db
