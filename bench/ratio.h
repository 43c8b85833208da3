// How a benchmark measures: the subject against a floor, both in the same run and by turns, so that a busy or
// a slow machine changes both.
#pragma once

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdio>
#include <vector>

namespace kx::bench {

// Keeps the compiler from leaving out work whose result nobody reads, and from doing it once for all rounds:
// a number that is kept must be computed, and what stands behind a pointer that came through Fresh may be
// anything.
inline void Keep(double result) {
    [[maybe_unused]] static volatile double kept;
    kept = result;
}
template <typename T>
T* Fresh(T* data) {
    T* volatile unknown = data;
    return unknown;
}

// Rounds of floor and subject side by side; the middle one of their ratios counts. What comes and goes while
// a machine works meets both sides of a round alike, and no single fast or slow one decides, as it would
// between the two fastest of all. A round repeats its work until it lasts about this long, which is far above
// the resolution of the clock.
inline constexpr int kRounds = 1001;
inline constexpr int kUndoneRounds = 41;  // of calls that take milliseconds
inline constexpr int kWarmUpRounds = 10;
inline constexpr std::chrono::seconds kLongEnough{15};  // for one line; fewer rounds of what is slow will do
inline constexpr double kRoundNs = 2e5;
inline constexpr int kMostRepetitions = 1 << 22;

struct Measured {
    double floorNs = 0;  // per call
    double subjectNs = 0;
    double Ratio() const { return floorNs > 0 ? subjectNs / floorNs : 0; }
};

// The round whose ratio is the middle one.
inline Measured Middle(std::vector<Measured>& rounds) {
    const auto middle = rounds.begin() + static_cast<std::ptrdiff_t>(rounds.size() / 2);
    std::nth_element(rounds.begin(), middle, rounds.end(),
                     [](const Measured& a, const Measured& b) { return a.Ratio() < b.Ratio(); });
    return *middle;
}

// Nanoseconds that `repetitions` calls take.
template <typename Work>
double TimeCalls(Work&& work, int repetitions) {
    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < repetitions; ++i) {
        work();
    }
    const auto end = std::chrono::steady_clock::now();
    return std::chrono::duration<double, std::nano>(end - start).count();
}

// How many calls fill a round. Warms the caches up on the way.
template <typename Work>
int RepetitionsOf(Work&& work) {
    int repetitions = 1;
    while (repetitions < kMostRepetitions && TimeCalls(work, repetitions) < kRoundNs) {
        repetitions *= 2;
    }
    return repetitions;
}

struct Nothing {
    void operator()() const {}
};

// Measures two callables without arguments by turns, each first in every other round. Work that must be
// prepared anew for each call belongs into both. pause: runs between them and does not count.
template <typename Floor, typename Subject, typename Pause = Nothing>
Measured Measure(Floor&& floor, Subject&& subject, Pause&& pause = {}) {
    const int floorCalls = RepetitionsOf(floor);
    pause();
    const int subjectCalls = RepetitionsOf(subject);
    std::vector<Measured> rounds;
    const auto start = std::chrono::steady_clock::now();
    const auto isLong = [&] { return std::chrono::steady_clock::now() - start > kLongEnough; };
    for (int round = -kWarmUpRounds; round < kRounds && (round < kUndoneRounds || !isLong()); ++round) {
        Measured measured;
        for (const bool isFloor : {round % 2 == 0, round % 2 != 0}) {
            pause();
            if (isFloor) {
                measured.floorNs = TimeCalls(floor, floorCalls) / floorCalls;
            } else {
                measured.subjectNs = TimeCalls(subject, subjectCalls) / subjectCalls;
            }
        }
        if (round >= 0) {
            rounds.push_back(measured);
        }
    }
    return Middle(rounds);
}

// Nanoseconds a call takes in the middle one of the rounds, for what is held against a time and not against
// other work.
template <typename Subject>
double MeasureAlone(Subject&& subject) {
    const int calls = RepetitionsOf(subject);
    std::vector<double> rounds;
    for (int round = 0; round < kUndoneRounds; ++round) {
        rounds.push_back(TimeCalls(subject, calls) / calls);
    }
    const auto middle = rounds.begin() + kUndoneRounds / 2;
    std::nth_element(rounds.begin(), middle, rounds.end());
    return *middle;
}

// As Measure, for calls of milliseconds whose effect must be undone before the next: one call a round, after
// which its own undoing runs and does not count.
template <typename Floor, typename UndoFloor, typename Subject, typename UndoSubject>
Measured MeasureUndone(Floor&& floor, UndoFloor&& undoFloor, Subject&& subject, UndoSubject&& undoSubject) {
    std::vector<Measured> rounds;
    for (int round = 0; round < kUndoneRounds; ++round) {
        Measured measured;
        measured.floorNs = TimeCalls(floor, 1);
        undoFloor();
        measured.subjectNs = TimeCalls(subject, 1);
        undoSubject();
        rounds.push_back(measured);
    }
    return Middle(rounds);
}

// One line of the report: name, the floor's and the subject's nanoseconds a call, their ratio, the largest
// ratio that is accepted. tools/bench.sh sets the lines out and marks those over their target.
inline void PrintLine(const char* name, const Measured& measured, double target) {
    std::printf("%s  %.0f  %.0f  %.2f  %.2f\n", name, measured.floorNs, measured.subjectNs, measured.Ratio(),
                target);
    std::fflush(stdout);
}

template <typename Floor, typename Subject>
void Run(const char* name, double target, Floor&& floor, Subject&& subject) {
    PrintLine(name, Measure(floor, subject), target);
}

// The line of something that is counted, or compared by another measure than time: in the ratio's column
// stands what was found, in the target's the most that is accepted.
inline void PrintCount(const char* name, double count, double most) {
    std::printf("%s  -  -  %.2f  %.2f\n", name, count, most);
    std::fflush(stdout);
}

}  // namespace kx::bench
