// Prints how far the measurement lies from the cardiologists' marks: delineation_report FOLDER [--leads]
// [--records]
#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string>

#include "tests/evaluation/error_table.h"
#include "tests/evaluation/judge.h"

int main(int argc, char** argv) {
    const auto given = [&](const char* option) {
        return std::any_of(argv + std::min(argc, 2), argv + argc,
                           [&](const char* argument) { return std::strcmp(argument, option) == 0; });
    };
    if (argc < 2) {
        std::fprintf(stderr, "delineation_report FOLDER [--leads] [--records]\n");
        return 2;
    }
    std::string error;
    const auto records = kx::evaluation::JudgeRecords(argv[1], error);
    if (!records) {
        std::fprintf(stderr, "%s\n", error.c_str());
        return 1;
    }
    std::vector<const kx::evaluation::RecordErrors*> all;
    for (const auto& record : *records) {
        all.push_back(&record);
    }
    kx::evaluation::PrintTable("Sinus rhythm", kx::evaluation::SinusRecords(*records), given("--leads"));
    kx::evaluation::PrintTable("All records", all, false);
    if (given("--records")) {
        kx::evaluation::PrintRecords(*records);
    }
    return 0;
}
