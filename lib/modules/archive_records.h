// The records in which the suite's data base takes and gives tests. Portable.
#pragma once

#include <cstdint>

namespace kx {

// What TEST_ADD, TEST_UPDATE, TEST_DELETE and TEST_FETCH answer.
enum ArchiveAnswer : std::uint32_t {
    kArchiveNotDone = 0,  // ArchivedTest::problem says why; the archive is as it was
    kArchiveDone = 1,
    kArchiveChanged =
        2,  // somebody has saved since: ArchivedTest::revision and savedBy say what stands there now
    kArchiveAbsent = 3,    // there is no such test, or no longer
    kArchiveTooLarge = 4,  // blockCapacity is too small: blockSize says what is needed
};

// One test on its way into the archive or out of it; 1144 bytes. Texts are zero-terminated.
struct ArchivedTest {
    std::uint32_t size;  // of this record
    std::uint32_t id;    // from 1; TEST_ADD sets it
    std::uint32_t
        revision;  // counts the saves of a test from 1; TEST_UPDATE: the one that the caller fetched
    std::uint32_t blockSize;      // of the test (lib/dbclient/test_block.h); TEST_FETCH sets it
    std::uint32_t blockCapacity;  // TEST_FETCH: what `block` holds
    void* block;                  // the caller's; TEST_FETCH writes, the others read
    char source[512];  // where the recording came from: a path or a name, UTF-8; kept from the first save
    char savedBy[32];  // who saves; TEST_FETCH and kArchiveChanged: who did last, Windows-1252
    std::uint8_t savedAt[8];  // KxDateTime of the last save; set by every call
    char problem[568];        // one sentence in Italian, Windows-1252, when the answer is kArchiveNotDone
};
static_assert(sizeof(void*) != 4 || sizeof(ArchivedTest) == 1144);

enum ArchiveOrder : std::uint32_t {
    kArchiveNewestFirst = 0,
    kArchiveOldestFirst = 1,
    kArchiveByName = 2,
    kArchiveById = 3,
};

// Which tests TEST_LIST lists; all of them for a null filter. 84 bytes.
struct ArchiveFilter {
    std::uint32_t size;  // of this record
    // Words, each of which must stand in the test's name, patient id, date (2026-11-25, 25/11/2026) or state
    // (originale, riletto, confermato), in any case and without regard to accents. Windows-1252.
    char words[64];
    std::uint32_t states;     // bit 0 original, 1 overread, 2 confirmed, 3 reviewed outside; 0: every state
    std::uint32_t testTypes;  // bit n: KX_TEST type n; 0: every type
    std::uint16_t fromYear, fromMonthDay, toYear,
        toMonthDay;  // day of the test, month * 100 + day; year 0: no limit
};
static_assert(sizeof(ArchiveFilter) == 84);

// TEST_LIST gives KxTestListEntry records whose first reserved word holds the test's id and whose second its
// revision.

}  // namespace kx
