#include "host/tracing/tracing_signal.h"

#include <cstring>

#include "host/recording/ecg_block.h"
#include "lib/beat_labels.h"

namespace kxhost {

namespace {

constexpr std::uint32_t kMostSamples = 1u << 28;

}  // namespace

std::optional<TracingSignal> SignalOf(const KxTestRecord& test) {
    if (test.ecg == nullptr) {
        return std::nullopt;
    }
    kx::recording::EcgHeader header;
    std::memcpy(&header, test.ecg, sizeof header);
    const std::uint32_t samples = header.samplesPerLead;
    if (header.leads == 0 || header.leads > KX_STANDARD_LEADS || samples == 0 || samples > kMostSamples ||
        header.sampleRate == 0 || header.sampleRate > 100'000 || header.resolutionNv == 0 ||
        header.resolutionNv > 1'000'000) {
        return std::nullopt;
    }
    TracingSignal signal;
    signal.sampleRate = header.exactRate > 0 ? header.exactRate : header.sampleRate;
    const auto* first =
        reinterpret_cast<const std::int16_t*>(static_cast<const std::uint8_t*>(test.ecg) + sizeof header);
    for (std::uint32_t lead = 0; lead < header.leads; ++lead) {
        const double microvolts = header.microvolts[lead];
        signal.unitMv.push_back(microvolts > 0 ? microvolts / 1e3 : header.resolutionNv / 1e6);
        signal.leads.emplace_back(first + std::size_t{lead} * samples, samples);
    }
    return signal;
}

std::vector<TracedBeat> BeatsOf(const KxTestRecord& test) {
    std::vector<TracedBeat> beats;
    if (test.annotations == nullptr) {
        return beats;
    }
    const auto& store = *static_cast<const KxAnnotationStore*>(test.annotations);
    for (std::uint32_t i = 0; store.entries != nullptr && i < store.count; ++i) {
        const KxAnnotation& entry = store.entries[i];
        if (kx::IsBeatLabel(entry.label)) {
            beats.push_back({double(entry.timeMs), entry.label, entry.subLabel == kx::kSubLabelInMedian});
        }
    }
    return beats;
}

wchar_t LetterOf(std::uint8_t label) {
    switch (label) {
        case kx::kLabelNormalBeat:
        case kx::kLabelLeftBundleBranchBlock:
        case kx::kLabelRightBundleBranchBlock:
            return L'N';
        case kx::kLabelAberratedAtrial:
        case kx::kLabelJunctionalEctopic:
        case kx::kLabelAtrialEctopic:
        case kx::kLabelSupraventricularEctopic:
        case kx::kLabelJunctionalEscape:
            return L'S';
        case kx::kLabelVentricularEctopic:
        case kx::kLabelFusion:
        case kx::kLabelVentricularEscape:
            return L'V';
        case kx::kLabelPaced:
            return L'P';
        default:
            return L'?';
    }
}

const wchar_t* NameOfBeat(std::uint8_t label) {
    switch (LetterOf(label)) {
        case L'N':
            return L"normale";
        case L'S':
            return L"sopraventricolare";
        case L'V':
            return L"ventricolare";
        case L'P':
            return L"stimolato";
        default:
            return L"non classificato";
    }
}

}  // namespace kxhost
