#include "host/recording/open_recording.h"

#include <string_view>
#include <system_error>

#include "host/recording/aecg/aecg_reader.h"
#include "host/recording/byte_reader.h"
#include "host/recording/dicom/dicom_reader.h"
#include "host/recording/file_bytes.h"
#include "host/recording/read_failure.h"
#include "host/recording/record_text.h"
#include "host/recording/scp/scp_reader.h"
#include "host/recording/text_scanner.h"

namespace kx::recording {

namespace {

namespace fs = std::filesystem;
using namespace std::string_view_literals;

constexpr std::uint64_t kLargestFile = 64u << 20;

bool IsXml(std::string_view text) {
    // UTF-16 with a mark or without: the parser knows them all.
    for (const std::string_view start : {"\xFE\xFF"sv, "\xFF\xFE"sv, "<\0"sv, "\0<"sv}) {
        if (text.starts_with(start)) {
            return true;
        }
    }
    if (text.starts_with("\xEF\xBB\xBF")) {
        text.remove_prefix(3);
    }
    const std::size_t first = text.find_first_not_of(" \t\r\n");
    return first != std::string_view::npos && text[first] == '<';
}

// The first line that is no comment: a name and a number of signals.
bool IsWfdbHeader(std::string_view text) {
    constexpr std::size_t kEnough = 1024;
    if (text.substr(0, kEnough).find('\0') != std::string_view::npos) {
        return false;
    }
    while (!text.empty()) {
        const std::string_view line = Trim(text.substr(0, text.find('\n')));
        if (!line.empty() && line.front() != '#') {
            const auto fields = Fields(line);
            return fields.size() >= 2 && WholeNumber<unsigned>(fields[1]).has_value();
        }
        const std::size_t end = text.find('\n');
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
    return false;
}

Recording ReadKind(FileKind kind, std::span<const std::uint8_t> bytes) {
    switch (kind) {
        case FileKind::kScp:
            return ReadScp(bytes);
        case FileKind::kDicom:
            return ReadDicom(bytes);
        case FileKind::kXml:
            return ReadAecg(bytes);
        default:
            Refuse("it is of no kind that is read (WFDB, SCP-ECG, DICOM waveform, HL7 aECG)");
    }
}

// A text that the test record's field cuts is kept whole in a remark.
void RemarkOnLongTexts(Recording& recording) {
    const Patient& patient = recording.patient;
    if (ToRecordText(patient.id).size() >= sizeof KxTestRecord::patientId) {
        recording.remarks.push_back("the patient's id is longer than the record holds: " + patient.id);
    }
    const std::string name = patient.lastName + '^' + patient.firstName + '^' + patient.middleName + '^';
    if (ToRecordText(name).size() >= sizeof KxTestRecord::patientName) {
        recording.remarks.push_back("the patient's name is longer than the record holds: " +
                                    patient.lastName + ", " + patient.firstName + " " + patient.middleName);
    }
}

std::optional<Recording> ReadAlone(FileKind kind, std::span<const std::uint8_t> bytes,
                                   const std::string& name, std::string& error) {
    try {
        Recording recording = ReadKind(kind, bytes);
        recording.name = name;
        RemarkOnLongTexts(recording);
        return recording;
    } catch (const ReadFailure& failure) {
        error = failure.text;
    } catch (const std::bad_alloc&) {
        error = "there is not enough memory for it";
    } catch (const std::exception& failure) {
        error = failure.what();
    }
    return std::nullopt;
}

}  // namespace

FileKind KindOf(std::span<const std::uint8_t> bytes) {
    if (IsScp(bytes)) {
        return FileKind::kScp;
    }
    if (IsDicom(bytes)) {
        return FileKind::kDicom;
    }
    if (IsXml(AsText(bytes))) {
        return FileKind::kXml;
    }
    return IsWfdbHeader(AsText(bytes)) ? FileKind::kWfdbHeader : FileKind::kUnknown;
}

std::optional<Recording> ReadRecordingBytes(std::span<const std::uint8_t> bytes, const std::string& name,
                                            std::string& error) {
    return ReadAlone(KindOf(bytes), bytes, name, error);
}

std::optional<Recording> OpenRecording(const fs::path& path, const ReadOptions& options, std::string& error) {
    std::error_code ignored;
    fs::path header = path;
    header += ".hea";
    if (HasHeaderExtension(path) || (!fs::exists(path, ignored) && fs::exists(header, ignored))) {
        return ReadWfdb(path, options, error);
    }
    const auto bytes = ReadFileBytes(path, kLargestFile, error);
    if (!bytes) {
        return std::nullopt;
    }
    const FileKind kind = KindOf(*bytes);
    if (kind == FileKind::kWfdbHeader) {
        return ReadWfdbHeader(path, options, ReadFileBytes, error);
    }
    auto recording = std::optional<Recording>();
    if (options.unitsPerMv > 0) {
        error = "units per mV can be stated for a WFDB record only";
    } else {
        recording = ReadAlone(kind, *bytes, PathText(path.stem()), error);
    }
    if (!recording) {
        error = PathText(path) + ": " + error;
    }
    return recording;
}

}  // namespace kx::recording
