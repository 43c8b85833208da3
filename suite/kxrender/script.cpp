#include "suite/kxrender/script.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "suite/kxrender/script_line.h"
#include "suite/text_file.h"

namespace kx::render {

namespace {

// Reports name the script and the line in it.
constexpr char kSource[] = "script";
constexpr char kComment = '#';
constexpr std::string_view kLineEnd = "\r\n";

const char* FaultText(LineFault fault) {
    return fault == LineFault::kCondition ? "condizione non valida, riga ignorata"
                                          : "parentesi non chiuse, riga ignorata";
}

// The report in the caller's buffer.
class Report {
  public:
    Report(char* buffer, std::size_t size) : buffer_(buffer), size_(size) { buffer_[0] = '\0'; }

    // False: the line does not fit.
    bool Add(std::string_view text) {
        if (text.empty()) {
            gap_ = used_ != 0;
            return true;
        }
        const std::size_t ends = used_ == 0 ? 0 : gap_ ? 2 : 1;
        if (ends * kLineEnd.size() + text.size() >= size_ - used_) {
            return false;
        }
        for (std::size_t i = 0; i < ends; ++i) {
            Put(kLineEnd);
        }
        Put(text);
        buffer_[used_] = '\0';
        gap_ = false;
        return true;
    }

  private:
    void Put(std::string_view text) {
        std::memcpy(buffer_ + used_, text.data(), text.size());
        used_ += text.size();
    }

    char* buffer_;
    std::size_t size_;
    std::size_t used_ = 0;
    bool gap_ = false;  // an empty line is due before the next one
};

}  // namespace

bool RunScript(std::string_view script, const ScriptValues& values, char* buffer, std::size_t size,
               Reporter& log) {
    if (buffer == nullptr || size == 0) {
        return false;
    }
    Report report(buffer, size);
    const std::string text = suite::TextOfFile(script);
    std::uint32_t number = 0;
    for (std::string_view rest = text; !rest.empty();) {
        const std::size_t end = std::min(rest.find('\n'), rest.size());
        std::string_view line = rest.substr(0, end);
        rest.remove_prefix(std::min(end + 1, rest.size()));
        line.remove_suffix(line.ends_with('\r') ? 1 : 0);
        ++number;
        if (line.starts_with(kComment)) {
            continue;
        }
        const RenderedLine rendered = RenderLine(line, values);
        if (rendered.fault != LineFault::kNone) {
            log.LOGOEMERROR(kSource, number, FaultText(rendered.fault));
        } else if (rendered.shown && !report.Add(rendered.text)) {
            log.LOGOEMERROR(kSource, number, "il testo non entra, referto interrotto");
            break;
        }
    }
    return true;
}

}  // namespace kx::render
