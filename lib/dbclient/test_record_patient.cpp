// The patient of a test record: names, sex, age, weight and height as texts.
#include <algorithm>
#include <cstdio>
#include <cstring>
#include <iterator>
#include <limits>
#include <string_view>

#include "lib/dbclient/record_pick_list.h"
#include "lib/dbclient/test_record.h"
#include "lib/muldiv.h"
#include "lib/number_text.h"

namespace kx {

namespace {

constexpr std::int32_t kDaysPerMonth = 30;
constexpr std::int32_t kDaysPerYear = 365;
// Weights and heights below a pound or an inch are not given.
constexpr std::uint32_t kSmallestMeasure = 100;
// A pound is 0.453 kg, an inch 2.54 cm, and the record counts their hundredths.
constexpr std::int32_t kPoundsPerKilogram[] = {100000, 453};
constexpr std::int32_t kInchesPerCentimetre[] = {10000, 254};

constexpr std::size_t kNameWorkSize = 256;
constexpr char kNameSeparator = '^';

constexpr std::uint32_t kSexList = 913;
constexpr std::uint32_t kRaceList = 963;
constexpr std::uint32_t kClinicalFlagLists[] = {959, 960, 961, 962, 964};
constexpr int kClinicalFlags = 5;

// Joins the parts of a name; a part that does not fit with its separator ends the join.
class NameJoin {
  public:
    void Add(const char* part) {
        const std::string_view name = part != nullptr ? std::string_view(part) : std::string_view();
        if (full_ || length_ + name.size() + 1 >= kNameWorkSize) {
            full_ = true;
            return;
        }
        for (const char c : name) {
            text_[length_++] = c == kNameSeparator ? '_' : c;
        }
        text_[length_++] = kNameSeparator;
        text_[length_] = '\0';
    }
    const char* Text() const { return text_; }

  private:
    char text_[kNameWorkSize] = "";
    std::size_t length_ = 0;
    bool full_ = false;
};

struct NameParts {
    std::string_view last;
    std::string_view first;
    std::string_view middle;
};

NameParts SplitName(std::string_view name) {
    std::string_view parts[3] = {"", "", ""};
    for (std::string_view& part : parts) {
        const std::size_t start = name.find_first_not_of(kNameSeparator);
        if (start == std::string_view::npos) {
            break;
        }
        name.remove_prefix(start);
        part = name.substr(0, name.find(kNameSeparator));
        name.remove_prefix(part.size());
    }
    return {parts[0], parts[1], parts[2]};
}

int Width(std::string_view text) {
    return static_cast<int>(text.size());
}

void JoinNames(const char* format, std::string_view a, std::string_view b, std::string_view c, char* buffer,
               std::size_t size) {
    if (buffer != nullptr && size > 0) {
        std::snprintf(buffer, size, format, Width(a), a.data(), Width(b), b.data(), Width(c), c.data());
    }
}

bool Holds(std::string_view text, std::string_view part) {
    return text.find(part) != std::string_view::npos;
}

bool FitsWord(std::int64_t value) {
    return value >= 0 && value <= std::numeric_limits<std::uint16_t>::max();
}

void WriteMeasure(char* buffer, std::size_t size, std::uint32_t value, bool metric, const char* metricFormat,
                  const std::int32_t (&perUnit)[2], const char* format) {
    if (buffer == nullptr || size == 0) {
        return;
    }
    if (value < kSmallestMeasure) {
        CopyText("NG", buffer, size);
    } else if (metric) {
        const std::int32_t units = MulDivRound(static_cast<std::int32_t>(value), perUnit[1], perUnit[0]);
        std::snprintf(buffer, size, metricFormat, static_cast<long>(units));
    } else {
        std::snprintf(buffer, size, format, static_cast<int>((value + 50) / 100));
    }
}

}  // namespace

void TestRecord::SetPatientName(const char* first, const char* middle, const char* last) {
    NameJoin name;
    name.Add(last);
    name.Add(first);
    name.Add(middle);
    SetText(patientName, name.Text());
}

void TestRecord::LastName(char* buffer, std::size_t size) const {
    CopyText(SplitName(FieldView(patientName)).last, buffer, size);
}

void TestRecord::FirstName(char* buffer, std::size_t size) const {
    CopyText(SplitName(FieldView(patientName)).first, buffer, size);
}

void TestRecord::MiddleName(char* buffer, std::size_t size) const {
    CopyText(SplitName(FieldView(patientName)).middle, buffer, size);
}

void TestRecord::FullName(char* buffer, std::size_t size) const {
    const NameParts name = SplitName(FieldView(patientName));
    JoinNames("%.*s %.*s %.*s", name.first, name.middle, name.last, buffer, size);
}

void TestRecord::SortName(char* buffer, std::size_t size) const {
    const NameParts name = SplitName(FieldView(patientName));
    JoinNames("%.*s, %.*s %.*s", name.last, name.first, name.middle, buffer, size);
}

void TestRecord::Address(char* buffer, std::size_t size) const {
    if (buffer == nullptr || size == 0) {
        return;
    }
    BoundedText text(buffer, size);
    const std::string_view parts[] = {FieldView(street), "\r\n", FieldView(city),      ", ",
                                      FieldView(state),  " ",    FieldView(postalCode)};
    // The first part that does not fit ends the address: a city without its street would be another one.
    std::all_of(std::begin(parts), std::end(parts),
                [&text](std::string_view part) { return text.Add(part); });
}

void TestRecord::SetBirthDate(const KxDate& date) {
    if (date.year == birthDate.year && date.month == birthDate.month && date.day == birthDate.day) {
        return;
    }
    birthDate = date;
    modified = 1;
    if (DateTime(acquisitionTime).IsValid() && HasBirthDate()) {
        const std::int32_t days = DateTime(acquisitionTime).DaysBetween(BirthDate());
        ageDays = static_cast<std::uint16_t>(
            std::clamp<std::int32_t>(days, 0, std::numeric_limits<std::uint16_t>::max()));
    }
}

void TestRecord::SetAgeDays(std::uint16_t days) {
    if (!HasBirthDate()) {
        Set(ageDays, days);
    }
}

bool TestRecord::SetAgeText(const char* text) {
    if (text == nullptr) {
        return false;
    }
    const std::string_view age = text;
    const bool inDays = age.find_first_of("Dd") != std::string_view::npos;
    const bool inMonths = age.find_first_of("Mm") != std::string_view::npos;
    const std::int64_t unit = inDays ? 1 : inMonths ? kDaysPerMonth : kDaysPerYear;
    const std::int64_t days = age == "NG" ? 0 : std::int64_t{ParseNumber(text)} * unit;
    if (!FitsWord(days)) {
        return false;
    }
    SetAgeDays(static_cast<std::uint16_t>(days));
    return true;
}

void TestRecord::AgeText(char* buffer, std::size_t size) const {
    if (buffer == nullptr || size == 0) {
        return;
    }
    const int days = ageDays;
    if (days == 0) {
        CopyText("NG", buffer, size);
    } else if (days < kDaysPerMonth) {
        std::snprintf(buffer, size, "%d d", days);
    } else if (days >= kDaysPerYear) {
        std::snprintf(buffer, size, "%d y", days / kDaysPerYear);
    } else {
        std::snprintf(buffer, size, "%d m", days / kDaysPerMonth);
    }
}

bool TestRecord::SetMeasure(std::uint16_t& field, const char* text, bool metric,
                            const std::int32_t (&perUnit)[2]) {
    if (text == nullptr) {
        return false;
    }
    const std::int32_t number = ParseNumber(text);
    if (!FitsWord(number)) {
        return false;
    }
    const std::int32_t value = metric ? MulDivRound(number, perUnit[0], perUnit[1]) : number * 100;
    if (!FitsWord(value)) {
        return false;
    }
    Set(field, value);
    return true;
}

bool TestRecord::SetWeightText(const char* text) {
    const bool metric = MetricUnits() || (text != nullptr && (Holds(text, "KG") || Holds(text, "kg")));
    return SetMeasure(weight, text, metric, kPoundsPerKilogram);
}

void TestRecord::WeightText(char* buffer, std::size_t size) const {
    WriteMeasure(buffer, size, weight, MetricUnits(), "%ld kg", kPoundsPerKilogram, "%d lbs");
}

bool TestRecord::SetHeightText(const char* text) {
    const bool metric = MetricUnits() || (text != nullptr && (Holds(text, "CM") || Holds(text, "cm")));
    return SetMeasure(height, text, metric, kInchesPerCentimetre);
}

void TestRecord::HeightText(char* buffer, std::size_t size) const {
    WriteMeasure(buffer, size, height, MetricUnits(), "%ld cm", kInchesPerCentimetre, "%d in");
}

void TestRecord::SexText(const ResourceTexts& texts, char* buffer, std::size_t size,
                         std::uint32_t listId) const {
    RecordPickText(texts, listId != 0 ? listId : kSexList, sex, buffer, size);
}

void TestRecord::RaceText(const ResourceTexts& texts, char* buffer, std::size_t size,
                          std::uint32_t listId) const {
    RecordPickText(texts, listId != 0 ? listId : kRaceList, race, buffer, size);
}

void TestRecord::ClinicalFlagText(const ResourceTexts& texts, int flag, char* buffer, std::size_t size,
                                  std::uint32_t listId) const {
    if (flag >= 0 && flag < kClinicalFlags) {
        RecordPickText(texts, listId != 0 ? listId : kClinicalFlagLists[flag], clinicalFlags[flag], buffer,
                       size);
    }
}

std::uint32_t TestRecord::ClinicalFlag(int flag) const {
    return flag >= 0 && flag < kClinicalFlags ? clinicalFlags[flag] : 0;
}

void TestRecord::SetClinicalFlag(int flag, std::uint32_t code) {
    if (flag >= 0 && flag < kClinicalFlags) {
        Set(clinicalFlags[flag], code);
    }
}

void TestRecord::ClinicalDateText(char* buffer, std::size_t size, const LocaleFormats& locale) const {
    const DateTime date(clinicalDate.year, clinicalDate.month, clinicalDate.day);
    if (clinicalDate.year <= kLastUnknownYear || !date.ShortDate(buffer, size, locale)) {
        CopyText("NG", buffer, size);
    }
}

void TestRecord::SetClinicalDate(const KxDate& date) {
    const KxDate stored = date.year > kLastUnknownYear ? date : KxDate{};
    if (stored.year != clinicalDate.year || stored.month != clinicalDate.month ||
        stored.day != clinicalDate.day) {
        clinicalDate = stored;
        modified = 1;
    }
}

void TestRecord::BloodPressureText(char* buffer, std::size_t size) const {
    if (buffer == nullptr || size == 0) {
        return;
    }
    if (bloodPressure == 0) {
        CopyText("...", buffer, size);
    } else {
        std::snprintf(buffer, size, "%u/%u", bloodPressure >> 16, bloodPressure & 0xFFFFu);
    }
}

}  // namespace kx
