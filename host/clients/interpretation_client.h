// kxinterp.dll as this workstation uses it: the automatic interpretation without a pane.
#pragma once

#include <string>

#include "host/clients/suite_module.h"
#include "include/kxdialogs.h"

namespace kxhost {

// The module takes its statements from kxdialogs.dll, which must be loaded when it is asked.
class InterpretationClient {
  public:
    InterpretationClient() : module_(L"kxinterp.dll") {}

    // Interprets a resting test's first episode into the episode's result. Empty when it did, else why it did
    // not (Italian, one line).
    std::wstring Interpret(KxTestRecord& test) const;

  private:
    SuiteModule module_;
};

}  // namespace kxhost
