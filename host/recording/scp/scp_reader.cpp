#include "host/recording/scp/scp_reader.h"

#include "host/recording/byte_reader.h"
#include "host/recording/record_text.h"
#include "host/recording/scp/scp_header.h"
#include "host/recording/scp/scp_signals.h"

namespace kx::recording {

namespace {

// Section 8: the report's statements as text, each with its number and length before it.
void ReadStatements(std::span<const std::uint8_t> section, std::vector<std::string>& statements) {
    constexpr std::size_t kStateAndTime = 8;
    try {
        ByteReader reader(section, "section 8");
        reader.Take(kStateAndTime);
        for (unsigned left = reader.U8(); left > 0; --left) {
            reader.U8();
            const std::string text = TextOfField(AsText(reader.Take(reader.U16())));
            if (!text.empty()) {
                statements.push_back(text);
            }
        }
    } catch (const ReadFailure&) {
        // The statements before the cut are kept: the ECG does not depend on them.
    }
}

}  // namespace

Recording ReadScp(std::span<const std::uint8_t> bytes) {
    const ScpFile file(bytes);
    Recording recording;
    recording.source = "SCP-ECG file";
    recording.remarks = file.Remarks();
    if (file.Has(1)) {
        ReadScpHeader(file.Section(1), recording);
    }
    if (file.Has(8)) {
        ReadStatements(file.Section(8), recording.diagnoses);
    }
    TakeSignals(ReadScpSignals(file, recording.remarks), recording);
    return recording;
}

}  // namespace kx::recording
