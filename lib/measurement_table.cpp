#include "lib/measurement_table.h"

namespace kx {

const char* StandardLeadName(std::uint32_t leadCode) {
    static constexpr const char* kNames[KX_STANDARD_LEADS] = {"I",  "II", "III", "aVR", "aVL", "aVF",
                                                              "V1", "V2", "V3",  "V4",  "V5",  "V6"};
    return leadCode < KX_STANDARD_LEADS ? kNames[leadCode] : "?";
}

std::string MeasurementTableText(const KxMeasurementSet& set, char separator) {
    std::string text = kLeadColumnTitle;
    for (const AmplitudeColumn& column : kAmplitudeColumns) {
        text += separator;
        text += column.title;
    }
    text += "\r\n";
    for (std::uint32_t lead = 0; lead < KX_STANDARD_LEADS; ++lead) {
        text += StandardLeadName(lead);
        for (const AmplitudeColumn& column : kAmplitudeColumns) {
            text += separator;
            text += std::to_string(set.leads[lead].*column.value);
        }
        text += "\r\n";
    }
    return text;
}

}  // namespace kx
