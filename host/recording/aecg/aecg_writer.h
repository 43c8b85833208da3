// Writing of a reviewed test as HL7 annotated ECG (aECG, HL7 v3 PORT_MT020001).
#pragma once

#include <optional>
#include <string>

namespace kx {
struct TestRecord;
}

namespace kx::recording {

// The document, UTF-8: patient, device, filters and time; the recorded signal as RHYTHM series, twelve leads
// in their own resolutions, with its beats as annotations; derived from it the REPRESENTATIVE_BEAT series of
// episode 0 with the global intervals, axes, waves and, for each lead, the waves by their markers with their
// amplitudes. What a reviewer placed by hand stands in an annotation set of that person, as the
// interpretation does; the rest in one of the analysis. Codes are those of ISO/IEEE 11073-10102. Times are
// absolute where the acquisition time is known.
//
// documentId: the document's identifier, an UUID. Nothing when the record has no recorded signal
// (ecg_block.h) or no median beat.
std::optional<std::string> WriteAecg(const TestRecord& test, const std::string& documentId);

}  // namespace kx::recording
