// The hum of the mains in a recording.
#pragma once

#include "host/recording/recording.h"

namespace kx::recording {

struct MainsHum {
    int hertz = 0;          // 50 or 60, 0: none was found
    double microvolts = 0;  // amplitude in the lead that had most of it
};

// Subtracts from every lead the steady sine near 50 or 60 Hz that it holds, where it is more than a hundredth
// of the lead's range; what it follows of a change of amplitude and phase takes seconds, so that the heart's
// own part at that frequency, which is over in a tenth of a second, stays. The recording is one at
// kWorkingRate. Returns what was subtracted: nothing when there is no hum in any lead or the recording is
// shorter than half a second.
MainsHum RemoveMainsHum(Recording& recording);

}  // namespace kx::recording
