#include "lib/measurement_table.h"

namespace kx {

std::string MeasurementTableText(const KxMeasurementSet& set, char separator) {
    std::string text = kLeadColumnTitle;
    for (const AmplitudeColumn& column : kAmplitudeColumns) {
        text += separator;
        text += column.title;
    }
    text += "\r\n";
    for (std::uint32_t lead = 0; lead < KX_STANDARD_LEADS; ++lead) {
        text += kLeadNames[lead];
        for (const AmplitudeColumn& column : kAmplitudeColumns) {
            text += separator;
            text += std::to_string(set.leads[lead].*column.value);
        }
        text += "\r\n";
    }
    return text;
}

}  // namespace kx
