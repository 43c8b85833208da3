// What a commit appends to the write-ahead log, in one write to the file. SQLite hands over each frame in two
// pieces, its header and its page, and every write costs a way to the system and, where Windows programs run
// on another system, one more to its server: fifty ways for a save.
#pragma once

#include <sqlite3.h>

#include <vector>

namespace kx::db {

// Frames are held back until the one that commits is complete: it reports what writing all of them met. A
// write that is not the next frame of a commit passes straight through. For one connection, which alone may
// write while frames wait.
class LogWrites {
  public:
    // The log; it outlives this.
    explicit LogWrites(sqlite3_file* file) : file_(file) {}

    // SQLite's result codes.
    int Write(const void* bytes, int size, sqlite3_int64 offset);
    int WriteOut();
    // The frames that wait were rolled back, and another connection may write in their place.
    void Discard() { waiting_.clear(); }

  private:
    sqlite3_file* file_;
    std::vector<unsigned char> waiting_;
    sqlite3_int64 begin_ = 0;  // of what waits, in the file
    sqlite3_int64 end_ = -1;   // of the last frame of this log, where the next one is appended
    bool commits_ = false;     // what the last frame header said
};

}  // namespace kx::db
