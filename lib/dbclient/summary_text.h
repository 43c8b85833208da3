// Any value of a test as text, by the field codes of the suite's report templates.
#pragma once

#include <cstddef>
#include <cstdint>

#include "lib/locale_formats.h"
#include "lib/measurement_text.h"
#include "lib/resource_text.h"

namespace kx {

struct TestRecord;

// What the caller knows and the record does not. Texts are Windows-1252, null is an empty one; each field
// takes of this what it needs.
struct SummaryRequest {
    SummaryRequest(const ResourceTexts& resources, const LocaleFormats& formats)
        : texts(resources), locale(formats) {}

    const ResourceTexts& texts;
    const LocaleFormats& locale;
    // The pick lists' string resources; 0: the record's own.
    std::uint32_t sexList = 0;
    std::uint32_t raceList = 0;
    std::uint32_t clinicalFlagLists[5] = {};

    // The strip or event that the text is for, ms from the start of the recording.
    std::int32_t timeMs = 0;
    int eventClass = 0;
    const char* eventText = nullptr;  // a text of the user's in place of the class name
    std::int32_t eventValue = 0;      // beats, percent, ms or an ST change, as the class has it
    std::int32_t eventHeartRate = 0;  // beats per minute, 0: not known

    // ST levels.
    AmplitudeUnit amplitudeUnit = AmplitudeUnit::kMillimetres;
    const char* amplitudeUnitName = "mm";
    std::int32_t stTimeMs = 80;

    // Stress tests.
    const char* milesPerHour = "mph";
    const char* kilometresPerHour = "km/h";
    const char* revolutionsPerMinute = "RPM";
    const char* gradeName = "";
    const char* watts = "W";
    const char* missingValue = "...";
};

// Writes the text of a field and returns whether the code is known. The buffer is emptied first and always
// terminated; a text is cut at size - 1 characters. False, and nothing written, without a buffer. The
// families are asked in a fixed order: physician and site, patient, report, Holter heart rates, ABPM, stress
// test, Holter summary, spirometry, then the measurements of the episode at the time.
//
// Sub-records are read where they are understood (sub_records.h); the values of others are not given.
bool FieldText(const TestRecord& test, int code, char* buffer, std::size_t size,
               const SummaryRequest& request);

// Copies a text and puts the patient in the place of {%1} first name, {%2} last name, {%5} "the", "his" or
// "her", {%11} "The patient", "He" or "She", and {%14} "Mr.", "Ms." or "The patient". Other numbers are
// written back, without zeros in front; digits without their '}' become "*"; what does not fit is left out.
// The output is always terminated. False without a text or an output.
bool ExpandPlaceholders(const TestRecord& test, const char* text, char* output, std::size_t size);

}  // namespace kx
