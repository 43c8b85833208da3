// A file that is replaced as a whole or not at all.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "lib/byte_stream.h"

namespace kx {

// Collects what is written in memory. Commit() writes it into a new file in the same directory and then
// renames that over the old one, so that a full disk, a lost network or a crash half-way never costs the old
// content. Without Commit() nothing changes on the disk.
class ReplacingFile : public ByteSink {
  public:
    // path: in the system's code page, or in UTF-16 for names that it does not have.
    explicit ReplacingFile(const char* path);
    explicit ReplacingFile(std::wstring path) : path_(std::move(path)) {}
    ReplacingFile(const ReplacingFile&) = delete;
    ReplacingFile& operator=(const ReplacingFile&) = delete;
    virtual ~ReplacingFile() = default;

    // Starts anew with an empty content.
    bool CreateAlways(Reporter* log) override;
    bool Write(const void* bytes, std::uint32_t count) override;

    // True when the file at the path has what was written and nothing else. After a failure the old file is
    // as it was, or there is still none, and no other file is left; a read-only file and a directory are no
    // file to replace.
    bool Commit();

  protected:
    // Writes the bytes into the new file and through to the disk. Apart so that a test can have it fail
    // half-way.
    virtual bool WriteThrough(void* file, const char* bytes, std::uint32_t count);

  private:
    std::wstring path_;
    std::vector<char> bytes_;
};

}  // namespace kx
