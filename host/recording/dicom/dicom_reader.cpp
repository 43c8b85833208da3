#include "host/recording/dicom/dicom_reader.h"

#include <algorithm>
#include <iterator>
#include <string_view>
#include <utility>

#include "host/recording/calendar_text.h"
#include "host/recording/dicom/dicom_tags.h"
#include "host/recording/dicom/dicom_waveform.h"
#include "host/recording/read_failure.h"
#include "host/recording/record_text.h"
#include "host/recording/text_scanner.h"

namespace kx::recording {

namespace {

// "last^first^middle^prefix^suffix", in other scripts behind '='.
void TakeName(std::string_view name, Patient& patient) {
    name = name.substr(0, name.find('='));
    for (std::string* part : {&patient.lastName, &patient.firstName, &patient.middleName}) {
        const std::size_t end = std::min(name.find('^'), name.size());
        *part = TextOfField(name.substr(0, end));
        name.remove_prefix(std::min(end + 1, name.size()));
    }
}

// "046Y", "018M", "003W", "021D"; -1 for a text that is none.
int AgeDays(std::string_view text) {
    struct Unit {
        char letter;
        int days;
    };
    constexpr Unit kUnits[] = {{'Y', 365}, {'M', 30}, {'W', 7}, {'D', 1}};
    const auto number = TakeNumber<int>(text);
    for (const Unit& unit : kUnits) {
        if (number && *number >= 0 && *number < 1000 && text.size() == 1 && text[0] == unit.letter) {
            return *number * unit.days;
        }
    }
    return -1;
}

Patient ReadPatient(const DicomDataSet& object) {
    Patient patient;
    patient.id = object.Text(kPatientId);
    TakeName(object.Text(kPatientName), patient);
    TakeDate(object.Text(kBirthDate), patient.birthDate);
    const std::string sex = object.Text(kPatientSex);
    patient.sex = sex == "M" ? Sex::kMale : sex == "F" ? Sex::kFemale : Sex::kUnknown;
    patient.ageDays = AgeDays(object.Text(kPatientAge));
    return patient;
}

Device ReadDevice(const DicomDataSet& object) {
    const std::string maker = object.Text(kManufacturer), model = object.Text(kModelName);
    return {maker.empty() || model.empty() ? maker + model : maker + " " + model, object.Text(kSerialNumber),
            object.Text(kSoftwareVersions)};
}

// The first of the times that says when the signal was recorded.
KxDateTime ReadTime(const DicomDataSet& object) {
    KxDateTime time{};
    if (TakeDateTime(object.Text(kAcquisitionDateTime), time)) {
        return time;
    }
    constexpr std::pair<DicomTag, DicomTag> kTimes[] = {
        {kAcquisitionDate, kAcquisitionTime}, {kContentDate, kContentTime}, {kStudyDate, kStudyTime}};
    for (const auto& [dateTag, timeTag] : kTimes) {
        if (KxDate date; TakeDate(object.Text(dateTag), date)) {
            time = {date.year, date.day, date.month, 0, 0, 0, 0};
            TakeTime(object.Text(timeTag), time);
            return time;
        }
    }
    return time;
}

// The letters of other alphabets than Western Europe's are not known here, unless as UTF-8.
void RemarkOnLetters(const DicomDataSet& object, Recording& recording) {
    constexpr std::string_view kKnown[] = {"",           "ISO_IR 6",      "ISO_IR 100",
                                           "ISO_IR 192", "ISO 2022 IR 6", "ISO 2022 IR 100"};
    const std::string set = object.Text(kCharacterSet);
    const std::string name = recording.patient.lastName + recording.patient.firstName;
    const bool foreign =
        std::any_of(name.begin(), name.end(), [](char c) { return static_cast<unsigned char>(c) >= 0x80; });
    if (foreign && std::find(std::begin(kKnown), std::end(kKnown), set) == std::end(kKnown)) {
        recording.remarks.push_back("the patient's name is in the characters of " + Quoted(set) +
                                    ", which are not read: some letters are others");
    }
}

}  // namespace

Recording ReadDicom(std::span<const std::uint8_t> bytes) {
    const DicomDataSet object = ReadDicomElements(bytes);
    const auto& groups = object.Items(kWaveformSequence);
    if (groups.empty()) {
        Refuse("it is a DICOM object without waveforms");
    }
    Recording recording;
    recording.source = "DICOM waveform";
    recording.patient = ReadPatient(object);
    RemarkOnLetters(object, recording);
    recording.device = ReadDevice(object);
    recording.acquisitionTime = ReadTime(object);
    recording.filters = ReadDicomFilters(groups.front());
    for (const DicomDataSet& annotation : object.Items(kAnnotations)) {
        if (const std::string text = annotation.Text(kAnnotationText); !text.empty()) {
            recording.diagnoses.push_back(text);
        }
    }
    TakeSignals(ReadDicomWaveforms(object), recording);
    return recording;
}

}  // namespace kx::recording
