#include "host/recording/voltage_units.h"

#include <string>

#include "host/recording/text_scanner.h"

namespace kx::recording {

std::optional<double> MicrovoltsOfUnit(std::string_view unit) {
    struct Row {
        std::string_view unit;
        double microvolts;
    };
    constexpr Row kRows[] = {{"uv", 1},  {"\xC2\xB5v", 1}, {"\xCE\xBCv", 1}, {"\xB5v", 1},      {"mv", 1e3},
                             {"v", 1e6}, {"nv", 1e-3},     {"microvolt", 1}, {"millivolt", 1e3}};
    const std::string wanted = Lower(Trim(unit));
    for (const Row& row : kRows) {
        if (wanted == row.unit) {
            return row.microvolts;
        }
    }
    return std::nullopt;
}

}  // namespace kx::recording
