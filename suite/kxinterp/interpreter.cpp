#include "suite/kxinterp/interpreter.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "suite/kxinterp/rules.h"

namespace kx::interp {

namespace {

constexpr char kSource[] = "kxinterp";
constexpr std::uint32_t kNoInputLine = 40;
constexpr std::uint32_t kWrongSizeLine = 44;
constexpr std::uint32_t kNoTextLine = 58;

constexpr std::size_t kLongestText = sizeof KxInterpretationResult::text - 1;
constexpr std::size_t kStatementSize = 256;
constexpr std::string_view kLineEnd = "\r\n";

enum ResultFlag : std::uint32_t { kInterpreted = 1, kNotNormal = 2 };
constexpr char kCodes[][4] = {"NOR", "BOR", "ABN"};

struct Statement {
    std::string text;
    Weight weight;
};

// The format with its "%d" replaced one by one; "%%" is a percent sign. Never printf: the texts come from
// outside.
std::string Filled(std::string_view format, const Values& values) {
    std::string text;
    int used = 0;
    for (std::size_t i = 0; i < format.size(); ++i) {
        const char next = format[i] == '%' && i + 1 < format.size() ? format[i + 1] : '\0';
        if (next == 'd' && used < values.count) {
            text += std::to_string(values.numbers[used++]);
            ++i;
        } else if (next == '%') {
            text += '%';
            ++i;
        } else {
            text += format[i];
        }
    }
    return text;
}

class Writer {
  public:
    Writer(const ResourceTexts& texts, Reporter& log) : texts_(texts), log_(log) {}

    std::string Text(std::uint16_t code, const Values& values = {}) const {
        char buffer[kStatementSize];
        if (texts_.LoadText(code, buffer, sizeof buffer) == 0) {
            std::string number = std::to_string(code);
            log_.LOGOEMERROR(kSource, kNoTextLine, ("no text of statement " + number).c_str());
            return number;
        }
        return Filled(buffer, values);
    }

  private:
    const ResourceTexts& texts_;
    Reporter& log_;
};

std::vector<const Rule*> RulesThatApply(const Ecg& ecg) {
    std::vector<const Rule*> applying;
    for (const Rule& rule : Rules()) {
        if (rule.applies(ecg)) {
            applying.push_back(&rule);
        }
    }
    return applying;
}

std::size_t LengthOf(const std::vector<Statement>& statements) {
    std::size_t length = 0;
    for (const Statement& statement : statements) {
        length += statement.text.size() + kLineEnd.size();
    }
    return length;
}

// Leaves out statements until the rest fits into `room`, each with the line end behind it.
void Shorten(std::vector<Statement>& statements, std::size_t room) {
    while (!statements.empty() && LengthOf(statements) > room) {
        // The last one of the lightest.
        const auto lightest =
            std::min_element(statements.rbegin(), statements.rend(),
                             [](const auto& a, const auto& b) { return a.weight < b.weight; });
        statements.erase(std::next(lightest).base());
    }
}

void SetText(KxInterpretationResult& result, const std::string& text) {
    std::memcpy(result.text, text.data(), std::min(text.size(), kLongestText));
}

void Compose(const Ecg& ecg, const Writer& writer, KxInterpretationResult& result) {
    std::vector<Statement> statements;
    Weight heaviest = Weight::kNote;
    for (const Rule* rule : RulesThatApply(ecg)) {
        const Values values = rule->values != nullptr ? rule->values(ecg) : Values{};
        statements.push_back({writer.Text(rule->code, values), rule->weight});
        heaviest = std::max(heaviest, rule->weight);
    }
    const std::string classification = writer.Text(ClassificationOf(heaviest));
    Shorten(statements, kLongestText - std::min(classification.size(), kLongestText));

    std::string text;
    for (const Statement& statement : statements) {
        text += statement.text;
        text += kLineEnd;
    }
    SetText(result, text + classification);
    std::memcpy(result.code, kCodes[static_cast<int>(heaviest)], sizeof result.code);
    result.flags = heaviest == Weight::kNote ? kInterpreted : kInterpreted | kNotNormal;
    result.extra = static_cast<std::uint32_t>(statements.size());
}

}  // namespace

bool Interpret(const KxMeasurementSet* set, const KxAnnotationStore* annotations, const ResourceTexts& texts,
               KxInterpretationResult* result, Reporter& log) {
    if (set == nullptr || result == nullptr) {
        log.LOGOEMERROR(kSource, kNoInputLine, "no measurements or no result");
        return false;
    }
    if (set->size != sizeof *set) {
        log.LOGOEMERROR(kSource, kWrongSizeLine, "measurements of another size");
        return false;
    }
    const Ecg ecg(*set, annotations);
    const Writer writer(texts, log);
    KxInterpretationResult made{};
    made.size = sizeof made;
    made.resultTime = set->episodeTime;
    if (const std::uint16_t reason = ReasonNotToInterpret(ecg)) {
        SetText(made, writer.Text(reason));
    } else {
        Compose(ecg, writer, made);
    }
    *result = made;
    return true;
}

std::vector<std::uint16_t> StatementCodes(const KxMeasurementSet& set, const KxAnnotationStore* annotations) {
    const Ecg ecg(set, annotations);
    if (const std::uint16_t reason = ReasonNotToInterpret(ecg)) {
        return {reason};
    }
    std::vector<std::uint16_t> codes;
    Weight heaviest = Weight::kNote;
    for (const Rule* rule : RulesThatApply(ecg)) {
        codes.push_back(rule->code);
        heaviest = std::max(heaviest, rule->weight);
    }
    codes.push_back(ClassificationOf(heaviest));
    return codes;
}

}  // namespace kx::interp
