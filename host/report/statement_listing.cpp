#include "host/report/statement_listing.h"

#include <algorithm>
#include <cstdint>
#include <vector>

namespace kxhost {
namespace {

// The statements of the automatic interpretation among the library's texts, and room for the longest.
constexpr std::uint32_t kFirstStatement = 30000;
constexpr std::uint32_t kLastStatement = 30220;
constexpr std::size_t kStatementSize = 256;

struct Statement {
    std::uint32_t code;
    std::string text;
};

std::vector<Statement> LoadStatements(const kx::ResourceTexts& texts) {
    std::vector<Statement> statements;
    char buffer[kStatementSize];
    for (std::uint32_t code = kFirstStatement; code <= kLastStatement; ++code) {
        if (const std::size_t length = texts.LoadText(code, buffer, sizeof buffer)) {
            statements.push_back({code, std::string(buffer, length)});
        }
    }
    return statements;
}

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

// Takes a whole number off the front of the line.
bool TakeNumber(std::string_view& line) {
    if (line.starts_with('-')) {
        line.remove_prefix(1);
    }
    const auto digits =
        static_cast<std::size_t>(std::find_if_not(line.begin(), line.end(), IsDigit) - line.begin());
    line.remove_prefix(digits);
    return digits > 0;
}

bool IsStatement(std::string_view line, std::string_view text) {
    while (!text.empty()) {
        if (text.starts_with("%d")) {
            if (!TakeNumber(line)) {
                return false;
            }
            text.remove_prefix(2);
            continue;
        }
        if (line.empty() || line.front() != text.front()) {
            return false;
        }
        line.remove_prefix(1);
        text.remove_prefix(1);
    }
    return line.empty();
}

}  // namespace

std::string ListStatements(std::string_view interpretation, const kx::ResourceTexts& texts) {
    const std::vector<Statement> statements = LoadStatements(texts);
    std::string listing;
    while (!interpretation.empty()) {
        const std::size_t end = std::min(interpretation.find_first_of("\r\n"), interpretation.size());
        const std::string_view line = interpretation.substr(0, end);
        interpretation.remove_prefix(std::min(end + 1, interpretation.size()));
        if (line.empty()) {
            continue;
        }
        const auto known =
            std::find_if(statements.begin(), statements.end(),
                         [line](const Statement& statement) { return IsStatement(line, statement.text); });
        listing +=
            std::to_string(known == statements.end() ? 0 : known->code) + '\t' + std::string(line) + '\n';
    }
    return listing;
}

}  // namespace kxhost
