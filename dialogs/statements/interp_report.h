// How the interpretation review, its statement files among it, names itself in the suite's log.
#pragma once

namespace kx {

inline constexpr char kInterpSource[] = "interp";

}  // namespace kx
