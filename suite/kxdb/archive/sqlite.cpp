#include "suite/kxdb/archive/sqlite.h"

#include <sqlite3.h>

#include "suite/kxdb/archive/checksum_vfs.h"

namespace kx::db {

namespace {

constexpr int kBusyMs = 3000;

// What the last call of the connection failed by; without one, there was no memory for it.
[[noreturn]] void Fail(sqlite3* handle) {
    throw SqliteError(sqlite3_extended_errcode(handle), sqlite3_errmsg(handle));
}

std::string Utf8(const std::filesystem::path& file) {
    const std::u8string text = file.u8string();
    return {text.begin(), text.end()};
}

}  // namespace

bool SqliteError::IsDamage() const {
    const int primary = code_ & 0xFF;
    return primary == SQLITE_CORRUPT || primary == SQLITE_NOTADB || code_ == SQLITE_IOERR_DATA ||
           code_ == SQLITE_IOERR_SHORT_READ || code_ == SQLITE_IOERR_CORRUPTFS;
}

bool SqliteError::IsFull() const {
    return (code_ & 0xFF) == SQLITE_FULL;
}

bool SqliteError::IsBusy() const {
    return (code_ & 0xFF) == SQLITE_BUSY || (code_ & 0xFF) == SQLITE_LOCKED;
}

Statement::Statement(sqlite3* database, std::string_view sql) {
    sqlite3_stmt* statement = nullptr;
    const int code =
        sqlite3_prepare_v2(database, sql.data(), static_cast<int>(sql.size()), &statement, nullptr);
    statement_.reset(statement);
    if (code != SQLITE_OK) {
        Fail(database);
    }
}

void Statement::Finalizer::operator()(sqlite3_stmt* statement) const {
    sqlite3_finalize(statement);
}

void Statement::Check(int code) const {
    if (code != SQLITE_OK) {
        Fail(sqlite3_db_handle(statement_.get()));
    }
}

Statement& Statement::Bind(int index, std::int64_t value) {
    Check(sqlite3_bind_int64(statement_.get(), index, value));
    return *this;
}

Statement& Statement::Bind(int index, std::string_view text) {
    Check(sqlite3_bind_text64(statement_.get(), index, text.data(), text.size(), SQLITE_TRANSIENT,
                              SQLITE_UTF8));
    return *this;
}

Statement& Statement::BindBlock(int index, std::string_view bytes) {
    Check(sqlite3_bind_blob64(statement_.get(), index, bytes.data(), bytes.size(), SQLITE_TRANSIENT));
    return *this;
}

bool Statement::Step() {
    const int code = sqlite3_step(statement_.get());
    if (code != SQLITE_ROW && code != SQLITE_DONE) {
        Fail(sqlite3_db_handle(statement_.get()));
    }
    return code == SQLITE_ROW;
}

void Statement::Run() {
    while (Step()) {
    }
    Reset();
}

void Statement::Reset() {
    sqlite3_reset(statement_.get());
}

std::int64_t Statement::Number(int column) const {
    return sqlite3_column_int64(statement_.get(), column);
}

std::string Statement::Text(int column) const {
    return std::string(TextView(column));
}

std::string_view Statement::TextView(int column) const {
    const auto* text = sqlite3_column_text(statement_.get(), column);
    const auto length = static_cast<std::size_t>(sqlite3_column_bytes(statement_.get(), column));
    return text != nullptr ? std::string_view(reinterpret_cast<const char*>(text), length)
                           : std::string_view();
}

std::string_view Statement::Block(int column) const {
    const void* bytes = sqlite3_column_blob(statement_.get(), column);
    const auto length = static_cast<std::size_t>(sqlite3_column_bytes(statement_.get(), column));
    return bytes != nullptr ? std::string_view(static_cast<const char*>(bytes), length) : std::string_view();
}

Database::Database(const std::filesystem::path& file, bool durable) {
    static const bool registered = RegisterChecksumVfs();
    if (!registered) {
        throw SqliteError(SQLITE_ERROR, "the checksum layer of the data base is not there");
    }
    sqlite3* handle = nullptr;
    const int code = sqlite3_open_v2(Utf8(file).c_str(), &handle, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE,
                                     kChecksumVfs);
    handle_.reset(handle);
    if (code != SQLITE_OK) {
        Fail(handle);
    }
    sqlite3_extended_result_codes(handle, 1);
    sqlite3_busy_timeout(handle, kBusyMs);
    int reserved = kChecksumBytes;
    sqlite3_file_control(handle, "main", SQLITE_FCNTL_RESERVE_BYTES, &reserved);
    // The log beside the file needs a local disk, which the user's folder of application data is.
    Execute("PRAGMA page_size = 8192; PRAGMA journal_mode = WAL;");
    Execute(durable ? "PRAGMA synchronous = FULL;" : "PRAGMA synchronous = NORMAL;");
}

void Database::Closer::operator()(sqlite3* handle) const {
    sqlite3_close(handle);
}

void Database::Execute(const char* sql) {
    const int code = sqlite3_exec(handle_.get(), sql, nullptr, nullptr, nullptr);
    if (code != SQLITE_OK) {
        Fail(handle_.get());
    }
}

std::int64_t Database::Number(std::string_view sql) {
    Statement statement = Prepare(sql);
    return statement.Step() ? statement.Number(0) : 0;
}

Transaction::~Transaction() {
    if (open_) {
        try {
            database_.Execute("ROLLBACK");
        } catch (const SqliteError&) {
            // SQLite has rolled back itself.
        }
    }
}

void Transaction::Commit() {
    database_.Execute("COMMIT");
    open_ = false;
}

}  // namespace kx::db
