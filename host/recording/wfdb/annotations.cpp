#include "host/recording/wfdb/annotations.h"

#include <algorithm>

#include "host/recording/file_bytes.h"

namespace kx::recording {

namespace {

constexpr unsigned kSkip = 59;
constexpr unsigned kNum = 60;
constexpr unsigned kSub = 61;
constexpr unsigned kChannel = 62;
constexpr unsigned kAux = 63;
constexpr unsigned kLastCode = 49;
constexpr std::uint64_t kLargestFile = 16u << 20;

// Takes the words of the file one after another; `ended` once one would lie behind its end.
class WordReader {
  public:
    explicit WordReader(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}
    bool Ended() const { return ended_; }

    unsigned Word() {
        if (bytes_.size() - position_ < 2) {
            ended_ = true;
            return 0;
        }
        const unsigned word = bytes_[position_] | unsigned{bytes_[position_ + 1]} << 8;
        position_ += 2;
        return word;
    }

    // A text of `size` bytes, padded to whole words; what is there of it when the file ends before.
    std::string Text(std::size_t size) {
        const std::size_t left = bytes_.size() - position_;
        if (left < size + size % 2) {
            ended_ = true;
        }
        const std::size_t taken = std::min(size, left);
        const auto first = bytes_.begin() + static_cast<std::ptrdiff_t>(position_);
        std::string text(first, first + static_cast<std::ptrdiff_t>(taken));
        position_ += std::min(size + size % 2, left);
        return text;
    }

  private:
    std::span<const std::uint8_t> bytes_;
    std::size_t position_ = 0;
    bool ended_ = false;
};

std::int8_t SignedLow(unsigned interval) {
    return static_cast<std::int8_t>(interval & 0xFF);
}

}  // namespace

std::vector<WfdbAnnotation> ParseAnnotations(std::span<const std::uint8_t> bytes, bool* truncated) {
    std::vector<WfdbAnnotation> found;
    WordReader words(bytes);
    std::int64_t sample = 0;
    std::int8_t number = 0;
    std::uint8_t channel = 0;
    while (true) {
        const unsigned word = words.Word();
        if (words.Ended() || word == 0) {
            break;
        }
        const unsigned code = word >> 10;
        const unsigned interval = word & 0x3FF;
        WfdbAnnotation none;  // before the first one there is nothing to add to
        WfdbAnnotation& last = found.empty() ? none : found.back();
        if (code == kSkip) {
            // A 32-bit interval whose high word stands first.
            const unsigned high = words.Word();
            const unsigned low = words.Word();
            if (!words.Ended()) {
                sample += static_cast<std::int32_t>(high << 16 | low);
            }
        } else if (code == kNum) {
            last.number = number = SignedLow(interval);
        } else if (code == kSub) {
            last.subtype = SignedLow(interval);
        } else if (code == kChannel) {
            last.channel = channel = static_cast<std::uint8_t>(interval & 0xFF);
        } else if (code == kAux) {
            last.text = words.Text(interval);
        } else {
            sample += interval;
            // Codes 50 to 58 are not given out; code 0 with an interval only moves the time on.
            if (code != 0 && code <= kLastCode) {
                found.push_back({sample, static_cast<std::uint8_t>(code), 0, channel, number, {}});
            }
        }
    }
    if (truncated) {
        *truncated = words.Ended();
    }
    return found;
}

std::optional<std::vector<WfdbAnnotation>> ReadAnnotations(const std::filesystem::path& file,
                                                           std::string& error) {
    const auto bytes = ReadFileBytes(file, kLargestFile, error);
    if (!bytes) {
        return std::nullopt;
    }
    return ParseAnnotations(*bytes);
}

}  // namespace kx::recording
