#include "host/recording/aecg/aecg_reader.h"

#include "host/recording/aecg/aecg_series.h"
#include "host/recording/aecg/xml_access.h"
#include "host/recording/calendar_text.h"
#include "host/recording/read_failure.h"
#include "host/recording/record_text.h"
#include "host/recording/text_scanner.h"

namespace kx::recording {

namespace {

constexpr int kDaysPerYear = 365, kDaysPerMonth = 30, kDaysPerWeek = 7;  // as the test record counts them

std::string Text(const pugi::xml_node& node) {
    return TextOfField(TextOf(node));
}

// The number that an organisation gave, else the organisation itself.
std::string Id(const pugi::xml_node& node) {
    const pugi::xml_node id = Child(node, "id");
    const std::string extension = TextOfField(Attribute(id, "extension"));
    return extension.empty() ? TextOfField(Attribute(id, "root")) : extension;
}

// "<family>" and "<given>", or a text, "last, first" or the last name alone.
void TakeName(const pugi::xml_node& name, Patient& patient) {
    for (const pugi::xml_node& part : name) {
        std::string* target = IsNamed(part, "family")     ? &patient.lastName
                              : !IsNamed(part, "given")   ? nullptr
                              : patient.firstName.empty() ? &patient.firstName
                                                          : &patient.middleName;
        if (target != nullptr) {
            *target += (target->empty() ? "" : " ") + Text(part);
        }
    }
    if (patient.lastName.empty() && patient.firstName.empty()) {
        const std::string text = Text(name);
        const std::size_t comma = text.find(',');
        patient.lastName = TextOfField(text.substr(0, comma));
        patient.firstName = comma == std::string::npos ? "" : TextOfField(text.substr(comma + 1));
    }
}

// LOINC 21612-7 (reported age) and 30525-0 (age).
int AgeDays(const pugi::xml_node& root) {
    struct Unit {
        std::string_view unit;
        int days;
    };
    constexpr Unit kUnits[] = {{"a", kDaysPerYear}, {"mo", kDaysPerMonth}, {"wk", kDaysPerWeek}, {"d", 1}};
    for (const pugi::xml_node& variable : root) {
        const pugi::xml_node observation = Child(variable, "relatedObservation");
        const std::string_view code = Attribute(Child(observation, "code"), "code");
        const pugi::xml_node value = Child(observation, "value");
        std::string_view text = Attribute(value, "value");
        const auto number = TakeNumber<double>(text);
        if ((code != "21612-7" && code != "30525-0") || !number || *number < 0 || *number > 1000) {
            continue;
        }
        for (const Unit& unit : kUnits) {
            if (Attribute(value, "unit") == unit.unit) {
                return static_cast<int>(*number * unit.days);
            }
        }
    }
    return -1;
}

Patient ReadPatient(const pugi::xml_node& root) {
    const pugi::xml_node subject = Below(root, "trialSubject"),
                         person = Child(subject, "subjectDemographicPerson");
    Patient patient;
    patient.id = Id(subject);
    TakeName(Child(person, "name"), patient);
    const std::string_view sex = Attribute(Child(person, "administrativeGenderCode"), "code");
    patient.sex = sex == "M" ? Sex::kMale : sex == "F" ? Sex::kFemale : Sex::kUnknown;
    KxDateTime birth{};
    if (TakeDateTime(Attribute(Child(person, "birthTime"), "value"), birth)) {
        patient.birthDate = {birth.year, birth.day, birth.month};
    }
    patient.ageDays = AgeDays(root);
    return patient;
}

Device ReadDevice(const pugi::xml_node& series) {
    const pugi::xml_node author = Descend(series, {"author", "seriesAuthor"});
    const pugi::xml_node device = Child(author, "manufacturedSeriesDevice");
    const std::string model = Text(Child(device, "manufacturerModelName"));
    const std::string maker = Text(Descend(author, {"manufacturerOrganization", "name"}));
    return {maker.empty() || model.empty() ? maker + model : maker + " " + model,
            TextOfField(Attribute(Child(device, "id"), "extension")), Text(Child(device, "softwareName"))};
}

KxDateTime ReadTime(const pugi::xml_node& node) {
    const pugi::xml_node effective = Child(node, "effectiveTime");
    KxDateTime time{};
    for (const pugi::xml_node& candidate : {Child(effective, "low"), Child(effective, "center"), effective}) {
        if (TakeDateTime(Attribute(candidate, "value"), time)) {
            break;
        }
    }
    return time;
}

// The texts of the interpretation that a device or a reader gave.
void ReadStatements(const pugi::xml_node& root, std::vector<std::string>& statements) {
    root.find_node([&](const pugi::xml_node& node) {
        if (IsNamed(node, "annotation") &&
            Attribute(Child(node, "code"), "code").starts_with("MDC_ECG_INTERPRETATION_")) {
            const std::string text = Text(Child(node, "value"));
            if (!text.empty()) {
                statements.push_back(text);
            }
        }
        return false;
    });
}

}  // namespace

Recording ReadAecg(std::span<const std::uint8_t> bytes) {
    pugi::xml_document document;
    const pugi::xml_parse_result parsed = document.load_buffer(bytes.data(), bytes.size());
    if (!parsed) {
        Refuse("it is no well-formed XML: " + std::string(parsed.description()) + " at byte " +
               std::to_string(parsed.offset));
    }
    const pugi::xml_node root = document.document_element();
    if (!IsNamed(root, "AnnotatedECG")) {
        Refuse("it is XML of another kind (" + Quoted(root.name()) + "), of which HL7 aECG is read");
    }
    Recording recording;
    recording.source = "HL7 annotated ECG";
    recording.patient = ReadPatient(root);
    std::vector<SignalGroup> groups;
    for (const pugi::xml_node& component : root) {
        const pugi::xml_node series =
            IsNamed(component, "component") ? Child(component, "series") : pugi::xml_node();
        if (!series) {
            continue;
        }
        if (recording.device.name.empty()) {
            recording.device = ReadDevice(series);
            recording.filters = ReadAecgFilters(series);
        }
        for (SignalGroup& group : ReadAecgSeries(series)) {
            if (group.startTime.year == 0) {
                group.startTime = ReadTime(series);
            }
            groups.push_back(std::move(group));
        }
    }
    TakeSignals(std::move(groups), recording);
    if (recording.acquisitionTime.year == 0) {
        recording.acquisitionTime = ReadTime(root);
    }
    ReadStatements(root, recording.diagnoses);
    return recording;
}

}  // namespace kx::recording
