// The fields of a spirometry.
#include <cmath>
#include <iterator>

#include "lib/dbclient/summary_fields.h"

namespace kx {

namespace {

// The values take the codes on both sides of the one that names the predicted values.
constexpr int kFirstValueCode = 579;
constexpr int kPredictedSetCode = 610;
constexpr int kLastValueCode = 621;
static_assert(kLastValueCode - kFirstValueCode == KX_SPIROMETRY_VALUES);

// Larger than any volume or flow: no value.
constexpr double kValueLimit = 1e6;

constexpr const char* kPredictedSets[] = {
    "Zapletal",
    "Egks92",
    "Knudson",
    "Forche",
    "Viljanen",
    "NhanesIII",
    "Wanne",
    "Brazil (Pereira/Mallozi)",
    "European respiratory society",
    "User values",
};

void PutValue(const SummaryOutput& output, double value) {
    if (std::fabs(value) < kValueLimit) {
        output.Print("%5.2f", value);
    } else {
        output.PutMissing();
    }
}

}  // namespace

bool RenderSpirometryField(const SummaryOutput& output) {
    if (output.code < kFirstValueCode || output.code > kLastValueCode) {
        return false;
    }
    const KxSpirometry* block = output.test.Spirometry();
    if (block == nullptr) {
        output.PutMissing();
    } else if (output.code == kPredictedSetCode) {
        const bool named = block->predictedSet < std::size(kPredictedSets);
        output.Put(named ? kPredictedSets[block->predictedSet] : "Unknown values");
    } else {
        const int index = output.code - kFirstValueCode - (output.code > kPredictedSetCode ? 1 : 0);
        PutValue(output, block->values[index]);
    }
    return true;
}

}  // namespace kx
