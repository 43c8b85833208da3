// Which common controls the library's windows are made of, whatever program loads it.
//
// A host without a manifest has the classic controls (comctl32 version 5) in its default activation context,
// and CreateWindow looks window classes up in the context that is active on the calling thread. The library
// therefore carries its own manifest as resource 2 (the id of a DLL's manifest): the loader uses it for the
// library's imports, and the library makes an activation context of it and activates that one while it
// creates a dialog. The windows keep the classes that they were created with; the host's own windows are not
// touched.
#pragma once

#include <windows.h>

namespace kx {

// The context of a module's manifest. When it cannot be made (no manifest, no version 6 on the system) the
// object stands for "leave the thread's context as it is", and the controls are the host's.
class ActivationContext {
  public:
    explicit ActivationContext(HMODULE module) noexcept;
    ~ActivationContext();
    ActivationContext(const ActivationContext&) = delete;
    ActivationContext& operator=(const ActivationContext&) = delete;

    HANDLE Handle() const { return handle_; }

  private:
    HANDLE handle_;  // INVALID_HANDLE_VALUE: none
};

// Activates a context on the current thread for as long as the object lives. Scopes nest.
class ActivationScope {
  public:
    explicit ActivationScope(const ActivationContext& context) noexcept;
    ~ActivationScope();
    ActivationScope(const ActivationScope&) = delete;
    ActivationScope& operator=(const ActivationScope&) = delete;

  private:
    ULONG_PTR cookie_ = 0;
    bool active_;
};

}  // namespace kx
