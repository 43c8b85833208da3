#include "dialogs/interpretation/staff_names.h"

#include <cstring>
#include <string_view>

namespace kx {
namespace {

template <std::size_t kSize>
std::string_view FieldText(const char (&field)[kSize]) {
    const void* const end = std::memchr(field, '\0', kSize);
    return {field, end != nullptr ? static_cast<std::size_t>(static_cast<const char*>(end) - field) : kSize};
}

// Puts pieces one behind the other until one does not fit.
class NameWriter {
  public:
    NameWriter(char* buffer, std::size_t size) : buffer_(buffer), size_(buffer != nullptr ? size : 0) {
        if (size_ > 0) {
            buffer_[0] = '\0';
        }
    }

    void Append(std::string_view separator, std::string_view text) {
        const std::size_t piece = separator.size() + text.size();
        if (ended_ || length_ + piece >= size_) {
            ended_ = true;
            return;
        }
        separator.copy(buffer_ + length_, separator.size());
        text.copy(buffer_ + length_ + separator.size(), text.size());
        length_ += piece;
        buffer_[length_] = '\0';
    }

    std::size_t Length() const { return length_; }

  private:
    char* buffer_;
    std::size_t size_;
    std::size_t length_ = 0;
    bool ended_ = false;
};

template <class Record>
void AppendPerson(NameWriter& name, const Record& record) {
    name.Append("", FieldText(record.firstName));
    name.Append(" ", FieldText(record.initial));
    name.Append(" ", FieldText(record.lastName));
}

template <class Record>
bool HasNoPerson(const Record& record) {
    return record.firstName[0] == '\0' && record.initial[0] == '\0' && record.lastName[0] == '\0';
}

}  // namespace

std::size_t DisplayName(const TechnicianRecord& record, char* buffer, std::size_t size) {
    NameWriter name(buffer, size);
    AppendPerson(name, record);
    return name.Length();
}

std::size_t DisplayName(const PhysicianRecord& record, char* buffer, std::size_t size) {
    NameWriter name(buffer, size);
    AppendPerson(name, record);
    if (const std::string_view title = FieldText(record.title); !title.empty()) {
        name.Append(", ", title);
    }
    return name.Length();
}

bool IsNameless(const TechnicianRecord& record) {
    return HasNoPerson(record);
}

bool IsNameless(const PhysicianRecord& record) {
    return HasNoPerson(record) && record.title[0] == '\0';
}

}  // namespace kx
