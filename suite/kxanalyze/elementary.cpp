#include "suite/kxanalyze/elementary.h"

#include <cmath>

namespace kx::analysis {
namespace {

constexpr double kLn2 = 0.693147180559945309417;

// Natural logarithm of x >= 1: of the part in [0.7, 1.4] as 2 artanh((m - 1) / (m + 1)), by its series.
double Log(double x) {
    int exponent = 0;
    double m = std::frexp(x, &exponent);  // exact
    if (m < 0.70710678118654752) {
        m *= 2;
        --exponent;
    }
    const double s = (m - 1) / (m + 1), q = s * s;
    double sum = 0;
    for (int k = 15; k >= 1; k -= 2) {
        sum = sum * q + 1.0 / k;
    }
    return exponent * kLn2 + 2 * s * sum;
}

}  // namespace

double Exp(double x) {
    if (x < -700) {
        return 0;
    }
    const int exponent = static_cast<int>(x / kLn2 - 0.5);
    const double rest = x - exponent * kLn2;
    double sum = 1;
    for (int k = 14; k >= 1; --k) {
        sum = 1 + sum * rest / k;
    }
    return std::ldexp(sum, exponent);  // exact
}

double Asinh(double x) {
    const double size = std::fabs(x);
    const double value = Log(size + std::sqrt(size * size + 1));
    return x < 0 ? -value : value;
}

}  // namespace kx::analysis
