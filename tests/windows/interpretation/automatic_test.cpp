// The automatic interpretation beside the statement: by the engine, by the report script, and by neither.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>

#include "lib/annotation_store.h"
#include "tests/windows/interpretation/pane_fixture.h"

namespace {

using kx::test::SuiteModule;
using testing::ElementsAre;
using testing::IsEmpty;

class Automatic : public kx::test::InterpretationPane {
  protected:
    Automatic() { hostOptions_[0] = 0; }
    // Everything that the engine needs.
    void MakeResting() {
        record_->AddEpisode(0, 12, 600, 1000, 1000)->durationSeconds = 10;
        record_->SetEcg("ecg", 3);
        record_->CreateAnnotations(4);
        answers_.interpret = [](KxMeasurementSet*, KxInterpretationResult* result, void*, std::uint32_t) {
            static_cast<kx::InterpretationResult*>(result)->SetText("Ritmo sinusale.\r\nQualit\xE0 buona.");
            return 1u;
        };
    }
    void MakeStress(const std::string& script) {
        record_->SetTestType(KX_TEST_STRESS);
        LayFile("stress.htm", "<BODY>");
        LayFile("stress.scr", script);
    }
    std::string Shown() { return Text(IDC_INTERP_AUTOMATIC); }
};

TEST_F(Automatic, AsksTheEngine) {
    MakeResting();
    auto engine = answers_.interpret;
    answers_.interpret = [&](KxMeasurementSet* set, KxInterpretationResult* result, void* store,
                             std::uint32_t zeros) {
        EXPECT_EQ(set, &record_->Episode(0)->measurements);
        EXPECT_EQ(result, &record_->Episode(0)->interpretation);
        EXPECT_EQ(store, record_->annotations);
        EXPECT_EQ(zeros, 0u);
        return engine(set, result, store, zeros);
    };
    Open();
    EXPECT_EQ(Shown(), "Ritmo sinusale.\r\nQualit\xE0 buona.");
    EXPECT_THAT(Reports(), IsEmpty());
    EXPECT_EQ(Statement(), "") << "the reviewer's text is his own";
    EXPECT_TRUE(record_->IsOriginal());
    EXPECT_NE(GetWindowLongA(kx::test::Item(pane_, IDC_INTERP_AUTOMATIC), GWL_STYLE) & ES_READONLY, 0);
}

TEST_F(Automatic, ReadsNoFartherThanTheResult) {
    MakeResting();
    answers_.interpret = [](KxMeasurementSet*, KxInterpretationResult* result, void*, std::uint32_t) {
        std::memset(result->text, 'a', sizeof result->text);
        std::memset(result->code, 'b', sizeof result->code);
        return 1u;
    };
    Open();
    EXPECT_EQ(Shown(), std::string(1023, 'a'));
}

TEST_F(Automatic, LeavesARestingTestWithout) {
    const struct {
        const char* name;
        std::function<void()> take;
        std::vector<std::string> reports;
    } rows[] = {
        {"left out by the host", [this] { hostOptions_[0] = 2; }, {}},
        {"left out without signal", [this] { hostOptions_[0] = 2, record_->ecg = nullptr; }, {}},
        {"no signal", [this] { record_->ecg = nullptr; }, {"LOGOEMERROR \"interp\" 1644 \"no ECG\""}},
        {"no episode", [this] { record_->ReleaseEpisodes(); }, {"LOGOEMERROR \"interp\" 1643 \"no cpx\""}},
        {"no signal nor episode",
         [this] { record_->ecg = nullptr, record_->ReleaseEpisodes(); },
         {"LOGOEMERROR \"interp\" 1644 \"no ECG\""}},
        {"an episode of no length",
         [this] { record_->Episode(0)->durationSeconds = 0; },
         {"LOGOEMERROR \"interp\" 1643 \"no cpx\""}},
        {"no annotations", [this] { record_->ReplaceAnnotations(nullptr); }, {}},
        {"the engine fails", [this] { answers_.interpret = nullptr; }, {"LOGSYSTEMERROR \"\""}},
    };
    for (const auto& row : rows) {
        record_ = std::make_unique<kx::TestRecord>();
        record_->SetTestType(KX_TEST_RESTING);
        hostOptions_[0] = 0;
        MakeResting();
        void* const signal = record_->ecg;
        row.take();
        ASSERT_NE(Open(), nullptr) << row.name;
        EXPECT_EQ(Shown(), "") << row.name;
        EXPECT_EQ(Reports(), row.reports) << row.name;
        Close();
        record_->ecg = signal;
    }
}

TEST_F(Automatic, ReportsAnEngineThatIsNotThere) {
    for (const SuiteModule module : {SuiteModule::kMissing, SuiteModule::kOutdated}) {
        LayModule("kxinterp.dll", module);
        record_ = std::make_unique<kx::TestRecord>();
        record_->SetTestType(KX_TEST_RESTING);
        MakeResting();
        ASSERT_NE(Open(), nullptr);
        EXPECT_EQ(Shown(), "");
        const std::vector<std::string> reports = Reports();
        ASSERT_EQ(reports.size(), 1u);
        EXPECT_THAT(reports[0], testing::StartsWith("LOGSYSTEMERROR \""));
        EXPECT_THAT(reports[0], testing::HasSubstr("kxinterp.dll"));
        Close();
    }
}

TEST_F(Automatic, RunsTheScript) {
    const std::string script = "linea 1\r\n" + std::string(10000, 's');
    MakeStress(script);
    answers_.createText = [&](const char* text, char* buffer, std::uint32_t size, KxTestRecord* test,
                              std::uint32_t zeros) {
        EXPECT_EQ(text, script);
        EXPECT_EQ(size, script.size() + 4096);
        EXPECT_EQ(test, record_.get());
        EXPECT_EQ(zeros, 0u);
        std::memset(buffer, 't', size);  // to the last byte, without a terminator
        return 1u;
    };
    Open();
    EXPECT_EQ(GetWindowTextLengthA(kx::test::Item(pane_, IDC_INTERP_AUTOMATIC)),
              static_cast<int>(script.size()) + 4095);
    EXPECT_THAT(Reports(), IsEmpty());
    Click(IDC_INTERP_INSERT_AUTOMATIC);
    EXPECT_EQ(Statement(), std::string(4095, 't'));
}

// An edit takes minutes for a line that is long enough.
TEST_F(Automatic, ShowsTheBeginningOfAnEndlessLine) {
    MakeStress(std::string(300000, 's'));
    answers_.createText = [&](const char*, char* buffer, std::uint32_t size, KxTestRecord*, std::uint32_t) {
        std::memset(buffer, 't', size);
        return 1u;
    };
    Open();
    const int shown = GetWindowTextLengthA(kx::test::Item(pane_, IDC_INTERP_AUTOMATIC));
    std::string text(static_cast<std::size_t>(shown) + 1, '\0');
    GetWindowTextA(kx::test::Item(pane_, IDC_INTERP_AUTOMATIC), text.data(), shown + 1);
    EXPECT_LT(shown, 40000);
    EXPECT_EQ(text.substr(0, 16000), std::string(16000, 't'));
    EXPECT_THAT(text, testing::HasSubstr("304095"));
    Click(IDC_INTERP_INSERT_AUTOMATIC);
    EXPECT_EQ(Statement(), std::string(4095, 't'));
}

TEST_F(Automatic, ReportsAScriptThatGivesNothing) {
    MakeStress("");
    Open();
    EXPECT_THAT(Reports(), ElementsAre("LOGOEMERROR \"interp\" 1669 \"interp\""));
    Close();
    LayModule("kxrender.dll", SuiteModule::kMissing);
    Open();
    EXPECT_THAT(Reports(), ElementsAre("LOGOEMERROR \"interp\" 1669 \"interp\""));
    Close();
    RemoveFile("stress.scr");
    Open();
    EXPECT_THAT(Reports(),
                ElementsAre("LOGOEMERROR \"interp\" 1672 \"" + kx::test::ProgramFolder() + "\\stress.scr\""));
    EXPECT_EQ(Shown(), "");
}

TEST_F(Automatic, LeavesTheOtherTypesWithout) {
    MakeResting();
    LayFile("holter.htm", "<BODY>");
    record_->SetTestType(KX_TEST_HOLTER);
    Open();
    EXPECT_EQ(Shown(), "");
    EXPECT_THAT(Reports(), IsEmpty());
}

}  // namespace
