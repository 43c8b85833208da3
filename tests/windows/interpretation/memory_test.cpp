// Who owns what of the interpretation pane, counted: all memory of a pane is given back once, also when
// memory runs out at any step of its opening or of a keystroke.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <new>

#include "dialogs/dialog_library.h"
#include "lib/windows/window.h"
#include "tests/windows/interpretation/pane_fixture.h"

namespace {

// How many allocations still succeed; below 0: all of them.
int g_allocationsLeft = -1;
// Allocations that were not freed yet.
int g_live = 0;

}  // namespace

// Not inlined: the compiler would see a new of its own freed by free.
[[gnu::noinline]] void* operator new(std::size_t size) {
    if (g_allocationsLeft == 0) {
        throw std::bad_alloc();
    }
    if (g_allocationsLeft > 0) {
        --g_allocationsLeft;
    }
    if (void* memory = std::malloc(size == 0 ? 1 : size)) {
        ++g_live;
        return memory;
    }
    throw std::bad_alloc();
}
[[gnu::noinline]] void operator delete(void* memory) noexcept {
    g_live -= memory == nullptr ? 0 : 1;
    std::free(memory);
}
[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept {
    g_live -= memory == nullptr ? 0 : 1;
    std::free(memory);
}

namespace {

using testing::Contains;

class InterpretationMemory : public kx::test::InterpretationPane {
  protected:
    // The pane made by this program's own code, whose allocations are counted, from the DLL's resources.
    void SetUp() override {
        library_->stop();
        code_ = std::make_unique<kx::DialogLibrary>(library_.Module());
        record_->AddEpisode(0, 12, 600, 1000, 1000)->durationSeconds = 10;
        record_->SetEcg("ecg", 3);
        hostOptions_[0] = 0;
    }
    void TearDown() override {
        code_.reset();
        library_->start();
    }
    // With so many allocations; below 0: as many as it takes.
    std::uint32_t OpenWith(int allocations) {
        g_allocationsLeft = allocations;
        const std::uint32_t handle =
            code_->INTERPRETATIONDIALOG(reinterpret_cast<kx::Window*>(&parent_), record_.get(), hostOptions_);
        g_allocationsLeft = -1;
        pane_ = handle == 0 ? nullptr
                            : reinterpret_cast<kx::Window*>(static_cast<std::uintptr_t>(handle))->Handle();
        return handle;
    }

    std::unique_ptr<kx::DialogLibrary> code_;
};

TEST_F(InterpretationMemory, ComesBackWhereverAnOpeningRunsOut) {
    library_.TakeLog();
    int refused = 0;
    int failed = 0;
    int opened = 0;
    for (int allocations = 0; opened < 3 && allocations < 400; ++allocations) {
        const int before = g_live;
        const std::uint32_t handle = OpenWith(allocations);
        const bool attached = pane_ != nullptr && kx::Window::FromHandle(pane_) != nullptr;
        if (pane_ != nullptr) {
            Close();
        }
        const int kept = g_live - before;
        const std::vector<std::string> log = library_.TakeLog();
        if (handle == 0) {
            ++refused;
            EXPECT_EQ(kept, 0) << allocations;
        } else if (!attached) {
            // The object itself stays: the host holds its address.
            ++failed;
            EXPECT_EQ(kept, 1) << allocations;
            EXPECT_THAT(log, Contains("LOGMEMORYERROR \"interp\" 1292")) << allocations;
        } else {
            EXPECT_EQ(kept, 0) << allocations;
            opened += log.empty();
        }
    }
    EXPECT_EQ(refused, 1);
    EXPECT_GE(failed, 16);  // one for each wrapper
    EXPECT_EQ(opened, 3);
}

TEST_F(InterpretationMemory, AKeystrokeThatRunsOutIsTyped) {
    for (int allocations = 0; allocations < 40; ++allocations) {
        record_->SetOriginalInterpretation(nullptr, "");
        const int before = g_live;
        ASSERT_NE(OpenWith(-1), 0u);
        g_allocationsLeft = allocations;
        SendMessageA(Edit(), WM_CHAR, 'r', 1);
        SendMessageA(Edit(), WM_CHAR, 's', 1);
        g_allocationsLeft = -1;
        Pump();
        {
            const std::string text = Statement();
            EXPECT_TRUE(text == "rs" || text == "Ritmo sinusale.") << allocations << ": " << text;
        }
        Close();
        EXPECT_EQ(g_live, before) << allocations;
    }
}

}  // namespace
