// How the test record's setters store a value and note that the test was changed. For its sources alone.
#pragma once

#include "lib/dbclient/record_text.h"
#include "lib/dbclient/test_record.h"

namespace kx {

template <class Field, class Value>
void SetValue(KxTestRecord& test, Field& field, Value value) {
    const auto stored = static_cast<Field>(value);
    if (field != stored) {
        field = stored;
        test.modified = 1;
    }
}

template <std::size_t N>
void SetText(KxTestRecord& test, char (&field)[N], const char* text) {
    if (StoreField(field, text)) {
        test.modified = 1;
    }
}

}  // namespace kx
