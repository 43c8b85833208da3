#include "lib/dbclient/test_list_entry.h"

#include "lib/dbclient/test_record.h"
#include "lib/text_field.h"

namespace kx {

namespace {

// A time down to its seconds, in an order that can be compared.
std::int64_t ToSeconds(const KxDateTime& time) {
    std::int64_t value = time.year;
    for (const std::uint8_t part : {time.month, time.day, time.hour, time.minute, time.second}) {
        value = value * 256 + part;
    }
    return value;
}

std::uint32_t StateFlagsOf(const TestRecord& test) {
    if (test.IsConfirmed()) {
        return kListedConfirmed;
    }
    if (test.IsReviewedOutside()) {
        return kListedReviewedOutside;
    }
    return test.IsOverread() ? std::uint32_t{kListedOverread} : 0;
}

}  // namespace

TestListEntry::TestListEntry(TestRecord& test) : TestListEntry() {
    value4 = test.value4;
    acquisitionTime = test.acquisitionTime;
    CopyField(test.text6570, text6570, sizeof text6570);
    lastChangeTime = test.LastChangeTime();
    test.PatientId(patientId, sizeof patientId);
    test.SortName(sortName, sizeof sortName);
    stateFlags = StateFlagsOf(test);
    testType = test.testType;
}

void TestListEntry::SetStateFlags(const char* text) {
    const bool digit = text != nullptr && text[0] >= '1' && text[0] <= '8';
    stateFlags = digit ? static_cast<std::uint32_t>(text[0] - '0') : 0;
}

bool TestListEntry::SameTest(const KxTestListEntry* other) const {
    return other != nullptr && FieldView(patientId) == FieldView(other->patientId) &&
           ToSeconds(acquisitionTime) == ToSeconds(other->acquisitionTime);
}

bool TestListEntry::IsNewerThan(const KxTestListEntry* other) const {
    return other != nullptr && ToSeconds(lastChangeTime) > ToSeconds(other->lastChangeTime);
}

bool TestListEntry::AcquisitionText(char* buffer, std::size_t size, const LocaleFormats& locale) const {
    return DateTime(acquisitionTime).DateAndTime(buffer, size, locale);
}

void TestListEntry::SortName(char* buffer, std::size_t size) const {
    CopyField(sortName, buffer, size);
}

}  // namespace kx
