// Where a document's bytes go to and come from, for code that knows no file system. On Windows both are a
// DataFile (lib/fileutil.h); tests use memory.
#pragma once

#include <cstdint>

#include "lib/reporter.h"

namespace kx {

class ByteSink {
  public:
    // Starts an empty output in place of what was there. False when that is impossible, which is reported to
    // log unless log is null.
    virtual bool CreateAlways(Reporter* log) = 0;
    // Appends count bytes. False when not all of them could be written; nothing is reported.
    virtual bool Write(const void* bytes, std::uint32_t count) = 0;

  protected:
    ByteSink() = default;
    ByteSink(const ByteSink&) = default;
    ByteSink& operator=(const ByteSink&) = default;
    ~ByteSink() = default;
};

class ByteSource {
  public:
    // Loads the whole input into memory. False when that is impossible, which is reported to log unless log
    // is null.
    virtual bool LoadAll(Reporter* log) = 0;
    // What was loaded, followed by one zero byte that Length() does not count; owned by the source and valid
    // until it is loaded again or closed. Null while nothing is loaded.
    virtual const char* Content() const = 0;
    virtual std::uint32_t Length() const = 0;

  protected:
    ByteSource() = default;
    ByteSource(const ByteSource&) = default;
    ByteSource& operator=(const ByteSource&) = default;
    ~ByteSource() = default;
};

}  // namespace kx
