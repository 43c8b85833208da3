// Where portable code takes the user's texts from.
#pragma once

#include <cstddef>
#include <cstdint>

namespace kx {

// A source of string resources. On Windows the library's own module; a table in tests.
class ResourceTexts {
  public:
    // Copies string `id` (Windows-1252) into buffer, at most size - 1 characters and always terminated.
    // Returns the number of characters copied; 0 and an empty buffer when there is no such string.
    virtual std::size_t LoadText(std::uint32_t id, char* buffer, std::size_t size) const = 0;

  protected:
    ResourceTexts() = default;
    ResourceTexts(const ResourceTexts&) = default;
    ResourceTexts& operator=(const ResourceTexts&) = default;
    ~ResourceTexts() = default;
};

}  // namespace kx
