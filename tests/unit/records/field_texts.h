// A test and the texts of its report fields. A row holds "code=text" of several fields between bars; "!" stands before a text that
// was written although no field knows the code.
#pragma once

#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "lib/dbclient/summary_text.h"
#include "lib/dbclient/test_record.h"
#include "tests/unit/picture_locale.h"
#include "tests/unit/records/text_table.h"

namespace kx::test {

struct FieldTexts : testing::Test {
    FieldTexts() {
        texts.texts = {{913, "0^...^1^Uomo^2^Donna"},
                       {914, "Original^Overread^Confirmed"},
                       {959, "0^No^1^S\xEC"},
                       {964, "0^No^1^S\xEC"},
                       {963, "0^...^4^R"},
                       {7000, "1^M^2^F"}};
        request.gradeName = "slope";
    }

    std::string Text(int code, std::size_t size = 600) const {
        std::string buffer(size, '#');
        const bool known = FieldText(test, code, buffer.data(), size, request);
        EXPECT_NE(buffer.find('\0'), std::string::npos) << code;
        return (known ? "" : "!") + std::string(buffer.c_str());
    }

    void Expect(const std::string& expected) const {
        std::string actual, field;
        for (std::istringstream fields(expected); std::getline(fields, field, '|');) {
            const std::string code = field.substr(0, field.find('='));
            actual += (actual.empty() ? "" : "|") + code + "=" + Text(std::stoi(code));
        }
        EXPECT_EQ(actual, expected);
    }

    KxMeasurementSet& Measured() {
        EpisodeRecord* episode = test.AddEpisode(0, 12, 10, 500, 1000);
        episode->SetEndTimeMs(30000);
        episode->durationSeconds = 10;
        episode->measurements.measured = ~0u;
        return episode->measurements;
    }

    TestRecord test;
    TextTable texts;
    PictureLocale locale = Italian();
    SummaryRequest request{texts, locale};
};

}  // namespace kx::test
