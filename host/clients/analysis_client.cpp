#include "host/clients/analysis_client.h"

namespace kxhost {
namespace {

using MeasureFunction = uint32_t(KX_CALL*)(KxEpisodeRecord*);

}  // namespace

std::wstring AnalysisClient::MeasureEpisode(KxEpisodeRecord& episode) const {
    if (!module_.IsLoaded()) {
        return module_.FailureText();
    }
    const auto measure = module_.Find<MeasureFunction>("MEASUREEPISODE");
    if (measure == nullptr) {
        return L"kxanalyze.dll: MEASUREEPISODE non esportata";
    }
    return measure(&episode) != 0 ? std::wstring() : L"il motore di analisi non ha misurato il battito";
}

}  // namespace kxhost
