// Free texts that speak of the patient.
#include <cstring>
#include <string_view>

#include "lib/dbclient/summary_fields.h"

namespace kx {

namespace {

constexpr std::string_view kOpening = "{%";
constexpr char kClosing = '}';
constexpr int kNumberLimit = 1000;  // no placeholder has so large a number

// The output of a fixed size; what does not fit as a whole is left out.
class Output {
  public:
    Output(char* buffer, std::size_t size) : buffer_(buffer), size_(size) { buffer_[0] = '\0'; }

    bool IsFull() const { return used_ + 1 >= size_; }
    void Put(std::string_view text) {
        if (used_ + text.size() < size_) {
            CopyText(text, buffer_ + used_, size_ - used_);
            used_ += text.size();
        }
    }

  private:
    char* buffer_;
    std::size_t size_;
    std::size_t used_ = 0;
};

void PutPlaceholder(const TestRecord& test, int number, std::string_view asWritten, Output& output) {
    char name[sizeof test.patientName];
    switch (number) {
        case 1:
            test.FirstName(name, sizeof name);
            output.Put(name);
            break;
        case 2:
            test.LastName(name, sizeof name);
            output.Put(name);
            break;
        case 5:
            output.Put(WordBySex(test, "the", "his", "her"));
            break;
        case 11:
            output.Put(WordBySex(test, "The patient", "He", "She"));
            break;
        case 14:
            output.Put(WordBySex(test, "The patient", "Mr.", "Ms."));
            break;
        default:
            output.Put(asWritten);
            break;
    }
}

// The length of the digits at the start of a text, and their number.
std::size_t ReadNumber(std::string_view text, int& number) {
    std::size_t length = 0;
    number = 0;
    for (; length < text.size() && text[length] >= '0' && text[length] <= '9'; ++length) {
        if (number < kNumberLimit) {
            number = number * 10 + (text[length] - '0');
        }
    }
    return length;
}

}  // namespace

bool ExpandPlaceholders(const TestRecord& test, const char* text, char* output, std::size_t size) {
    if (text == nullptr || output == nullptr || size == 0) {
        return false;
    }
    Output result(output, size);
    for (std::string_view rest = text; !rest.empty() && !result.IsFull();) {
        int number = 0;
        const bool opens = rest.substr(0, kOpening.size()) == kOpening;
        const std::size_t digits = opens ? ReadNumber(rest.substr(kOpening.size()), number) : 0;
        if (digits == 0) {
            result.Put(rest.substr(0, 1));
            rest.remove_prefix(1);
            continue;
        }
        const std::size_t end = kOpening.size() + digits;
        if (end < rest.size() && rest[end] == kClosing) {
            PutPlaceholder(test, number, rest.substr(0, end + 1), result);
            rest.remove_prefix(end + 1);
        } else {
            result.Put("*");
            rest.remove_prefix(end);
        }
    }
    return true;
}

}  // namespace kx
