// The summary of one test for lists of tests.
#pragma once

#include <cstddef>
#include <cstdint>

#include "include/kxdialogs.h"
#include "lib/timestmp.h"

namespace kx {

struct TestRecord;

// KxTestListEntry.stateFlags
enum : std::uint32_t { kListedOverread = 1, kListedConfirmed = 2, kListedReviewedOutside = 4 };

// A KxTestListEntry with its operations; no data added. At 33 KB it belongs on the heap or in an array.
struct TestListEntry : KxTestListEntry {
    TestListEntry() : KxTestListEntry{} {}
    // Asks the record for its last change, which the record then keeps.
    explicit TestListEntry(TestRecord& test);

    // The digit of a text that begins with 1 to 8, else 0; null is an empty text.
    void SetStateFlags(const char* text);
    // The same patient ID and the same acquisition time to the second. False without another entry.
    bool SameTest(const KxTestListEntry* other) const;
    // Whether this test was changed later, to the second. False without another entry.
    bool IsNewerThan(const KxTestListEntry* other) const;
    // "short date, short time". False, and nothing written, when the buffer is too small.
    bool AcquisitionText(char* buffer, std::size_t size, const LocaleFormats& locale = UserLocale()) const;
    void SortName(char* buffer, std::size_t size) const;
};

static_assert(sizeof(TestListEntry) == sizeof(KxTestListEntry));

}  // namespace kx
