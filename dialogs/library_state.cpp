#include "dialogs/library_state.h"

#include <new>

#include "dialogs/dialog_library.h"
#include "dialogs/exception_reserve.h"

namespace kx {

void LibraryState::Attach(HMODULE module) {
    startCount_ = 0;
    module_ = module;
    PrepareExceptions();
}

void LibraryState::Start() noexcept {
    if (module_ == nullptr) {
        return;
    }
    ++startCount_;
    if (startCount_ != 1) {
        return;
    }
    PrepareExceptions();
    try {
        library_ = new (std::nothrow) DialogLibrary(module_);
    } catch (...) {
        // What had been made is undone; the service that could be told of it is no longer bound.
        library_ = nullptr;
    }
}

void LibraryState::Stop() noexcept {
    --startCount_;
    if (startCount_ == 0 && library_ != nullptr) {
        delete library_;
        library_ = nullptr;
    }
}

}  // namespace kx
