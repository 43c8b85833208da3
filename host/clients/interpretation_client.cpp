#include "host/clients/interpretation_client.h"

namespace kxhost {
namespace {

using InterpretFunction = uint32_t(KX_CALL*)(KxMeasurementSet*, KxInterpretationResult*, void* annotations,
                                             uint32_t, uint32_t, uint32_t);

}  // namespace

std::wstring InterpretationClient::Interpret(KxTestRecord& test) const {
    if (!module_.IsLoaded()) {
        return module_.FailureText();
    }
    const auto interpret = module_.Find<InterpretFunction>("INTERPRET");
    if (interpret == nullptr) {
        return L"kxinterp.dll: INTERPRET non esportata";
    }
    KxEpisodeRecord& episode = *test.episodes[0];
    return interpret(&episode.measurements, &episode.interpretation, test.annotations, 0, 0, 0) != 0
               ? std::wstring()
               : L"il motore di interpretazione non ha interpretato il battito";
}

}  // namespace kxhost
