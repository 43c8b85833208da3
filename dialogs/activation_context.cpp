#include "dialogs/activation_context.h"

namespace kx {
namespace {

// ISOLATIONAWARE_MANIFEST_RESOURCE_ID: the manifest of a library, as 1 is that of a program.
constexpr WORD kManifestResource = 2;

}  // namespace

ActivationContext::ActivationContext(HMODULE module) noexcept {
    ACTCTXA request{};
    request.cbSize = sizeof request;
    request.dwFlags = ACTCTX_FLAG_HMODULE_VALID | ACTCTX_FLAG_RESOURCE_NAME_VALID;
    request.hModule = module;
    request.lpResourceName = MAKEINTRESOURCEA(kManifestResource);
    handle_ = CreateActCtxA(&request);
}

ActivationContext::~ActivationContext() {
    if (handle_ != INVALID_HANDLE_VALUE) {
        ReleaseActCtx(handle_);
    }
}

ActivationScope::ActivationScope(const ActivationContext& context) noexcept
    : active_(context.Handle() != INVALID_HANDLE_VALUE &&
              ActivateActCtx(context.Handle(), &cookie_) != FALSE) {}

ActivationScope::~ActivationScope() {
    if (active_) {
        DeactivateActCtx(0, cookie_);
    }
}

}  // namespace kx
