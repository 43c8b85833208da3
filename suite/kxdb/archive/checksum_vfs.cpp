#include "suite/kxdb/archive/checksum_vfs.h"

#include <sqlite3.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <new>

#include "suite/kxdb/archive/log_writes.h"

namespace kx::db {

namespace {

constexpr int kSmallestPage = 512;
constexpr int kLargestPage = 65536;
constexpr int kWriteLock = 0;  // its place among the locks of the shared memory

// A data base or its write-ahead log; the system's own file object follows it in memory.
struct File {
    sqlite3_file base{};
    LogWrites* log = nullptr;  // the log owns it, and the data base of the log knows it
    File* database = nullptr;  // of a log

    sqlite3_file* Real() { return reinterpret_cast<sqlite3_file*>(this + 1); }
};

File& Layer(sqlite3_file* file) {
    return *reinterpret_cast<File*>(file);
}

sqlite3_file* Real(sqlite3_file* file) {
    return Layer(file).Real();
}

const sqlite3_io_methods& Methods(sqlite3_file* file) {
    return *Real(file)->pMethods;
}

sqlite3_vfs* systemVfs = nullptr;  // what the layer stands on

bool IsPage(int size, sqlite3_int64 offset) {
    return size >= kSmallestPage && size <= kLargestPage && (size & (size - 1)) == 0 && offset % size == 0;
}

// Two sums, of the words and of the sums before each (J. G. Fletcher, 1982), begun with the page's place, so
// that a page in the wrong place is found as well.
std::array<std::uint32_t, 2> ChecksumOf(const unsigned char* page, int size, sqlite3_int64 offset) {
    std::array<std::uint32_t, 2> sums{static_cast<std::uint32_t>(offset / size) + 1, 1};
    for (int i = 0; i < size - kChecksumBytes; i += 4) {
        std::uint32_t word;
        std::memcpy(&word, page + i, sizeof word);
        sums[0] += word;
        sums[1] += sums[0];
    }
    return sums;
}

int Close(sqlite3_file* file) {
    return Methods(file).xClose(Real(file));
}

// A page that was never written reads as zeros.
int Read(sqlite3_file* file, void* buffer, int size, sqlite3_int64 offset) {
    const int code = Methods(file).xRead(Real(file), buffer, size, offset);
    if (code != SQLITE_OK || !IsPage(size, offset)) {
        return code;
    }
    const auto* page = static_cast<const unsigned char*>(buffer);
    const auto sums = ChecksumOf(page, size, offset);
    if (std::memcmp(page + size - kChecksumBytes, sums.data(), kChecksumBytes) == 0 ||
        std::all_of(page, page + size, [](unsigned char byte) { return byte == 0; })) {
        return SQLITE_OK;
    }
    return SQLITE_IOERR_DATA;
}

// The bytes kept free belong to this layer: SQLite does not look at them.
int Write(sqlite3_file* file, const void* buffer, int size, sqlite3_int64 offset) {
    if (!IsPage(size, offset)) {
        return Methods(file).xWrite(Real(file), buffer, size, offset);
    }
    const auto sums = ChecksumOf(static_cast<const unsigned char*>(buffer), size, offset);
    static thread_local std::array<unsigned char, kLargestPage> page;
    std::memcpy(page.data(), buffer, static_cast<std::size_t>(size - kChecksumBytes));
    std::memcpy(page.data() + size - kChecksumBytes, sums.data(), kChecksumBytes);
    return Methods(file).xWrite(Real(file), page.data(), size, offset);
}

int Truncate(sqlite3_file* file, sqlite3_int64 size) {
    return Methods(file).xTruncate(Real(file), size);
}
int Sync(sqlite3_file* file, int flags) {
    return Methods(file).xSync(Real(file), flags);
}
int FileSize(sqlite3_file* file, sqlite3_int64* size) {
    return Methods(file).xFileSize(Real(file), size);
}
int Lock(sqlite3_file* file, int level) {
    return Methods(file).xLock(Real(file), level);
}
int Unlock(sqlite3_file* file, int level) {
    return Methods(file).xUnlock(Real(file), level);
}
int CheckReservedLock(sqlite3_file* file, int* held) {
    return Methods(file).xCheckReservedLock(Real(file), held);
}
int FileControl(sqlite3_file* file, int operation, void* argument) {
    return Methods(file).xFileControl(Real(file), operation, argument);
}
int SectorSize(sqlite3_file* file) {
    return Methods(file).xSectorSize(Real(file));
}
int DeviceCharacteristics(sqlite3_file* file) {
    return Methods(file).xDeviceCharacteristics(Real(file));
}
int ShmMap(sqlite3_file* file, int region, int size, int extend, void volatile** memory) {
    return Methods(file).xShmMap(Real(file), region, size, extend, memory);
}
int ShmLock(sqlite3_file* file, int offset, int count, int flags) {
    constexpr int kGivesWay = SQLITE_SHM_UNLOCK | SQLITE_SHM_EXCLUSIVE;
    if (flags == kGivesWay && offset == kWriteLock && Layer(file).log != nullptr) {
        Layer(file).log->Discard();  // nothing waits behind a commit
    }
    return Methods(file).xShmLock(Real(file), offset, count, flags);
}
void ShmBarrier(sqlite3_file* file) {
    Methods(file).xShmBarrier(Real(file));
}
int ShmUnmap(sqlite3_file* file, int remove) {
    return Methods(file).xShmUnmap(Real(file), remove);
}

// Version 2: the shared memory of the log, but no mapping of the file into memory, which would pass this
// layer by.
constexpr sqlite3_io_methods kMethods = {2,
                                         Close,
                                         Read,
                                         Write,
                                         Truncate,
                                         Sync,
                                         FileSize,
                                         Lock,
                                         Unlock,
                                         CheckReservedLock,
                                         FileControl,
                                         SectorSize,
                                         DeviceCharacteristics,
                                         ShmMap,
                                         ShmLock,
                                         ShmBarrier,
                                         ShmUnmap,
                                         nullptr,
                                         nullptr};

int CloseLog(sqlite3_file* file) {
    File& log = Layer(file);
    log.database->log = nullptr;
    delete log.log;
    return Close(file);
}

int WriteLog(sqlite3_file* file, const void* buffer, int size, sqlite3_int64 offset) {
    return Layer(file).log->Write(buffer, size, offset);
}

// What waits is a part of the file for whoever asks about it.
int ReadLog(sqlite3_file* file, void* buffer, int size, sqlite3_int64 offset) {
    const int code = Layer(file).log->WriteOut();
    return code != SQLITE_OK ? code : Methods(file).xRead(Real(file), buffer, size, offset);
}
int TruncateLog(sqlite3_file* file, sqlite3_int64 size) {
    const int code = Layer(file).log->WriteOut();
    return code != SQLITE_OK ? code : Truncate(file, size);
}
int SyncLog(sqlite3_file* file, int flags) {
    const int code = Layer(file).log->WriteOut();
    return code != SQLITE_OK ? code : Sync(file, flags);
}
int SizeOfLog(sqlite3_file* file, sqlite3_int64* size) {
    const int code = Layer(file).log->WriteOut();
    return code != SQLITE_OK ? code : FileSize(file, size);
}

constexpr sqlite3_io_methods kLogMethods = {
    1,       CloseLog,          ReadLog,     WriteLog,   TruncateLog,           SyncLog, SizeOfLog, Lock,
    Unlock,  CheckReservedLock, FileControl, SectorSize, DeviceCharacteristics, nullptr, nullptr,   nullptr,
    nullptr, nullptr,           nullptr};

// The log of a data base that this layer has opened.
int OpenLog(sqlite3_file* opened, sqlite3_filename name) {
    File& log = Layer(opened);
    log.log = new (std::nothrow) LogWrites(log.Real());
    if (log.log == nullptr) {
        Methods(opened).xClose(log.Real());
        return SQLITE_NOMEM;
    }
    log.database = &Layer(sqlite3_database_file_object(name));
    log.database->log = log.log;
    opened->pMethods = &kLogMethods;
    return SQLITE_OK;
}

int Open(sqlite3_vfs*, sqlite3_filename name, sqlite3_file* file, int flags, int* given) {
    const bool isLog = (flags & SQLITE_OPEN_WAL) != 0;
    if (!isLog && (flags & SQLITE_OPEN_MAIN_DB) == 0) {
        return systemVfs->xOpen(systemVfs, name, file, flags, given);
    }
    new (file) File;
    const int code = systemVfs->xOpen(systemVfs, name, Real(file), flags, given);
    if (code == SQLITE_OK && isLog) {
        return OpenLog(file, name);
    }
    if (code == SQLITE_OK) {
        file->pMethods = &kMethods;
    } else if (Real(file)->pMethods != nullptr) {
        Methods(file).xClose(Real(file));
    }
    return code;
}

}  // namespace

bool RegisterChecksumVfs() {
    static sqlite3_vfs layer;
    if (systemVfs == nullptr) {
        systemVfs = sqlite3_vfs_find(nullptr);
        if (systemVfs == nullptr) {
            return false;
        }
        // All but the opening is the system's.
        layer = *systemVfs;
        layer.pNext = nullptr;
        layer.zName = kChecksumVfs;
        layer.szOsFile = static_cast<int>(sizeof(File)) + systemVfs->szOsFile;
        layer.xOpen = Open;
    }
    return sqlite3_vfs_register(&layer, 0) == SQLITE_OK;
}

}  // namespace kx::db
