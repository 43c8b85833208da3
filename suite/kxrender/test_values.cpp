#include "suite/kxrender/test_values.h"

#include <vector>

#include "include/kxdialogs.h"

namespace kx::render {

namespace {

// The longest field is the interpretation with its banner behind it.
constexpr std::size_t kLongestField = sizeof KxTestRecord::interpretationText + 256;
// A placeholder is replaced by a name of at most this length, or a word that is shorter.
constexpr std::size_t kLongestReplacement = sizeof KxTestRecord::patientName;

}  // namespace

std::string TestValues::Field(int code) const {
    std::vector<char> buffer(kLongestField);
    return FieldText(test_, code, buffer.data(), buffer.size(), request_) ? buffer.data() : "";
}

std::string TestValues::WithPatient(const std::string& text) const {
    if (text.find("{%") == text.npos) {
        return text;
    }
    // The shortest placeholder has four characters.
    std::vector<char> buffer(text.size() * kLongestReplacement / 4 + text.size() + 1);
    ExpandPlaceholders(test_, text.c_str(), buffer.data(), buffer.size());
    return buffer.data();
}

}  // namespace kx::render
