// Any bytes as a file: a whole recording, or one sentence that says why not.
#include "host/recording/aecg/aecg_reader.h"

#include "host/recording/read_failure.h"
#include "tests/fuzz/fuzz_recording.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace kx::recording;
    try {
        UseEverything(ReadAecg({data, size}), data, size);
    } catch (const ReadFailure& failure) {
        Require(!failure.text.empty() && failure.text.find_first_of("\r\n") == std::string::npos);
    }
    return 0;
}
