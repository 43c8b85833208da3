#include "lib/annotation_store.h"

#include <random>

#include "lib/dbclient/test_record.h"
#include "tests/rig/recorded_reports.h"
#include "tests/unit/watched_memory.h"

namespace kx::test {
namespace {

using Times = std::vector<std::uint32_t>;

Times TimesOf(const AnnotationStore& store) {
    Times times;
    for (std::uint32_t i = 0; i < store.Count(); ++i) {
        times.push_back(store.Time(i));
    }
    return times;
}

struct NormalBeats : AnnotationStore {
    NormalBeats(std::uint32_t beats, std::uint32_t interval) : AnnotationStore(beats) {
        for (std::uint32_t i = 0; i < beats; ++i) {
            AppendBeat(0, 1, i * interval, 7);
        }
        ClearModified();
    }
};

TEST(AnnotationStore, AnswersWhatDoesNotExist) {
    NormalBeats store(2, 800);
    for (const std::uint32_t i : {2u, 3u, UINT32_MAX}) {
        std::uint32_t slot = 9;
        EXPECT_TRUE(store.Time(i) == 0 && store.Label(i) == 47 && store.LabelInLead(i, 17) == 47 && store.SubLabel(i) == -1) << i;
        EXPECT_TRUE(store.HeartRate(i) == 0 && store.Width(i) == 0 && store.QrsDurationMs(i) == 0 && store.LeadMask(i) == 0) << i;
        EXPECT_TRUE(store.StrongestLead(i, &slot) == 0 && slot == 0) << i;
        for (const auto& set : std::vector<std::function<void()>>{
                 [&] { store.SetTime(i, 1); }, [&] { store.SetLabel(i, 1, true); }, [&] { store.SetSubLabel(i, 1); },
                 [&] { store.SetHeartRate(i, 1); }, [&] { store.SetSubLabelAndLeadValue(i, 1, 1); }, [&] { store.SetWidth(i, 9); },
                 [&] { store.SetLeadWidth(17, i, 9); }, [&] { store.SetValue(17, i, &LeadBeat::offset1, 3); },
                 [&] { store.SetValue(UINT32_MAX, 0, &LeadBeat::offset1, 3); }}) {
            store.ClearModified();
            set();
            EXPECT_TRUE(store.IsModified());
        }
        store.ClearModified();
        store.UpdateHeartRate(i);
        store.RemoveAt(i);
        store.RemoveRange(i, UINT32_MAX);
        EXPECT_FALSE(store.IsModified());
    }
    EXPECT_EQ((Times{0, 800}), TimesOf(store));
    AnnotationStore nothing(0), entries(3, true);
    EXPECT_TRUE(entries.Append(1, 10) && entries.IsModified() && entries.Value(0, 0, &LeadBeat::leadValue) == 0);
    EXPECT_FALSE(nothing.Append(1, 0));
    EXPECT_FALSE(nothing.MarkSegment(0, 1));
}

// ---- beats in their leads

TEST(AnnotationStore, ShowsABeatInTheLeadsThatHoldIt) {
    AnnotationStore store(4);
    ASSERT_TRUE(store.AppendBeat(3, 50, 100, 0b101));
    EXPECT_EQ(1, store.Label(0));
    EXPECT_EQ(3, store.SubLabel(0));
    EXPECT_EQ(1, store.LabelInLead(0, 17));
    EXPECT_EQ(15, store.LabelInLead(0, 18));
    EXPECT_EQ(1, store.LabelInLead(0, 3)) << "not stored";
    EXPECT_EQ(0b101u, store.LeadMask(0));

    store.SetValue(19, 0, &LeadBeat::leadValue, 51);
    std::uint32_t slot = 0;
    EXPECT_EQ(51, store.StrongestLead(0, &slot));
    EXPECT_EQ(19u, slot);
    store.SetSubLabelAndLeadValue(0, 9, 33);
    EXPECT_EQ(9, store.SubLabel(0));
    EXPECT_EQ(33, store.StrongestLead(0, &slot));
    EXPECT_EQ(17u, slot) << "the first of equals";
    EXPECT_EQ(0, store.Value(18, 0, &LeadBeat::leadValue));

    AnnotationStore twelve(4, false);
    const std::uint32_t leads[] = {0, 11, 17, 20, UINT32_MAX};
    ASSERT_TRUE(twelve.AppendBeat(3, -50, 100, 5, leads));
    AnnotationStore below(4);
    below.AppendBeat(3, -50, 100, 0b111);
    EXPECT_EQ(0, below.StrongestLead(0, &slot)) << "over all 20 slots";
    EXPECT_EQ(0u, slot);
    EXPECT_EQ(-50, twelve.Value(11, 0, &LeadBeat::leadValue));
    EXPECT_EQ(0, twelve.StrongestLead(0, &slot)) << "a lead that is not stored has 0";
    EXPECT_EQ(1u, slot);
}

TEST(AnnotationStore, KeepsWidthsByHalves) {
    NormalBeats store(2, 800);
    for (const auto& [set, read] : std::vector<std::pair<std::int32_t, std::uint32_t>>{
             {-1, 0}, {0, 0}, {1, 0}, {97, 96}, {255, 254}, {256, 254}, {INT32_MAX, 254}, {INT32_MIN, 0}}) {
        store.SetWidth(1, set);
        EXPECT_EQ(read, store.Width(1)) << set;
        EXPECT_EQ(read, store.LeadWidth(19, 1)) << set;
    }
    EXPECT_EQ(0u, store.Width(0));
    for (const std::uint8_t label : std::initializer_list<std::uint8_t>{1, 11, 12, 13, 20, 21, 22}) {
        store.SetLabel(0, label);
        store.SetWidth(0, 40);
        store.SetLeadWidth(18, 0, 60);
        const bool fixed = label == 12 || label == 20 || label == 21;
        EXPECT_EQ(fixed ? 40u : 60u, store.LeadWidth(18, 0)) << int{label};
    }
}

TEST(AnnotationStore, ReadsMillisecondsAndMicrovolts) {
    NormalBeats store(1, 0);
    store.SetValue(17, 0, &LeadBeat::amplitude1, 1000);
    store.SetValue(17, 0, &LeadBeat::amplitude5, -3);
    EXPECT_EQ(1220, store.AmplitudeMicrovolts(17, 0, &LeadBeat::amplitude1));
    EXPECT_EQ(-4, store.AmplitudeMicrovolts(17, 0, &LeadBeat::amplitude5));  // -3.66
    EXPECT_EQ(0, store.AmplitudeMicrovolts(3, 0, &LeadBeat::amplitude1));

    store.SetValue(17, 0, &LeadBeat::onsetOffset, -10);
    store.SetValue(18, 0, &LeadBeat::onsetOffset, -12);
    store.SetValue(19, 0, &LeadBeat::onsetOffset, 5);
    EXPECT_EQ(-42, store.OffsetMs(17, 0, &LeadBeat::onsetOffset));  // -41.67
    EXPECT_EQ(0, store.QrsDurationMs(0)) << "no end";
    store.SetValue(17, 0, &LeadBeat::endOffset, 200);
    EXPECT_EQ(883, store.QrsDurationMs(0));  // 212 samples of 240 a second
    store.SetSampling(1000, 1000);
    EXPECT_EQ(212, store.QrsDurationMs(0));
    store.SetSampling(0, UINT32_MAX);
    EXPECT_EQ(0, store.QrsDurationMs(0));
    EXPECT_EQ(0, store.OffsetMs(17, 0, &LeadBeat::endOffset));
    EXPECT_EQ(-6442451, store.AmplitudeMicrovolts(17, 0, &LeadBeat::amplitude5));
}

// Adding and removing, against a list of whole beats.
TEST(AnnotationStore, KeepsBeatsInOrderOfTimeThroughInsertionsAndRemovals) {
    struct Beat {
        std::uint32_t time;
        std::uint8_t label;
        std::int16_t tag[3];  // value8 in slots 17 to 19
        bool operator==(const Beat&) const = default;
    };
    std::mt19937 random(42);
    const auto upTo = [&random](std::uint32_t most) { return static_cast<std::uint32_t>(random() % (std::uint64_t{most} + 1)); };
    AnnotationStore store(0);
    std::vector<Beat> model;
    std::int16_t tag = 0;
    for (int step = 0; step < 6000; ++step) {
        const std::uint32_t action = upTo(99), chosen = upTo(static_cast<std::uint32_t>(model.size()));
        const auto label = static_cast<std::uint8_t>(upTo(3));
        if (action < 65) {
            const std::uint32_t t = upTo(1) == 0 ? upTo(50) : upTo(UINT32_MAX);
            const auto before = std::ranges::lower_bound(model, t, {}, &Beat::time);
            const auto index = static_cast<std::uint32_t>(before - model.begin());
            Beat beat{t, label, {}};
            ASSERT_EQ(index, store.Insert(label, t)) << step;
            for (std::uint32_t channel = 0; channel < 3; ++channel) {
                ASSERT_EQ(0, store.Value(17 + channel, index, &LeadBeat::value8)) << "a new beat is not measured yet";
                store.SetValue(17 + channel, index, &LeadBeat::value8, beat.tag[channel] = ++tag);
            }
            model.insert(before, beat);
        } else if (action < 72 && chosen < model.size()) {
            store.RemoveAt(chosen);
            model.erase(model.begin() + chosen);
        } else if (action < 80 && chosen < model.size()) {
            const auto alike = [wanted = model[chosen]](const Beat& b) { return b.time == wanted.time && b.label == wanted.label; };
            ASSERT_TRUE(store.Remove(model[chosen].label, model[chosen].time));
            model.erase(std::ranges::find_if(model, alike));
        } else if (action == 80) {
            EXPECT_EQ(std::ranges::count(model, label, &Beat::label), store.CountOfLabel(label));
            store.RemoveLabel(label);
            std::erase_if(model, [label](const Beat& b) { return b.label == label; });
        } else if (action == 81) {
            const auto size = static_cast<std::uint32_t>(model.size()), to = chosen + upTo(12);
            store.RemoveRange(chosen, to);
            model.erase(model.begin() + chosen, model.begin() + std::min(to + 1, size));
        }
        std::vector<Beat> held;
        for (std::uint32_t i = 0; i < store.Count(); ++i) {
            const auto value = [&](std::uint32_t slot) { return static_cast<std::int16_t>(store.Value(slot, i, &LeadBeat::value8)); };
            held.push_back({store.Time(i), static_cast<std::uint8_t>(store.Label(i)), {value(17), value(18), value(19)}});
        }
        ASSERT_TRUE(held == model) << step;
    }
    EXPECT_FALSE(store.Remove(9, 9));
    EXPECT_GT(store.Capacity(), 100u);
}

TEST(AnnotationStore, GrowsByTenWhenFull) {
    NormalBeats store(5, 100);
    store.SetValue(18, 4, &LeadBeat::value8, 4);
    EXPECT_FALSE(store.Append(1, 900));
    EXPECT_EQ(2u, store.Insert(1, 150));
    EXPECT_EQ(15u, store.Capacity());
    EXPECT_EQ(0u, store.LeadMask(2));
    for (std::uint32_t n = store.Count(); n < 400; ++n) {
        ASSERT_TRUE(store.Insert(1, n * 100));
        ASSERT_EQ(5 + (n + 5) / 10 * 10, store.Capacity()) << n;
    }
    EXPECT_EQ(4, store.Value(18, 5, &LeadBeat::value8));
}

TEST(AnnotationStore, LeavesTheTwelveLeadFormAtItsCapacity) {
    AnnotationStore store(2, false);
    store.Append(1, 100);
    store.Append(1, 200);
    store.SetValue(11, 1, &LeadBeat::value8, 7);
    ASSERT_EQ(2u, store.Insert(1, 300));
    ASSERT_TRUE(store.Append(1, 400));
    EXPECT_EQ(7, store.Value(11, 1, &LeadBeat::value8));
    store.SetValue(11, 2, &LeadBeat::value8, 8);
    store.SetLabel(3, 5, true);
    EXPECT_EQ(0, store.Value(11, 2, &LeadBeat::value8)) << "absent";
    EXPECT_EQ(5, store.LabelInLead(3, 11));
}

TEST(AnnotationStore, MarksSegmentsAndExtendsTheOpenOne) {
    AnnotationStore store(5);
    ASSERT_TRUE(store.Append(1, 100));
    ASSERT_TRUE(store.MarkSegment(200, 300));
    EXPECT_EQ((Times{100, 200, 300}), TimesOf(store));
    EXPECT_EQ(-3, store.SubLabel(1));
    EXPECT_EQ(-2, store.SubLabel(2));
    EXPECT_EQ(15, store.Label(1));
    ASSERT_TRUE(store.InsertSegment(400, 500));
    EXPECT_EQ((Times{100, 200, 500}), TimesOf(store)) << "the segment was still open";
    ASSERT_TRUE(store.Append(1, 600));
    EXPECT_FALSE(store.MarkSegment(700, 800)) << "both must fit";
    EXPECT_EQ(4u, store.Count());

    AnnotationStore ordered(5);
    ordered.Append(1, 100);
    ordered.Append(1, 400);
    ASSERT_TRUE(ordered.InsertSegment(200, 200));
    EXPECT_EQ((Times{100, 200, 200, 400}), TimesOf(ordered));
    EXPECT_EQ(-3, ordered.SubLabel(1));
    EXPECT_EQ(-2, ordered.SubLabel(2));
    AnnotationStore tight(4);
    tight.Append(1, 100);
    tight.Append(1, 400);
    EXPECT_FALSE(tight.InsertSegment(200, 300)) << "one place must be left over";
}

TEST(AnnotationStore, TellsTheHeartRateFromNormalBeatsAround) {
    const struct {
        const char* name;
        Times times;
        std::vector<std::uint8_t> labels;
        std::uint32_t at;
        std::uint16_t rate;
    } rows[] = {{"steady", {0, 800, 1600, 2400, 3200, 4000, 4800, 5600}, {1, 1, 1, 1, 1, 1, 1, 1}, 3, 75},
                {"three to each side", {0, 1000, 2000, 3000, 4000, 5000, 6000, 6001}, {1, 1, 1, 1, 1, 1, 1, 1}, 3, 60},
                {"first", {0, 500, 1000, 1500, 9000}, {1, 1, 1, 1, 1}, 0, 120},
                {"last", {0, 7000, 7500, 8000, 8500}, {1, 1, 1, 1, 1}, 4, 120},
                {"up to the beat that is not normal", {0, 1000, 1500, 2000, 9000}, {1, 5, 1, 5, 1}, 2, 120},
                {"rounded", {0, 700}, {1, 1}, 0, 86},  // 85.7
                {"not a normal beat", {0, 800, 1600}, {1, 5, 1}, 1, 9},
                {"alone", {500}, {1}, 0, 9},
                {"no time between", {500, 500, 500}, {1, 1, 1}, 1, 9},
                {"out of order", {500, 400}, {1, 1}, 0, 9},
                {"beyond 16 bits", {0, 0, 1}, {1, 1, 1}, 1, 65535}};
    for (const auto& row : rows) {
        AnnotationStore store(static_cast<std::uint32_t>(row.times.size()));
        for (std::size_t i = 0; i < row.times.size(); ++i) {
            store.Append(row.labels[i], row.times[i]);
        }
        store.SetHeartRate(row.at, 9);
        store.ClearModified();
        store.UpdateHeartRate(row.at);
        EXPECT_EQ(row.rate, store.HeartRate(row.at)) << row.name;
        EXPECT_EQ(row.rate != 9, store.IsModified()) << row.name;
    }
}

TEST(AnnotationStore, ChangesNothingWhenMemoryIsShort) {
    NormalBeats store(5, 100);
    for (int allocationsLeft = 0; allocationsLeft < 4; ++allocationsLeft) {
        const FailingMemory failing(allocationsLeft);
        EXPECT_EQ(std::nullopt, store.Insert(1, 50)) << allocationsLeft;
        EXPECT_EQ(5u, store.Capacity());
        EXPECT_EQ((Times{0, 100, 200, 300, 400}), TimesOf(store));
        EXPECT_FALSE(store.IsModified());
    }
    for (int allocationsLeft = 0; allocationsLeft < 4; ++allocationsLeft) {
        const FailingMemory failing(allocationsLeft);
        AnnotationStore partial(2);
        EXPECT_EQ(allocationsLeft > 0, partial.Append(1, 100));
        EXPECT_EQ(allocationsLeft > 0, partial.Insert(1, 50).has_value());
        partial.SetLabel(0, 1, true);
        EXPECT_EQ((1u << std::max(0, allocationsLeft - 1)) - 1, partial.LeadMask(0)) << allocationsLeft;
        partial.RemoveRange(0, 1);
        EXPECT_EQ(0u, partial.Count());
    }
}

// The sanitizer sees a store that is freed twice or never.
TEST(RecordAnnotations, AreMadeReplacedAndFreedWithTheRecord) {
    TestRecord test;
    RecordedReports reports;
    EXPECT_TRUE(test.Annotations() == nullptr && test.Annotations2() == nullptr && !test.SetCurrentAnnotation(0, reports));
    ASSERT_TRUE(test.CreateAnnotations(4)->AppendBeat(0, 1, 100, 0b111) && test.CreateAnnotations2(2, false) != nullptr);
    EXPECT_EQ(1u, test.Annotations()->Count());
    EXPECT_EQ(0u, test.CreateAnnotations(3, true)->Count());
    EXPECT_EQ(0u, test.CreateAnnotations2(3)->Count());
    auto made = std::make_unique<AnnotationStore>(9);
    AnnotationStore* const address = made.get();
    EXPECT_EQ(address, test.ReplaceAnnotations(std::move(made)));
    EXPECT_TRUE(test.ReplaceAnnotations2(nullptr) == nullptr && test.Annotations2() == nullptr);
    EXPECT_TRUE(test.SetCurrentAnnotation(0, reports)) << "also of an empty store";
    EXPECT_FALSE(test.IsModified());
    test.Annotations()->Append(1, 100);
    test.Annotations()->Append(1, 200);
    EXPECT_TRUE(test.SetCurrentAnnotation(1, reports) && test.IsModified());
    EXPECT_FALSE(test.SetCurrentAnnotation(2, reports) || test.SetCurrentAnnotation(UINT32_MAX, reports));
    EXPECT_EQ(1u, test.currentAnnotation);
    EXPECT_EQ(3u, reports.Take().size());
}

}  // namespace
}  // namespace kx::test
