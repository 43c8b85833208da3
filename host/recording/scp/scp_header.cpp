#include "host/recording/scp/scp_header.h"

#include <string>

#include "host/recording/byte_reader.h"
#include "host/recording/calendar_text.h"
#include "host/recording/record_text.h"

namespace kx::recording {

namespace {

using Bytes = std::span<const std::uint8_t>;

enum Tag : unsigned {
    kLastName = 0,
    kFirstName = 1,
    kPatientId = 2,
    kSecondLastName = 3,
    kAge = 4,
    kBirthDate = 5,
    kSex = 8,
    kAcquiringDevice = 14,
    kDate = 25,
    kTime = 26,
    kBaselineFilter = 27,
    kLowPass = 28,
    kFilters = 29,
    kEnd = 255,
};

std::string Text(Bytes value) {
    return TextOfField(AsText(value));
}

void TakeAge(Bytes value, Patient& patient) {
    constexpr int kDays[] = {0, 365, 30, 7, 1, 0};  // unit: not said, years, months, weeks, days, hours
    constexpr int kOldest = 150 * 365;
    ByteReader reader(value, "the age");
    const int age = reader.U16();
    const unsigned unit = reader.U8();
    const int days = unit < std::size(kDays) ? age * kDays[unit] : 0;
    // The format gives no age as 0 of no unit.
    if (days > 0 && days <= kOldest) {
        patient.ageDays = days;
    }
}

bool ReadDate(Bytes value, KxDate& date) {
    ByteReader reader(value, "a date");
    const int year = reader.U16(), month = reader.U8(), day = reader.U8();
    if (!IsDate(year, month, day)) {
        return false;
    }
    date = {static_cast<std::int16_t>(year), static_cast<std::uint8_t>(day),
            static_cast<std::uint8_t>(month)};
    return true;
}

void ReadTime(Bytes value, KxDateTime& time) {
    ByteReader reader(value, "a time");
    const unsigned hour = reader.U8(), minute = reader.U8(), second = reader.U8();
    if (hour < 24 && minute < 60 && second < 60) {
        time.hour = static_cast<std::uint8_t>(hour);
        time.minute = static_cast<std::uint8_t>(minute);
        time.second = static_cast<std::uint8_t>(second);
    }
}

// Fields of fixed length, then texts with a zero behind each: the analysing program's revision, the serial
// number, the system's and the format's software, the maker. Cut devices keep what is there.
void TakeDevice(Bytes value, Device& device) {
    constexpr std::size_t kModel = 8, kModelLength = 6, kLength = 35;
    if (value.size() < kModel + kModelLength) {
        return;
    }
    const std::string model = Text(value.subspan(kModel, kModelLength));
    std::string texts[5];
    // The length of the first text stands before it, with some a byte later.
    const std::size_t first = value.size() > kLength && value[kLength] == 0 ? kLength + 2 : kLength + 1;
    std::string_view rest = value.size() > first ? AsText(value.subspan(first)) : std::string_view();
    for (std::string& text : texts) {
        const std::size_t end = std::min(rest.find('\0'), rest.size());
        text = TextOfField(rest.substr(0, end));
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    const std::string& maker = texts[4];
    device.name = maker.empty() || model.empty() ? maker + model : maker + " " + model;
    device.serial = texts[1];
    device.revision = texts[2].empty() ? texts[0] : texts[2];
}

void TakeFilters(unsigned bits, Filters& filters) {
    filters.mainsHz = (bits & 1u) != 0 ? 60 : (bits & 2u) != 0 ? 50 : 0;
    filters.artifact = filters.artifact || (bits & 4u) != 0;
    filters.baseline = filters.baseline || (bits & 8u) != 0;
}

void TakeDay(Bytes value, KxDateTime& time) {
    KxDate date{};
    if (ReadDate(value, date)) {
        time.year = date.year;
        time.month = date.month;
        time.day = date.day;
    }
}

struct LastNames {
    std::string last, secondLast;
};

void TakeTag(unsigned tag, Bytes value, Recording& recording, LastNames& names) {
    Patient& patient = recording.patient;
    switch (tag) {
        case kLastName:
            names.last = Text(value);
            break;
        case kSecondLastName:
            names.secondLast = Text(value);
            break;
        case kFirstName:
            patient.firstName = Text(value);
            break;
        case kPatientId:
            patient.id = Text(value);
            break;
        case kAge:
            TakeAge(value, patient);
            break;
        case kBirthDate:
            ReadDate(value, patient.birthDate);
            break;
        case kSex:
            patient.sex = value[0] == 1 ? Sex::kMale : value[0] == 2 ? Sex::kFemale : Sex::kUnknown;
            break;
        case kAcquiringDevice:
            TakeDevice(value, recording.device);
            break;
        case kDate:
            TakeDay(value, recording.acquisitionTime);
            break;
        case kTime:
            ReadTime(value, recording.acquisitionTime);
            break;
        case kBaselineFilter:
            // In hundredths of a hertz.
            recording.filters.TakeLimits(ByteReader(value, "a filter").U16() / 100.0, 0, 0);
            break;
        case kLowPass:
            recording.filters.TakeLimits(0, ByteReader(value, "a filter").U16(), 0);
            break;
        case kFilters:
            TakeFilters(value[0], recording.filters);
            break;
        default:
            break;
    }
}

}  // namespace

void ReadScpHeader(Bytes section, Recording& recording) {
    constexpr std::size_t kTagHead = 3;
    ByteReader reader(section, "section 1");
    LastNames names;
    // What is shorter fills the section up.
    while (reader.Left() >= kTagHead) {
        const unsigned tag = reader.U8();
        if (tag == kEnd) {
            break;
        }
        const Bytes value = reader.Take(reader.U16());
        if (value.empty()) {
            continue;
        }
        try {
            TakeTag(tag, value, recording, names);
        } catch (const ReadFailure&) {
            // A value shorter than its field says nothing of the patient.
        }
    }
    const bool both = !names.last.empty() && !names.secondLast.empty();
    recording.patient.lastName = names.last + (both ? " " : "") + names.secondLast;
    // A time without a date is none.
    if (recording.acquisitionTime.year == 0) {
        recording.acquisitionTime = {};
    }
}

}  // namespace kx::recording
