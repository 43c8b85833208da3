// The values of a test for report scripts. Portable.
#pragma once

#include "lib/dbclient/summary_text.h"
#include "suite/kxrender/script.h"

namespace kx::render {

// Fields as lib/dbclient/summary_text.h words them. The record and the request must outlive it.
class TestValues final : public ScriptValues {
  public:
    TestValues(const TestRecord& test, const SummaryRequest& request) : test_(test), request_(request) {}

    std::string Field(int code) const override;
    std::string WithPatient(const std::string& text) const override;

  private:
    const TestRecord& test_;
    const SummaryRequest& request_;
};

}  // namespace kx::render
