// Dates and times as DICOM and HL7 write them.
#pragma once

#include <string_view>

#include "include/kxdialogs.h"

namespace kx::recording {

// Whether there was or will be such a day after the year 1800.
bool IsDate(int year, int month, int day);

// "YYYYMMDD" or "YYYY.MM.DD" into year, month and day. False, and nothing changed, for a text that is no
// date.
bool TakeDate(std::string_view text, KxDate& date);

// "HH", "HHMM", "HHMMSS" or "HH:MM:SS", with a fraction or without, into the time of the day. False, and
// nothing changed, for a text that is none.
bool TakeTime(std::string_view text, KxDateTime& time);

// "YYYYMMDD", with a time behind it or without; an offset from universal time ("+0100") is left aside: the
// time is the local one of the recording. False, and nothing changed, for a text that is no date.
bool TakeDateTime(std::string_view text, KxDateTime& time);

// A time of the text as milliseconds of its day, with all digits of its fraction; 0 for a date alone.
double MillisecondsOfDay(std::string_view dateTime);

}  // namespace kx::recording
