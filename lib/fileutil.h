// Files: naming, choosing, reading, writing and editing one (DataFile), and walking a folder (FileFinder).
//
// Paths and texts are Windows-1252. An operation reports its failure to the log it is given and to nobody
// when the log is null; it then returns false, 0 or null and the object keeps its name, so that it can be
// tried again.
#pragma once

#include <cstdint>
#include <memory>

#include "lib/byte_stream.h"
#include "lib/reporter.h"

// Declared as <windows.h> does, which the portable half is not to include.
struct HWND__;
struct _SYSTEMTIME;

namespace kx {

// A names buffer: one path, or what a dialog with multiple selection returns: the folder, a zero byte, each
// file name followed by a zero byte, and a final zero byte.
inline constexpr std::uint32_t kNamesSize = 32768;
inline constexpr std::uint32_t kComposedNameSize = 256;
inline constexpr std::uint32_t kDialogTextSize = 256;

// The file at `index` of a names buffer. A single name has index 0 only; so has a multiple selection of one
// file, for which the dialog returns its full path. Otherwise the result is folder\name, composed in
// `composed`. Null when there is no such file, and when the path would not fit: a shortened one would be
// another file's.
const char* FileNameAt(const char (&names)[kNamesSize], bool multiSelect, std::uint32_t index,
                       char (&composed)[kComposedNameSize]);

// Copies the line that starts at `offset` of content[0, length) into destination (maxLength bytes, always
// terminated) and returns the offset behind its line feed. The line ends at the line feed, or at the first
// carriage return before it; where no line feed lies within the maxLength - 1 bytes looked at, at the first
// carriage return. Returns -1 with those bytes copied when they hold neither, so also for a last line without
// an end; -1 with nothing written when offset is not below length, content or destination is null, or
// maxLength is not positive.
std::int32_t ReadLineAt(const char* content, std::uint32_t length, std::uint32_t offset, char* destination,
                        std::int32_t maxLength);

// Takes the bytes [from, to) out of content[0, length) and returns the new length.
// Expects from < to and to <= length.
std::uint32_t RemoveBytes(char* content, std::uint32_t length, std::uint32_t from, std::uint32_t to);

// Puts count bytes in at position and returns the new length. Expects position <= length and room for
// length + count bytes; bytes must not lie in content.
std::uint32_t InsertBytes(char* content, std::uint32_t length, std::uint32_t position, const char* bytes,
                          std::uint32_t count);

// Turns "description^pattern^description^pattern" into the zero-separated list that the file dialogs take,
// ended by two zero bytes. A text of more than kDialogTextSize - 2 characters is cut there. Null: an empty
// list.
void MakeDialogFilter(const char* filter, char (&list)[kDialogTextSize]);

class DataFile final : public ByteSink, public ByteSource {
  public:
    // No names, no content, no open file.
    DataFile();
    ~DataFile();
    DataFile(const DataFile&) = delete;
    DataFile& operator=(const DataFile&) = delete;

    // ---- naming

    // Closes any open file and takes the name. False, and no name is left, for a null name, for one of more
    // than 32766 characters, and when memory is short.
    bool SetName(const char* name);
    // See FileNameAt; null also while there are no names. Valid until the next call or the next name.
    const char* FileName(std::uint32_t index);

    // ---- opening and closing; each closes what is open first

    // Creates the file for writing, shared for reading and writing. An existing one is replaced with
    // overwrite and makes the call fail without. The content in memory stays.
    bool Create(bool overwrite, Reporter* log);
    bool CreateAlways(Reporter* log) override { return Create(true, log); }
    // Length() is 0 afterwards; the content stays until the file is opened again.
    void Close();
    bool IsOpen() const;

    // ---- reading and writing

    // Frees the content, opens file `index` for reading and reads its first `limit` bytes (0: all) into
    // memory, with room for `limit` bytes. A longer file than the limit is reported and is no failure. The
    // file stays open.
    bool ReadAll(std::uint32_t index, std::uint32_t limit, Reporter* log);
    bool LoadAll(Reporter* log) override { return ReadAll(0, 0, log); }
    // Reads at the current position; returns the number of bytes read, 0 at the end and after a failure.
    std::uint32_t Read(std::uint32_t count, void* buffer, Reporter* log);
    // Writes at the current position; true when every byte was written. Without an open file it fails and the
    // thread's last error is 13 (invalid data).
    bool Write(const void* buffer, std::uint32_t count) override;

    // ---- the content in memory

    const char* Content() const override { return content_.get(); }
    std::uint32_t Length() const override { return length_; }

    // ---- the file as a whole

    // Closes and deletes file `index`.
    bool Delete(std::uint32_t index);

    // ---- what the suite's other programs do, and no pane of this library

    // Shows the open-file dialog over owner (may be null); the path and the file must exist. title,
    // initialDirectory, initialName and filter (description^pattern^...) may be null; they are cut at 255
    // characters, the name at 32766. True when the user chose; the names are then the choice and any open
    // file is closed. After a cancelled dialog everything is as before.
    bool ChooseOpen(HWND__* owner, const char* title, const char* initialDirectory, const char* initialName,
                    const char* filter, Reporter* log, bool multiSelect);
    // The same with the save-file dialog, for one name.
    bool ChooseSave(HWND__* owner, const char* title, const char* initialDirectory, const char* initialName,
                    const char* filter, Reporter* log);
    // Has the system make a new, empty temporary file in directory and takes its name. The file is the
    // caller's to delete.
    bool MakeTempName(const char* directory, const char* prefix);
    // The value of the environment variable TEMP; "\TEMP" when it is not set or does not fit. An empty text
    // when that does not fit either; nothing happens without a buffer.
    static void TempDirectory(char* buffer, std::uint32_t size);

    // Closes what is open and opens the existing file for reading, shared for reading only: a file that
    // somebody is writing is not read half-written. Frees the content; Length() is the file's size, as far as
    // it fits 32 bits.
    bool OpenRead(Reporter* log);
    // The same for reading and writing, not shared; a file that does not exist is created.
    bool OpenReadWrite(Reporter* log);
    // Moves to an absolute position, which may lie behind the end of the file.
    bool Seek(std::uint32_t position, Reporter* log);

    // Copies content[offset, offset + count). False, and nothing is copied, without content or destination,
    // and when the range leaves the content.
    bool CopyOut(void* destination, std::uint32_t offset, std::uint32_t count) const;
    // See ReadLineAt.
    std::int32_t ReadLine(std::uint32_t offset, char* destination, std::int32_t maxLength) const;
    // Takes content[from, to) out and writes the whole file that it was read from anew. False without
    // content, unless from < to <= Length(), and when the file could not be written: the content in memory is
    // then the edited one.
    bool DeleteRange(std::uint32_t from, std::uint32_t to);
    // Puts bytes into the content at position and writes the whole file anew. Needs room: a ReadAll with a
    // limit above Length() + count. False without content or bytes, for a count below 1 and a position behind
    // the content, and as DeleteRange when the file could not be written.
    bool InsertAt(std::uint32_t position, const void* bytes, std::int32_t count);

    // UTC; false without an open file.
    bool LastWriteTime(_SYSTEMTIME* systemTime) const;
    // Sets the times of creation, last access and last write to one UTC time. Needs a file open for writing.
    bool SetFileTimes(const _SYSTEMTIME& time);
    // Copies file `index` to target and replaces what is there. CopyTo needs an open file.
    bool CopyTo(std::uint32_t index, const char* target);
    bool CopyNamedTo(std::uint32_t index, const char* target);
    // Closes the file and moves it to target in place of what is there, also to another drive.
    bool MoveTo(std::uint32_t index, const char* target);
    // The read-only attribute of file 0; false also when there is no such file.
    bool IsReadOnly();
    bool ClearReadOnly();

  private:
    bool Choose(HWND__* owner, const char* title, const char* initialDirectory, const char* initialName,
                const char* filter, Reporter* log, bool save, bool multiSelect);
    bool CreateNamed(const char* name, bool overwrite, Reporter* log);
    bool Open(const char* name, bool readWrite, Reporter* log, std::uint64_t* size);
    bool ReadContent(const char* name, Reporter* log);
    bool Rewrite(std::uint32_t newLength);
    void FreeContent();

    std::unique_ptr<char[]> names_;    // kNamesSize bytes
    std::unique_ptr<char[]> content_;  // capacity_ bytes and one zero byte
    void* handle_;
    std::uint32_t capacity_ = 0;
    std::uint32_t length_ = 0;
    std::uint32_t contentIndex_ = 0;  // of the file that the content was read from
    bool multiSelect_ = false;
    char composedName_[kComposedNameSize] = {};
};

// Walks the entries of a folder that match a pattern such as "C:\data\*.htm", in the system's order, "." and
// ".." among them. A returned name has no folder; it lives in one buffer for all finders and is overwritten
// by the next call of any. No pane walks a folder: it is for the suite's other programs.
class FileFinder {
  public:
    FileFinder();
    ~FileFinder();
    FileFinder(const FileFinder&) = delete;
    FileFinder& operator=(const FileFinder&) = delete;

    // Starts a search and ends the one in progress. Null when nothing matches; isDirectory, if given, is then
    // left as it was.
    const char* First(const char* pattern, bool* isDirectory = nullptr);
    // Null at the end and without a search.
    const char* Next(bool* isDirectory = nullptr);
    void Close();

  private:
    void* search_;
};

}  // namespace kx
