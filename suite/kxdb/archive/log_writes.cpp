#include "suite/kxdb/archive/log_writes.h"

#include <algorithm>
#include <new>

namespace kx::db {

namespace {

// https://www.sqlite.org/fileformat2.html#walformat
constexpr int kFrameHeaderBytes = 24;
constexpr int kPagesAfterCommit = 4;  // four bytes, zero in a frame that does not commit
constexpr std::size_t kMostWaiting = std::size_t{1} << 20;
constexpr std::size_t kLargestWrite = 0x1F000;  // SQLite's layer for Unix reckons with 17 bits of a size

}  // namespace

int LogWrites::Write(const void* bytes, int size, sqlite3_int64 offset) {
    const auto* first = static_cast<const unsigned char*>(bytes);
    const bool isHeader = size == kFrameHeaderBytes;
    if (isHeader) {
        commits_ = std::any_of(first + kPagesAfterCommit, first + kPagesAfterCommit + 4,
                               [](unsigned char byte) { return byte != 0; });
    }
    const auto waiting = static_cast<sqlite3_int64>(waiting_.size());
    const bool follows = waiting > 0 && offset == begin_ + waiting;
    const int earlier = follows ? SQLITE_OK : WriteOut();
    if (earlier != SQLITE_OK) {
        return earlier;
    }
    if (!isHeader) {
        end_ = offset == 0 ? size : std::max(end_, offset + size);  // the log begins again at 0
    }
    if (!follows && (!isHeader || offset != end_)) {
        return file_->pMethods->xWrite(file_, bytes, size, offset);
    }
    if (!follows) {
        begin_ = offset;
    }
    try {
        waiting_.insert(waiting_.end(), first, first + size);
    } catch (const std::bad_alloc&) {
        Discard();
        return SQLITE_NOMEM;  // SQLite rolls back
    }
    const bool isComplete = !isHeader && (commits_ || waiting_.size() > kMostWaiting);
    return isComplete ? WriteOut() : SQLITE_OK;
}

int LogWrites::WriteOut() {
    int code = SQLITE_OK;
    const std::size_t size = waiting_.size();
    for (std::size_t done = 0; done < size && code == SQLITE_OK; done += kLargestWrite) {
        code = file_->pMethods->xWrite(file_, waiting_.data() + done,
                                       static_cast<int>(std::min(kLargestWrite, size - done)),
                                       begin_ + static_cast<sqlite3_int64>(done));
    }
    waiting_.clear();
    return code;
}

}  // namespace kx::db
