// Each method of a binding calls the export of its name with its own arguments in order and returns the
// result.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

#include "lib/modules/analysis_engine.h"
#include "lib/modules/database_services.h"
#include "lib/modules/interpretation_engine.h"
#include "lib/modules/render_services.h"
#include "lib/modules/system_services.h"
#include "tests/windows/modules/spy.h"

namespace {

using kxtest::Reports;
using kxtest::Spy;

// Wider than 31 bits, so that a result is seen to pass whole.
constexpr std::uint32_t kAnswer = 0xFEDC1234;

template <class Binding>
struct Row {
    const char* expected;
    std::function<std::uint32_t(Binding&)> call;
};

template <class Binding>
void ExpectCalls(Binding& binding, const Spy& spy, const std::vector<Row<Binding>>& rows) {
    for (const auto& row : rows) {
        spy.Reset(kAnswer);
        EXPECT_EQ(row.call(binding), kAnswer) << row.expected;
        EXPECT_EQ(spy.Calls(), row.expected);
        EXPECT_STREQ(binding.ErrorText(), "") << row.expected;
    }
}

template <class Pointer>
Pointer* Address(std::uint32_t value) {
    return reinterpret_cast<Pointer*>(value);
}

TEST(SystemServices, PassesEveryExportItsArguments) {
    using S = kx::SystemServices;
    const Spy spy("kxsys.dll");
    S services(nullptr);
    auto* const owner = Address<kx::Window>(1001);
    ExpectCalls<S>(services, spy,
                   {{"DISPLAY(1,2);", [](S& s) { return s.DISPLAY(1, 2); }},
                    {"LOGMEMORYERROR(qrsmrph,740);", [](S& s) { return s.LOGMEMORYERROR("qrsmrph", 740); }},
                    {"LOGEXCEPTION(TableDialog);", [](S& s) { return s.LOGEXCEPTION("TableDialog"); }},
                    {"LOGINFORMATION(a);", [](S& s) { return s.LOGINFORMATION("a"); }},
                    {"SHOWINFORMATION(1001,b);", [=](S& s) { return s.SHOWINFORMATION(owner, "b"); }},
                    {"LOGSYSTEMERROR(c);", [](S& s) { return s.LOGSYSTEMERROR("c"); }},
                    {"SHOWSYSTEMERROR(1001,d);", [=](S& s) { return s.SHOWSYSTEMERROR(owner, "d"); }},
                    {"LOGOEMMESSAGE(e);", [](S& s) { return s.LOGOEMMESSAGE("e"); }},
                    {"LOGOEMERROR(hyptrphy,422,no Wpar or tst);",
                     [](S& s) { return s.LOGOEMERROR("hyptrphy", 422, "no Wpar or tst"); }},
                    {"INQUIRE(1001,f,3);", [=](S& s) { return s.INQUIRE(owner, "f", 3); }},
                    {"LOGSERVICESTART(g);", [](S& s) { return s.LOGSERVICESTART("g"); }},
                    {"LOGSERVICESTOP(h);", [](S& s) { return s.LOGSERVICESTOP("h"); }},
                    {"LOGTHREADSTART(4294967295);", [](S& s) { return s.LOGTHREADSTART(0xFFFFFFFF); }},
                    {"LOGTHREADSTOP(5);", [](S& s) { return s.LOGTHREADSTOP(5); }},
                    {"LOGCOMWRITE(6,7);", [](S& s) { return s.LOGCOMWRITE(6, 7); }},
                    {"LOGCOMREAD(8,9);", [](S& s) { return s.LOGCOMREAD(8, 9); }},
                    {"SENDEMAIL(10,11);", [](S& s) { return s.SENDEMAIL(10, 11); }}});
}

class StringIds : public testing::Test {
  protected:
    void TearDown() override { library_.instance.Free(); }
    kx::LibraryModule library_{LoadLibraryA("kxresources.dll")};
    Spy spy_{"kxsys.dll"};
    kx::SystemServices services_{&library_};
};

TEST_F(StringIds, StandForTheTextTheyName) {
    using S = kx::SystemServices;
    auto* const owner = Address<kx::Window>(1001);
    constexpr std::uint32_t kText = 100;
    constexpr std::uint32_t kNoText = 999;
    ExpectCalls<S>(
        services_, spy_,
        {{"LOGSERVICESTART(Ampiezza pi\xF9 alta);", [](S& s) { return s.LOGSERVICESTART(kText); }},
         {"INQUIRE(1001,Ampiezza pi\xF9 alta,4);", [=](S& s) { return s.INQUIRE(owner, kText, 4); }},
         {"LOGINFORMATION();", [](S& s) { return s.LOGINFORMATION(kNoText); }}});
}

TEST_F(StringIds, CutTheTextAt255Characters) {
    constexpr std::uint32_t kLongText = 101;
    std::string whole;
    for (int i = 0; i < 10; ++i) {
        whole += "0123456789abcdefghijABCDEFGHIJ";
    }
    spy_.Reset(0);
    services_.LOGINFORMATION(kLongText);
    EXPECT_EQ(spy_.Calls(), "LOGINFORMATION(" + whole.substr(0, 255) + ");");
}

TEST(DatabaseServices, PassesEveryExportItsArguments) {
    using D = kx::DatabaseServices;
    const Spy spy("kxdb.dll");
    D database;
    static Reports reports;
    auto* const r = Address<void>(1001);
    ExpectCalls<D>(database, spy,
                   {{"TEST_ADD(1001);", [=](D& d) { return d.TEST_ADD(r); }},
                    {"TEST_FETCH(1001);", [=](D& d) { return d.TEST_FETCH(r); }},
                    {"TEST_LIST(1,2,3,4,5);", [](D& d) { return d.TEST_LIST(1, 2, 3, 4, 5); }},
                    {"PHYS_ADD(1001);", [=](D& d) { return d.PHYS_ADD(r); }},
                    {"PHYS_LIST(7,1001,1024);", [=](D& d) { return d.PHYS_LIST(7, r, 1024); }},
                    {"QUEUE_ADD(1001);", [=](D& d) { return d.QUEUE_ADD(r); }},
                    {"QUEUE_LIST(7,1001,8);", [=](D& d) { return d.QUEUE_LIST(7, r, 8); }},
                    {"RPT_ADD(1001);", [=](D& d) { return d.RPT_ADD(r); }},
                    {"RPT_FETCH(1001);", [=](D& d) { return d.RPT_FETCH(r); }},
                    {"RPT_LIST(7,1001,8);", [=](D& d) { return d.RPT_LIST(7, r, 8); }},
                    {"CONFIG();", [](D& d) { return d.CONFIG(); }},
                    {"RESET();", [](D& d) { return d.RESET(reports); }},
                    {"CLIN_ADD(1001);", [=](D& d) { return d.CLIN_ADD(r); }},
                    {"CLIN_LIST(1001,8);", [=](D& d) { return d.CLIN_LIST(r, 8); }},
                    {"TECH_ADD(1001);", [=](D& d) { return d.TECH_ADD(r); }},
                    {"TECH_LIST(1001,1024);", [=](D& d) { return d.TECH_LIST(r, 1024); }}});
    EXPECT_TRUE(reports.texts.empty());
}

TEST(RenderServices, PassesEveryExportItsArguments) {
    using R = kx::RenderServices;
    const Spy spy("kxrender.dll");
    R render;
    ExpectCalls<R>(render, spy,
                   {{"RENDEROUTPUT(1,2,3,4,5);", [](R& r) { return r.RENDEROUTPUT(1, 2, 3, 4, 5); }},
                    {"CREATEIMAGE(1,2,3,4,5,6);", [](R& r) { return r.CREATEIMAGE(1, 2, 3, 4, 5, 6); }},
                    {"CREATETEXT(script,2002,4096,4004,5,6);",
                     [](R& r) {
                         return r.CREATETEXT("script", Address<char>(2002), 4096, Address<KxTestRecord>(4004),
                                             5, 6);
                     }},
                    {"CREATEIMAGEEX(1,2,3,4);", [](R& r) { return r.CREATEIMAGEEX(1, 2, 3, 4); }}});
}

TEST(InterpretationEngine, PassesItsExportItsArguments) {
    using I = kx::InterpretationEngine;
    const Spy spy("kxinterp.dll");
    I interpreter;
    ExpectCalls<I>(interpreter, spy, {{"INTERPRET(1001,2002,3003,4,5,6);", [](I& i) {
                                           return i.INTERPRET(Address<KxMeasurementSet>(1001),
                                                              Address<KxInterpretationResult>(2002),
                                                              Address<void>(3003), 4, 5, 6);
                                       }}});
}

TEST(AnalysisEngine, PassesEveryExportItsArguments) {
    using A = kx::AnalysisEngine;
    const Spy spy("kxanalyze.dll");
    A engine;
    static Reports reports;
    auto* const episode = Address<KxEpisodeRecord>(1001);
    ExpectCalls<A>(engine, spy,
                   {{"ATTACHPIPE(7);", [](A& a) { return a.ATTACHPIPE(7); }},
                    {"TEMPLATERESET(8);", [](A& a) { return a.TEMPLATERESET(8); }},
                    {"MEASUREEPISODE(1001);", [=](A& a) { return a.MEASUREEPISODE(episode); }},
                    {"UPDATEDETECTION(1001);", [=](A& a) { return a.UPDATEDETECTION(episode); }},
                    {"REMOVEPIPE();", [](A& a) { return a.REMOVEPIPE(reports); }}});
    EXPECT_TRUE(reports.texts.empty());
}

}  // namespace
