// Numbers as the dialogs show them, and numbers read from what a user or a module typed.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace kx {

// Each writes into a buffer of `size` characters (at least 1), cut at size - 1 and always terminated.

// "%ld", "%lu", "%lX".
void FormatNumber(char* buffer, std::size_t size, std::int32_t value);
void FormatUnsigned(char* buffer, std::size_t size, std::uint32_t value);
void FormatHex(char* buffer, std::size_t size, std::uint32_t value);
// "%3.<decimals>f": at least three characters wide. decimals: taken as 0 to 15.
void FormatFixed(char* buffer, std::size_t size, double value, int decimals);
// value in tenths: "%lu.%lu" of the whole part and the tenth.
void FormatTenths(char* buffer, std::size_t size, std::uint32_t value);
// value * multiplier / divisor, rounded to the nearest (halves away from zero) at the last of `decimals`
// decimals (0 to 9; 0 shows a whole number). Exact for every value that 32 bits hold. A negative result shows
// its sign; "..." stands for a divisor of 0 and for a result beyond 32 bits, which are no numbers to show.
void FormatScaled(char* buffer, std::size_t size, std::int32_t multiplier, std::int32_t divisor, int decimals,
                  std::int32_t value);

// Digits 0-9 and A-F up to the first other character; 0 when there is none. Of more than eight digits the
// last count.
std::uint32_t ParseHex(const char* text);
// An optional sign and decimal digits after leading blanks, up to the first other character; 0 when there is
// none. Beyond 32 bits the nearest value that they hold.
std::int32_t ParseNumber(std::string_view text);

}  // namespace kx
