#include "host/tracing/tracing_signal.h"

#include <cstring>

#include "lib/beat_labels.h"

namespace kxhost {

namespace {

constexpr std::size_t kHeaderSize =
    280;  // begins with the number of leads, samples a lead, rate and resolution
constexpr std::uint32_t kMostSamples = 1u << 28;

}  // namespace

std::optional<TracingSignal> SignalOf(const KxTestRecord& test) {
    if (test.ecg == nullptr)
        return std::nullopt;
    const auto* block = static_cast<const unsigned char*>(test.ecg);
    std::uint32_t header[4];
    std::memcpy(header, block, sizeof header);
    const auto [leads, samples, rate, resolution] = header;
    if (leads == 0 || leads > KX_STANDARD_LEADS || samples == 0 || samples > kMostSamples || rate == 0 ||
        rate > 100'000 || resolution == 0 || resolution > 1'000'000)
        return std::nullopt;
    TracingSignal signal;
    signal.sampleRate = static_cast<int>(rate);
    signal.resolutionNv = static_cast<int>(resolution);
    const auto* first = reinterpret_cast<const std::int16_t*>(block + kHeaderSize);
    for (std::uint32_t lead = 0; lead < leads; ++lead)
        signal.leads.emplace_back(first + std::size_t{lead} * samples, samples);
    return signal;
}

std::vector<TracedBeat> BeatsOf(const KxTestRecord& test) {
    std::vector<TracedBeat> beats;
    if (test.annotations == nullptr)
        return beats;
    const auto& store = *static_cast<const KxAnnotationStore*>(test.annotations);
    for (std::uint32_t i = 0; store.entries != nullptr && i < store.count; ++i) {
        const KxAnnotation& entry = store.entries[i];
        if (entry.label != kx::kLabelSegment)
            beats.push_back({double(entry.timeMs), entry.label, entry.subLabel == kx::kSubLabelInMedian});
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
