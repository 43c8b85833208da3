// The fields of the suite's report templates by name, as a person looks for them.
#pragma once

#include <string>
#include <vector>

namespace kxhost {

struct ReportField {
    int code;           // as lib/dbclient/summary_text.h knows it
    std::wstring name;  // Italian
};

// Every field, in order of its code.
const std::vector<ReportField>& ReportFields();

}  // namespace kxhost
