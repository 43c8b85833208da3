// A layer under SQLite that puts a checksum on every page of a data base and verifies it when the page is
// read.
//
// SQLite's own layer for this also rewrites pages on their way into the write-ahead log, whose frames then
// fail their own check: what a killed program had committed is gone. Here no byte of the log is changed (its
// frames go to the file together, log_writes.h), and a page gets its checksum when it is written into the
// data base itself.
#pragma once

namespace kx::db {

// At the end of each page; a data base keeps them free when it is made (SQLITE_FCNTL_RESERVE_BYTES).
inline constexpr int kChecksumBytes = 8;
inline constexpr char kChecksumVfs[] = "kxchecksum";

// Makes the layer known to SQLite; once is enough. False when SQLite has no layer to stand on.
bool RegisterChecksumVfs();

}  // namespace kx::db
