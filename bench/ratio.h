// How a benchmark measures: the subject against a floor, both in the same run and by turns, so that a busy or
// a slow machine changes both.
#pragma once

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <limits>

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

// Rounds of each, of which the fastest counts: whatever else the machine does only adds, and a call that
// waits for another process adds most. A round repeats its work until it lasts about this long, which is far
// above the resolution of the clock.
inline constexpr int kRounds = 301;
inline constexpr int kUndoneRounds = 41;  // of calls that take milliseconds
inline constexpr double kRoundNs = 1e6;
inline constexpr int kMostRepetitions = 1 << 22;
inline constexpr double kNever = std::numeric_limits<double>::infinity();

struct Measured {
    double floorNs = 0;  // of the fastest round, per call
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

struct Nothing {
    void operator()() const {}
};

// Measures two callables without arguments by turns. Work that must be prepared anew for each call belongs
// into both. pause: runs between the rounds and does not count.
template <typename Floor, typename Subject, typename Pause = Nothing>
Measured Measure(Floor&& floor, Subject&& subject, Pause&& pause = {}) {
    const int floorCalls = RepetitionsOf(floor);
    const int subjectCalls = RepetitionsOf(subject);
    Measured fastest{kNever, kNever};
    for (int round = 0; round < kRounds; ++round) {
        pause();
        fastest.floorNs = std::min(fastest.floorNs, TimeCalls(floor, floorCalls) / floorCalls);
        pause();
        fastest.subjectNs = std::min(fastest.subjectNs, TimeCalls(subject, subjectCalls) / subjectCalls);
    }
    return fastest;
}

// Nanoseconds a call takes, for what is held against a time and not against other work.
template <typename Subject>
double MeasureAlone(Subject&& subject) {
    const int calls = RepetitionsOf(subject);
    double fastest = kNever;
    for (int round = 0; round < kUndoneRounds; ++round) {
        fastest = std::min(fastest, TimeCalls(subject, calls) / calls);
    }
    return fastest;
}

// As Measure, for calls of milliseconds whose effect must be undone before the next: one call a round, after
// which its own undoing runs and does not count.
template <typename Floor, typename UndoFloor, typename Subject, typename UndoSubject>
Measured MeasureUndone(Floor&& floor, UndoFloor&& undoFloor, Subject&& subject, UndoSubject&& undoSubject) {
    Measured fastest{kNever, kNever};
    for (int round = 0; round < kUndoneRounds; ++round) {
        fastest.floorNs = std::min(fastest.floorNs, TimeCalls(floor, 1));
        undoFloor();
        fastest.subjectNs = std::min(fastest.subjectNs, TimeCalls(subject, 1));
        undoSubject();
    }
    return fastest;
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
