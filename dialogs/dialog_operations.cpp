// How each export's dialog is opened: one table, one pattern.
#include <memory>
#include <new>
#include <utility>

#include "dialogs/dialog_library.h"
#include "dialogs/hypertrophy/hyptrphy.h"
#include "dialogs/interpretation/interp.h"
#include "dialogs/interpretation/statement_editor.h"
#include "dialogs/morphology/genmorph.h"
#include "dialogs/morphology/pmorph.h"
#include "dialogs/morphology/qrsmrph.h"
#include "dialogs/morphology/tmorph.h"
#include "dialogs/table/mrphlist.h"

namespace kx {
namespace {

// What an operation opens, and what it says when it cannot.
template <class DialogClass>
struct Operation {
    const char* context;  // the class named when an exception is caught
    const char* source;   // with its line: where a missing argument is reported
    std::uint32_t line;
};

constexpr Operation<TableDialog> kTable{"TableDialog", "mrphlist", 162};
constexpr Operation<GeneralMorphDialog> kGeneralMorph{"GeneralMorphDialog", "genmorph", 478};
constexpr Operation<PMorphDialog> kPMorph{"PMorphDialog", "pmorph", 480};
constexpr Operation<QrsMorphDialog> kQrsMorph{"QrsMorphDialog", "qrsmrph", 740};
constexpr Operation<TMorphDialog> kTMorph{"TMorphDialog", "tmorph", 487};
constexpr Operation<HypertrophyDialog> kHypertrophy{"HypertrophyDialog", "hyptrphy", 422};
constexpr Operation<InterpretationDialog> kInterpretation{"InterpretationDialog", "interp", 2167};
constexpr Operation<StatementEditor> kEditInterpretation{"InterpretationDialog", "interp", 2176};
// An editor of what: neither of the two that there are.
constexpr std::uint32_t kEditModeLine = 2180;

// What every operation does around its own step: no null argument gets in, no exception gets out, and the
// windows made meanwhile have the library's controls.
template <class DialogClass, class Step>
std::uint32_t Guard(const Operation<DialogClass>& operation, const DialogLibrary& library,
                    bool argumentsGiven, Step step) noexcept {
    try {
        if (!argumentsGiven) {
            library.Reports().LOGOEMERROR(operation.source, operation.line, "no Wpar or tst");
            return 0;
        }
        const ActivationScope controls(library.Controls());
        return step();
    } catch (...) {
        library.Reports().LOGEXCEPTION(operation.context);
        return 0;
    }
}

// The pattern of a modeless dialog: the object is created with what it shows and belongs to its window from
// then on; its address is the host's handle. One that the host has ended meanwhile was no dialog; one that
// has nothing to show has no window to go with, and the library keeps it.
template <class DialogClass, class... More>
std::uint32_t OpenModeless(const Operation<DialogClass>& operation, DialogLibrary& library, Window* parent,
                           TestRecord* test, More*... more) noexcept {
    const bool argumentsGiven = parent != nullptr && test != nullptr && (... && (more != nullptr));
    return Guard(operation, library, argumentsGiven, [&]() -> std::uint32_t {
        std::unique_ptr<Pane> made(new (std::nothrow)
                                       DialogClass(library, parent, test, more..., library.Services()));
        const Pane* const pane = made == nullptr ? nullptr : OpenPane(made);
        if (made != nullptr) {
            library.KeepWithoutWindow(std::move(made));
        }
        return static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(pane));
    });
}

}  // namespace

std::uint32_t DialogLibrary::TABLEDIALOG(Window* parent, TestRecord* test) noexcept {
    return OpenModeless(kTable, *this, parent, test);
}

std::uint32_t DialogLibrary::GENERALMORPHDIALOG(Window* parent, TestRecord* test) noexcept {
    return OpenModeless(kGeneralMorph, *this, parent, test);
}

std::uint32_t DialogLibrary::PMORPHDIALOG(Window* parent, TestRecord* test) noexcept {
    return OpenModeless(kPMorph, *this, parent, test);
}

std::uint32_t DialogLibrary::QRSMORPHDIALOG(Window* parent, TestRecord* test) noexcept {
    return OpenModeless(kQrsMorph, *this, parent, test);
}

std::uint32_t DialogLibrary::TMORPHDIALOG(Window* parent, TestRecord* test) noexcept {
    return OpenModeless(kTMorph, *this, parent, test);
}

std::uint32_t DialogLibrary::HYPERTROPHYDIALOG(Window* parent, TestRecord* test) noexcept {
    return OpenModeless(kHypertrophy, *this, parent, test);
}

std::uint32_t DialogLibrary::INTERPRETATIONDIALOG(Window* parent, TestRecord* test,
                                                  void* hostOptions) noexcept {
    return OpenModeless(kInterpretation, *this, parent, test, hostOptions);
}

std::uint32_t DialogLibrary::EDITINTERPRETATION(Window* parent, TestRecord* test, const KxRect* area,
                                                std::uint32_t mode) noexcept {
    const bool argumentsGiven = parent != nullptr && test != nullptr && area != nullptr;
    return Guard(kEditInterpretation, *this, argumentsGiven, [&]() -> std::uint32_t {
        if (mode > 1) {
            Reports().LOGOEMERROR(kEditInterpretation.source, kEditModeLine, "mode");
            return 0;
        }
        const auto edited = mode == 0 ? StatementEditor::Mode::kStatement : StatementEditor::Mode::kPhysician;
        return StatementEditor(*this, parent, test, *area, edited, Services()).Run() ? 1 : 0;
    });
}

}  // namespace kx
