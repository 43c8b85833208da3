// Free texts that speak of the patient.
#include <algorithm>
#include <string>
#include <string_view>

#include "lib/dbclient/summary_fields.h"

namespace kx {

namespace {

constexpr std::string_view kOpening = "{%";
constexpr std::string_view kDigits = "0123456789";

// The text of a placeholder; the number without zeros in front. A number that is none of them is written
// back.
void AddPlaceholder(const TestRecord& test, std::string_view number, BoundedText& output) {
    char name[sizeof test.patientName];
    if (number == "1") {
        test.FirstName(name, sizeof name);
        output.Add(name);
    } else if (number == "2") {
        test.LastName(name, sizeof name);
        output.Add(name);
    } else if (number == "5") {
        output.Add(WordBySex(test, "the", "his", "her"));
    } else if (number == "11") {
        output.Add(WordBySex(test, "The patient", "He", "She"));
    } else if (number == "14") {
        output.Add(WordBySex(test, "The patient", "Mr.", "Ms."));
    } else {
        output.Add(std::string(kOpening) + std::string(number) + '}');
    }
}

// 007 is the number 7.
std::string_view WithoutZerosInFront(std::string_view digits) {
    const std::size_t zeros = digits.find_first_not_of('0');
    return digits.substr(std::min(zeros, digits.size() - 1));
}

}  // namespace

bool ExpandPlaceholders(const TestRecord& test, const char* text, char* output, std::size_t size) {
    if (text == nullptr || output == nullptr || size == 0) {
        return false;
    }
    BoundedText result(output, size);
    for (std::string_view rest = text; !rest.empty() && !result.IsFull();) {
        std::string_view digits;
        if (rest.starts_with(kOpening)) {
            digits = rest.substr(kOpening.size());
            digits = digits.substr(0, digits.find_first_not_of(kDigits));
        }
        if (digits.empty()) {
            result.Add(rest.substr(0, 1));
            rest.remove_prefix(1);
            continue;
        }
        rest.remove_prefix(kOpening.size() + digits.size());
        if (rest.starts_with('}')) {
            AddPlaceholder(test, WithoutZerosInFront(digits), result);
            rest.remove_prefix(1);
        } else {
            result.Add("*");
        }
    }
    return true;
}

}  // namespace kx
