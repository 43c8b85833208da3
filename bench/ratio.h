// How a benchmark measures: the subject against a floor, both in the same run and by turns, so that a busy or
// a slow machine changes both.
#pragma once

#include <algorithm>
#include <chrono>
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

// Rounds of each; an odd number, so that the median is one of them. A round repeats its work until it lasts
// about this long, which is far above the resolution of the clock.
inline constexpr int kRounds = 31;
inline constexpr double kRoundNs = 1e6;
inline constexpr int kMostRepetitions = 1 << 22;

struct Measured {
    double floorNs = 0;  // medians over the rounds, per call
    double subjectNs = 0;
    double Ratio() const { return floorNs > 0 ? subjectNs / floorNs : 0; }
};

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

// Measures two callables without arguments by turns. Work that must be prepared anew for each call belongs
// into both.
template <typename Floor, typename Subject>
Measured Measure(Floor&& floor, Subject&& subject) {
    const int floorCalls = RepetitionsOf(floor);
    const int subjectCalls = RepetitionsOf(subject);
    std::vector<double> floors, subjects;
    for (int round = 0; round < kRounds; ++round) {
        floors.push_back(TimeCalls(floor, floorCalls) / floorCalls);
        subjects.push_back(TimeCalls(subject, subjectCalls) / subjectCalls);
    }
    const auto median = [](std::vector<double>& values) {
        std::nth_element(values.begin(), values.begin() + kRounds / 2, values.end());
        return values[kRounds / 2];
    };
    return {median(floors), median(subjects)};
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

}  // namespace kx::bench
