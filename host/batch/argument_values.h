// What the words of the command line say: numbers, leads, sizes, panes, lists of codes.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "host/batch/command_line.h"

namespace kxhost {

// One of the twelve leads, in any case.
std::optional<unsigned> LeadOf(std::string_view name);

// A whole number between least and most, and nothing behind it.
std::optional<int> ParseNumber(std::string_view text, int least, int most);

// "WxH", both between the smallest and the largest picture. False: it is no size, and the picture is as
// before.
bool ParseSize(std::string_view text, Shot& shot);

// A pane by its name; none for the whole window. False: there is no such pane.
bool ParsePane(std::string_view name, std::optional<PaneKind>& pane);

// "1,2,48-59": numbers and ranges of numbers, appended. False: it is no such list.
bool ParseCodes(std::string_view text, std::vector<int>& codes);

}  // namespace kxhost
