#include "lib/packbits.h"

#include <algorithm>

namespace kx {
namespace {

// A packet holds one byte more than its count: 128 at the most.
constexpr int kFullCount = 127;

// Reads the row once, left to right, in four states; each state takes what it can and names the next one.
class RowEncoder {
  public:
    RowEncoder(const std::uint8_t* row, std::size_t rowBytes, std::uint8_t* packed)
        : next_(row), end_(row + rowBytes), out_(packed) {}

    // The end of what was written.
    std::uint8_t* Encode() {
        State state = State::kStart;
        while (state != State::kDone) {
            switch (state) {
                case State::kStart:
                    state = Start();
                    break;
                case State::kPending:
                    state = Pending();
                    break;
                case State::kLiteral:
                    state = Literal();
                    break;
                default:
                    state = Repeat();
                    break;
            }
        }
        return out_;
    }

  private:
    enum class State { kStart, kPending, kLiteral, kRepeat, kDone };

    State Start() { return next_ == end_ ? State::kDone : Hold(); }

    // Reserves a header and holds the next byte until it is known what it begins.
    State Hold() {
        header_ = out_++;
        value_ = *next_++;
        return State::kPending;
    }

    State Pending() {
        if (next_ == end_) {
            if (value_ == 0) {
                out_ = header_;
            } else {
                *header_ = 0;
                *out_++ = value_;
            }
            return State::kDone;
        }
        count_ = 1;
        if (*next_ == value_) {
            ++next_;
            return State::kRepeat;
        }
        *out_++ = value_;
        *out_++ = *next_++;
        return State::kLiteral;
    }

    State Literal() {
        // As far as the packet can grow, and not onto the row's last byte, which begins no run of three.
        const std::uint8_t* const stop = next_ + std::min<std::ptrdiff_t>(kFullCount - count_, end_ - next_);
        const std::uint8_t* const start = next_;
        std::uint8_t last = out_[-1];
        while (next_ != stop) {
            const std::uint8_t byte = *next_;
            if (byte == last && end_ - next_ > 1 && next_[1] == byte) {
                count_ += static_cast<int>(next_ - start);
                *header_ = static_cast<std::uint8_t>(count_ - 1);
                header_ = out_ - 1;
                value_ = byte;
                count_ = 1;
                ++next_;
                return State::kRepeat;
            }
            *out_++ = byte;
            last = byte;
            ++next_;
        }
        count_ += static_cast<int>(next_ - start);
        if (count_ == kFullCount) {
            *header_ = static_cast<std::uint8_t>(kFullCount);
            return State::kStart;
        }
        while (out_[-1] == 0) {
            --out_;
        }
        *header_ = static_cast<std::uint8_t>(out_ - header_ - 2);
        return State::kDone;
    }

    State Repeat() {
        const std::uint8_t* const start = next_;
        const std::uint8_t* const stop = start + std::min<std::ptrdiff_t>(kFullCount - count_, end_ - start);
        next_ = std::find_if(start, stop, [value = value_](std::uint8_t byte) { return byte != value; });
        count_ += static_cast<int>(next_ - start);
        const bool full = count_ == kFullCount;
        if (next_ == end_ && value_ == 0 && !full) {
            out_ = header_;
            return State::kDone;
        }
        *header_ = static_cast<std::uint8_t>(-count_);
        *out_++ = value_;
        if (full) {
            return State::kStart;
        }
        return next_ == end_ ? State::kDone : Hold();
    }

    const std::uint8_t* next_;
    const std::uint8_t* const end_;
    std::uint8_t* out_;
    std::uint8_t* header_ = nullptr;  // of the packet that is being made
    std::uint8_t value_ = 0;          // the byte held, or the one repeated
    int count_ = 0;                   // bytes in the packet less one
};

}  // namespace

std::size_t PackBitsEncode(const std::uint8_t* row, std::size_t rowBytes, std::uint8_t* packed) {
    // Full packets of zeros would otherwise stand in a blank row of more than 128 bytes.
    if (std::all_of(row, row + rowBytes, [](std::uint8_t byte) { return byte == 0; })) {
        return 0;
    }
    return static_cast<std::size_t>(RowEncoder(row, rowBytes, packed).Encode() - packed);
}

}  // namespace kx
