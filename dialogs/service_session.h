// The library's use of the suite's system services, from its start banner to its stop banner.
#pragma once

#include <memory>

#include "lib/modules/system_services.h"
#include "lib/reporter.h"

namespace kx {

// Owns the binding to kxsys.dll. The suite's log shows the same banner when the session begins and when it
// ends: what the library is, its packed version, and when it was built.
class ServiceSession {
  public:
    // Binds the module (which may fail; then every report does nothing) and writes the start banner. library
    // outlives the session and its handle is already set.
    explicit ServiceSession(const LibraryModule& library);
    // Writes the stop banner, then ends the binding.
    ~ServiceSession();
    ServiceSession(const ServiceSession&) = delete;
    ServiceSession& operator=(const ServiceSession&) = delete;

    // Null only when there was no memory for the binding.
    SystemServices* Services() const { return services_.get(); }
    // Where reports go in any case.
    Reporter& Reports() const;

  private:
    static constexpr std::size_t kBannerSize = 256;

    std::unique_ptr<SystemServices> services_;
    char banner_[kBannerSize] = {};
};

}  // namespace kx
