// "Now" where there is no Windows: the tests of the portable code.
#include <chrono>
#include <ctime>

#include "lib/timestmp.h"

namespace kx {

DateTime::DateTime() : KxDateTime{} {
    using std::chrono::duration_cast;
    using std::chrono::milliseconds;
    const auto now = std::chrono::system_clock::now();
    const std::time_t seconds = std::chrono::system_clock::to_time_t(now);
    const auto ms = duration_cast<milliseconds>(now.time_since_epoch()).count() % 1000;
    std::tm local{};
    localtime_r(&seconds, &local);
    Set(DateTime(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min,
                 local.tm_sec, static_cast<int>(ms / 10)));
}

}  // namespace kx
