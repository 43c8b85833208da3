// Elementary functions that give the same bits with every compiler and on every system: no library's own
// rounding decides on which millisecond a boundary falls.
#pragma once

namespace kx::analysis {

// e^x for x <= 0, to within 1e-12 of its value; 0 below -700.
double Exp(double x);

// Area hyperbolic sine, to within 1e-12.
double Asinh(double x);

}  // namespace kx::analysis
