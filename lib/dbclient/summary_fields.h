// How the families of summary fields are written down: one row a code. For the sources of the summary texts
// alone.
#pragma once

#include <cstddef>
#include <cstdio>
#include <span>

#include "lib/dbclient/summary_text.h"
#include "lib/dbclient/test_record.h"
#include "lib/text_field.h"

namespace kx {

// One text to be written: the buffer is not null, its size not 0, and it holds an empty text.
struct SummaryOutput {
    const TestRecord& test;
    const SummaryRequest& request;
    int code;
    char* buffer;
    std::size_t size;

    void Put(std::string_view text) const { CopyText(text, buffer, size); }
    void PutMissing() const { Put(request.missingValue != nullptr ? request.missingValue : ""); }
    template <class... Values>
    void Print(const char* format, Values... values) const {
        std::snprintf(buffer, size, format, values...);
    }
};

struct SummaryField {
    int code;
    void (*write)(const SummaryOutput& output);
};

// Writes the field when the family has the code.
inline bool RenderField(std::span<const SummaryField> fields, const SummaryOutput& output) {
    for (const SummaryField& field : fields) {
        if (field.code == output.code) {
            field.write(output);
            return true;
        }
    }
    return false;
}

// A text field of the record.
template <auto kField>
void PutText(const SummaryOutput& output) {
    CopyField(output.test.*kField, output.buffer, output.size);
}

// What a text operation of the record gives.
template <auto kGetter>
void PutGetter(const SummaryOutput& output) {
    (output.test.*kGetter)(output.buffer, output.size);
}

// A 32-bit value of the record.
template <auto kField>
void PutNumber(const SummaryOutput& output) {
    output.Print("%lu", static_cast<unsigned long>(output.test.*kField));
}

// The families. Each gives whether it knew the code.
bool RenderSiteField(const SummaryOutput& output);
bool RenderPatientField(const SummaryOutput& output);
bool RenderReportField(const SummaryOutput& output);
bool RenderHolterRateField(const SummaryOutput& output);
bool RenderPressureField(const SummaryOutput& output);
bool RenderStressField(const SummaryOutput& output);
bool RenderHolterSummaryField(const SummaryOutput& output);
bool RenderSpirometryField(const SummaryOutput& output);
bool RenderMeasurementField(const SummaryOutput& output);

// Two of the report fields.
void PutEventName(const SummaryOutput& output);
void PutEventHeartRate(const SummaryOutput& output);

// One of three words by the patient's sex.
const char* WordBySex(const TestRecord& test, const char* unknown, const char* male, const char* female);

}  // namespace kx
