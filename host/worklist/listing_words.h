// How a line of the archive's list is worded.
#pragma once

#include <cstdint>
#include <string>

#include "include/kxdialogs.h"

namespace kxhost {

// "25/11/2026 10:20"; "..." for a time that is not known.
std::wstring DateText(const KxDateTime& time);
// A name of the list ("last, first middle") without what is missing of it.
std::wstring NameText(const std::string& name);
// Of the list's state flags: originale, riletto, confermato, esterno, as the search takes them.
const wchar_t* StateText(std::uint32_t flags);
// Empty for a kind that has no name.
const wchar_t* TestTypeText(std::uint32_t type);

}  // namespace kxhost
