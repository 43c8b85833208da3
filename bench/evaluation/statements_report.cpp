// Prints how the automatic interpretation agrees with the readers of marked recordings: statements_report
// FOLDER
#include <cstdio>
#include <string>

#include "bench/evaluation/statement_report.h"

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "statements_report FOLDER\n");
        return 2;
    }
    std::string failure;
    const auto networks = kx::evaluation::FoldNetworks::Read(KX_FOLDS, failure);
    if (!networks) {
        std::fprintf(stderr, "%s\n", failure.c_str());
        return 1;
    }
    std::vector<std::string> errors;
    const auto records = kx::evaluation::StateRecords(argv[1], *networks, errors);
    for (const std::string& error : errors) {
        std::fprintf(stderr, "%s\n", error.c_str());
    }
    std::fputs(kx::evaluation::ReportStatements(records).c_str(), stdout);
    return errors.empty() && !records.empty() ? 0 : 1;
}
