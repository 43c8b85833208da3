// SQLite's handles as objects, its failures as exceptions.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

struct sqlite3;
struct sqlite3_stmt;

namespace kx::db {

class SqliteError : public std::runtime_error {
  public:
    SqliteError(int extendedCode, const std::string& text) : std::runtime_error(text), code_(extendedCode) {}
    // The file itself is damaged: cut, overwritten, or a page that does not match its checksum.
    bool IsDamage() const;
    bool IsFull() const;  // no room on the disk
    bool IsBusy() const;  // another program holds the file
    int Code() const { return code_; }

  private:
    int code_;
};

class Statement {
  public:
    // Prepared; a statement outlives no Database.
    Statement(sqlite3* database, std::string_view sql);

    // Parameters from 1 on. A text or block is copied.
    Statement& Bind(int index, std::int64_t value);
    Statement& Bind(int index, std::string_view text);
    Statement& BindBlock(int index, std::string_view bytes);
    // True while there is a row.
    bool Step();
    void Run();  // to its end
    void Reset();

    std::int64_t Number(int column) const;
    std::string Text(int column) const;
    // These are valid until the next step.
    std::string_view TextView(int column) const;
    std::string_view Block(int column) const;

  private:
    struct Finalizer {
        void operator()(sqlite3_stmt* statement) const;
    };
    void Check(int code) const;
    std::unique_ptr<sqlite3_stmt, Finalizer> statement_;
};

class Database {
  public:
    // Opens the file, made when it is not there; every page carries a checksum.
    // durable: a commit is on the disk when it returns; else it survives a killed program, but not the loss
    // of power.
    explicit Database(const std::filesystem::path& file, bool durable = true);

    void Execute(const char* sql);
    Statement Prepare(std::string_view sql) { return {handle_.get(), sql}; }
    std::int64_t Number(std::string_view sql);  // the first column of the first row; 0 without one

  private:
    struct Closer {
        void operator()(sqlite3* handle) const;
    };
    std::unique_ptr<sqlite3, Closer> handle_;
};

// Rolls back unless committed.
class Transaction {
  public:
    // To write: takes the right to it at once, so that what is read in it still holds when it writes. To
    // read: everything as it stands at the first look.
    enum class Purpose : bool { kRead, kWrite };
    explicit Transaction(Database& database, Purpose purpose = Purpose::kWrite) : database_(database) {
        database_.Execute(purpose == Purpose::kWrite ? "BEGIN IMMEDIATE" : "BEGIN");
    }
    ~Transaction();
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;
    void Commit();

  private:
    Database& database_;
    bool open_ = true;
};

}  // namespace kx::db
