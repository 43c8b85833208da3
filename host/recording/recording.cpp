#include "host/recording/recording.h"

#include <algorithm>

namespace kx::recording {

void DeriveLeads(Recording& recording) {
    const std::vector<float>& one = recording.leads[kLeadI];
    const std::vector<float>& two = recording.leads[kLeadII];
    const std::size_t count = std::min(one.size(), two.size());
    const auto fill = [&](Lead lead, float ofOne, float ofTwo) {
        if (!recording.derived[lead]) {
            return;
        }
        recording.leads[lead].resize(count);
        for (std::size_t i = 0; i < count; ++i) {
            recording.leads[lead][i] = ofOne * one[i] + ofTwo * two[i];
        }
    };
    fill(kLeadIII, -1.0f, 1.0f);
    fill(kLeadAVR, -0.5f, -0.5f);
    fill(kLeadAVL, 1.0f, -0.5f);
    fill(kLeadAVF, -0.5f, 1.0f);
}

}  // namespace kx::recording
