#include "dialogs/service_session.h"

#include <cstdio>
#include <new>

#include "lib/modules/version_info.h"

namespace kx {

ServiceSession::ServiceSession(const LibraryModule& library)
    : services_(new (std::nothrow) SystemServices(&library)) {
    if (services_ == nullptr) {
        return;
    }
    const VersionInfo version(library.instance.Handle());
    // __DATE__ and __TIME__ have the forms "Jul 24 2013" and "11:24:46".
    std::snprintf(banner_, sizeof banner_, "%s (%X - %s %s)", version.FileDescription(),
                  static_cast<unsigned>(version.PackedVersion()), __DATE__, __TIME__);
    services_->LOGSERVICESTART(banner_);
}

ServiceSession::~ServiceSession() {
    if (services_ != nullptr) {
        services_->LOGSERVICESTOP(banner_);
    }
}

Reporter& ServiceSession::Reports() const {
    static SilentReporter silent;
    if (services_ == nullptr) {
        return silent;
    }
    return *services_;
}

}  // namespace kx
