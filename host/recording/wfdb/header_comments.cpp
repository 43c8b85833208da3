#include "host/recording/wfdb/header_comments.h"

#include "host/recording/calendar_text.h"
#include "host/recording/text_scanner.h"

namespace kx::recording {

namespace {

constexpr int kOldest = 130;

Sex SexOf(std::string_view text) {
    const std::string value = Lower(text);
    if (value == "m" || value == "male") {
        return Sex::kMale;
    }
    if (value == "f" || value == "female") {
        return Sex::kFemale;
    }
    return Sex::kUnknown;
}

// The codes of a comma-separated list.
void AppendCodes(std::string_view list, std::vector<std::string>& diagnoses) {
    while (!list.empty()) {
        const std::size_t comma = list.find(',');
        const std::string_view code = Trim(list.substr(0, comma));
        if (!code.empty()) {
            diagnoses.emplace_back(code);
        }
        list.remove_prefix(comma == std::string_view::npos ? list.size() : comma + 1);
    }
}

}  // namespace

bool TakeDayMonthYear(std::string_view text, KxDateTime& time) {
    const auto day = TakeNumber<int>(text);
    if (!day || !Take(text, '/')) {
        return false;
    }
    const auto month = TakeNumber<int>(text);
    if (!month || !Take(text, '/')) {
        return false;
    }
    const auto year = TakeNumber<int>(text);
    if (!year || !text.empty() || !IsDate(*year, *month, *day)) {
        return false;
    }
    time.year = static_cast<std::int16_t>(*year);
    time.month = static_cast<std::uint8_t>(*month);
    time.day = static_cast<std::uint8_t>(*day);
    return true;
}

void CommentReader::Take(std::string_view line) {
    if (line.empty()) {
        inDiagnoses_ = false;
        return;
    }
    const std::size_t colon = line.find(':');
    std::string_view key = Trim(line.substr(0, colon));
    if (key.size() > 2 && key.front() == '<' && key.back() == '>') {
        key = key.substr(1, key.size() - 2);
    }
    const std::string name = colon == std::string_view::npos ? std::string() : Lower(key);
    std::string_view value =
        colon == std::string_view::npos ? std::string_view() : Trim(line.substr(colon + 1));
    if (name == "age") {
        const auto age = TakeNumber<int>(value);
        // "85", "85Y"; what follows a number otherwise, such as "3 months", is not taken for years.
        const bool years = value.empty() || Lower(value) == "y";
        if (age && years && *age >= 0 && *age <= kOldest) {
            ageYears_ = *age;
        }
    } else if (name == "sex") {
        sex_ = SexOf(value);
    } else if (name == "ecg date") {
        TakeDayMonthYear(value, date_);
    } else if (name == "dx") {
        AppendCodes(value, diagnoses_);
    } else if (name == "diagnoses" || name == "diagnose" || name == "diagnosis") {
        inDiagnoses_ = true;
        if (!value.empty()) {
            diagnoses_.emplace_back(value);
        }
    } else if (inDiagnoses_) {
        diagnoses_.emplace_back(line);
    }
}

}  // namespace kx::recording
