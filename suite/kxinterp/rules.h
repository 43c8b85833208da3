// Which statement applies when, and what it means for the ECG as a whole. Portable.
#pragma once

#include <cstdint>
#include <span>

#include "suite/kxinterp/ecg.h"

namespace kx::interp {

// What a statement makes of the whole ECG; the heaviest one decides.
enum class Weight { kNote, kBorderline, kAbnormal };

// The numbers that fill a statement's placeholders, in order.
struct Values {
    int count = 0;
    int numbers[2] = {};
};

struct Rule {
    std::uint16_t code;  // of the statement: the string resource that holds its text
    Weight weight;
    bool (*applies)(const Ecg&);
    Values (*values)(const Ecg&);  // null: the statement has no placeholder
};

// In the order in which a report reads: rhythm, conduction, axis and voltage, chambers, infarction,
// repolarisation.
std::span<const Rule> Rules();

// Why an ECG cannot be interpreted at all; 0: it can.
std::uint16_t ReasonNotToInterpret(const Ecg& ecg);

// The statement that classifies an ECG whose heaviest statement weighs so much.
std::uint16_t ClassificationOf(Weight heaviest);

}  // namespace kx::interp
