// One line of a report script.
#pragma once

#include <string>
#include <string_view>

#include "suite/kxrender/script.h"

namespace kx::render {

enum class LineFault { kNone, kCondition, kBrackets };

struct RenderedLine {
    LineFault fault = LineFault::kNone;
    bool shown = false;  // its conditions hold
    std::string text;
};

// The line is no comment and has no line end.
RenderedLine RenderLine(std::string_view line, const ScriptValues& values);

}  // namespace kx::render
