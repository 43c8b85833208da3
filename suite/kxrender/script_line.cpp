#include "suite/kxrender/script_line.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <iterator>
#include <optional>

namespace kx::render {

namespace {

constexpr std::string_view kFieldOpening = "{#";
constexpr char kNoValue[] = "...";
constexpr std::string_view kEmptyTexts[] = {"", "NG", "..", kNoValue, "*"};

std::string_view Trimmed(std::string_view text) {
    constexpr std::string_view kBlanks = " \t\r\n";
    const std::size_t first = text.find_first_not_of(kBlanks);
    return first == text.npos ? std::string_view()
                              : text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

// A field's text without blanks around it and with one blank where there are several: field formats pad their
// numbers. Nothing when the field has no value.
std::optional<std::string> ValueOf(const ScriptValues& values, int code) {
    const std::string whole = values.Field(code);
    std::string text(Trimmed(whole));
    text.erase(std::unique(text.begin(), text.end(), [](char a, char b) { return a == ' ' && b == ' '; }),
               text.end());
    if (std::find(std::begin(kEmptyTexts), std::end(kEmptyTexts), text) != std::end(kEmptyTexts)) {
        return std::nullopt;
    }
    return text;
}

// Takes the digits at the start of a text.
std::optional<int> TakeCode(std::string_view& text) {
    int code = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), code);
    if (error != std::errc() || text[0] == '-') {
        return std::nullopt;
    }
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return code;
}

// ---- conditions

enum class Comparison { kEqual, kUnequal, kLess, kLessOrEqual, kGreater, kGreaterOrEqual };

struct Operator {
    std::string_view sign;
    Comparison comparison;
};
// Longer signs before those that they begin with.
constexpr Operator kOperators[] = {
    {"!=", Comparison::kUnequal}, {"<=", Comparison::kLessOrEqual}, {">=", Comparison::kGreaterOrEqual},
    {"=", Comparison::kEqual},    {"<", Comparison::kLess},         {">", Comparison::kGreater}};

template <class Value>
bool Compare(const Value& left, Comparison comparison, const Value& right) {
    switch (comparison) {
        case Comparison::kEqual:
            return left == right;
        case Comparison::kUnequal:
            return left != right;
        case Comparison::kLess:
            return left < right;
        case Comparison::kLessOrEqual:
            return left <= right;
        case Comparison::kGreater:
            return left > right;
        case Comparison::kGreaterOrEqual:
            return left >= right;
    }
    return false;
}

// The first number in a text, with its sign and decimals: "101 %" is 101, "[85 %" is 85.
std::optional<double> NumberIn(std::string_view text) {
    const std::size_t digit = text.find_first_of("0123456789");
    if (digit == text.npos) {
        return std::nullopt;
    }
    const std::size_t start = digit > 0 && text[digit - 1] == '-' ? digit - 1 : digit;
    const std::size_t end = std::min(text.find_first_not_of("0123456789.", digit), text.size());
    return std::strtod(std::string(text.substr(start, end - start)).c_str(), nullptr);
}

bool IsNumber(std::string_view text) {
    return !text.empty() && text.find_first_not_of("-0123456789.") == text.npos && NumberIn(text).has_value();
}

bool Holds(const std::optional<std::string>& value, Comparison comparison, std::string_view with) {
    if (!value) {
        return false;
    }
    if (!IsNumber(with)) {
        return Compare(std::string_view(*value), comparison, with);
    }
    const std::optional<double> number = NumberIn(*value);
    return number && Compare(*number, comparison, *NumberIn(with));
}

// Takes the condition behind a '?' and the blank behind it. Nothing: it cannot be understood.
std::optional<bool> TakeCondition(std::string_view& line, const ScriptValues& values) {
    const bool negated = line.starts_with('!');
    line.remove_prefix(negated ? 1 : 0);
    const std::optional<int> code = TakeCode(line);
    if (!code) {
        return std::nullopt;
    }
    const std::size_t end = std::min(line.find(' '), line.size());
    const std::string_view rest = line.substr(0, end);
    line.remove_prefix(std::min(end + 1, line.size()));
    const std::optional<std::string> value = ValueOf(values, *code);
    if (rest.empty()) {
        return value.has_value() != negated;
    }
    const auto* found = std::find_if(std::begin(kOperators), std::end(kOperators),
                                     [rest](const Operator& op) { return rest.starts_with(op.sign); });
    if (negated || found == std::end(kOperators) || rest.size() == found->sign.size()) {
        return std::nullopt;
    }
    return Holds(value, found->comparison, rest.substr(found->sign.size()));
}

// ---- the text behind the conditions

class TextRenderer {
  public:
    explicit TextRenderer(const ScriptValues& values) : values_(values) {}

    // False: the brackets do not match.
    bool Render(std::string_view text) {
        while (!text.empty()) {
            const char c = text[0];
            if (c == '\\' && text.size() > 1) {
                Literal(text.substr(1, 1));
                text.remove_prefix(2);
            } else if ((c == '[' && inBrackets_) || (c == ']' && !inBrackets_)) {
                return false;
            } else if (c == '[') {
                Open();
                text.remove_prefix(1);
            } else if (c == ']') {
                Close();
                text.remove_prefix(1);
            } else if (!TakeField(text)) {
                pending_ += c;
                text.remove_prefix(1);
            }
        }
        Flush();
        return !inBrackets_;
    }

    std::string Take() { return std::move(done_); }

  private:
    // Takes a whole "{#N}".
    bool TakeField(std::string_view& text) {
        if (!text.starts_with(kFieldOpening)) {
            return false;
        }
        std::string_view rest = text.substr(kFieldOpening.size());
        const std::optional<int> code = TakeCode(rest);
        if (!code || !rest.starts_with('}')) {
            return false;
        }
        text = rest.substr(1);
        const std::optional<std::string> value = ValueOf(values_, *code);
        lacksValue_ = lacksValue_ || !value;
        Literal(value.value_or(kNoValue));
        return true;
    }

    // Values and escaped characters are not looked at for placeholders.
    void Literal(std::string_view text) {
        Flush();
        done_ += text;
    }

    void Flush() {
        done_ += values_.WithPatient(pending_);
        pending_.clear();
    }

    void Open() {
        Flush();
        inBrackets_ = true;
        lacksValue_ = false;
        bracketStart_ = done_.size();
    }

    void Close() {
        Flush();
        inBrackets_ = false;
        if (lacksValue_) {
            done_.resize(bracketStart_);
        }
    }

    const ScriptValues& values_;
    std::string done_;
    std::string pending_;  // of the script's own, its placeholders not yet replaced
    bool inBrackets_ = false;
    bool lacksValue_ = false;
    std::size_t bracketStart_ = 0;
};

}  // namespace

RenderedLine RenderLine(std::string_view line, const ScriptValues& values) {
    RenderedLine result;
    while (line.starts_with('?')) {
        line.remove_prefix(1);
        const std::optional<bool> holds = TakeCondition(line, values);
        if (!holds) {
            result.fault = LineFault::kCondition;
            return result;
        }
        if (!*holds) {
            return result;
        }
    }
    TextRenderer renderer(values);
    if (!renderer.Render(line)) {
        result.fault = LineFault::kBrackets;
        return result;
    }
    result.shown = true;
    result.text = renderer.Take();
    return result;
}

}  // namespace kx::render
