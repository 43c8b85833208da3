// kxanalyze.dll as this workstation uses it: the first measuring of a median beat.
#pragma once

#include <string>

#include "host/clients/suite_module.h"
#include "include/kxdialogs.h"

namespace kxhost {

class AnalysisClient {
  public:
    AnalysisClient() : module_(L"kxanalyze.dll") {}

    // Measures the beat in place. Empty when it is measured, else why it is not (Italian, one line); the beat
    // then holds no measurements and can be shown all the same.
    std::wstring MeasureEpisode(KxEpisodeRecord& episode) const;

  private:
    SuiteModule module_;
};

}  // namespace kxhost
