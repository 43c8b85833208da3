// What the interpretation engine says about one median beat.
#pragma once

#include <cstddef>
#include <cstdint>

#include "include/kxdialogs.h"

namespace kx {

// A KxInterpretationResult with its operations; no data added. Only the engine gives its values a meaning,
// the dialogs read the text alone. Texts are bounded by their fields, terminated there or not.
struct InterpretationResult : KxInterpretationResult {
    InterpretationResult() { Clear(); }

    // All zeros but the size.
    void Clear();

    // Whether the result's time lies in the closed range.
    bool IsBetween(std::uint32_t from, std::uint32_t to) const {
        return from <= resultTime && resultTime <= to;
    }
    void SetResultTime(std::uint32_t time) { resultTime = time; }

    // At most 1023 characters are kept; null is an empty text.
    void SetText(const char* newText);
    // At most 3 characters are kept.
    void SetCode(const char* newCode);
    // Copies at most size - 1 characters and a terminator; nothing without a buffer or with size 0.
    void Text(char* buffer, std::size_t size) const;
    void Code(char* buffer, std::size_t size) const;

    bool IsFlag0() const { return (flags & 1u) != 0; }
    bool IsFlag1() const { return (flags & 2u) != 0; }
    void SetFlag0(bool on) { SetFlag(1u, on); }
    void SetFlag1(bool on) { SetFlag(2u, on); }
    void SetExtra(std::uint32_t value) { extra = value; }

  private:
    void SetFlag(std::uint32_t bit, bool on) { flags = on ? flags | bit : flags & ~bit; }
};

static_assert(sizeof(InterpretationResult) == KX_INTERPRETATION_RESULT_SIZE);

}  // namespace kx
