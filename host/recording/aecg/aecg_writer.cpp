#include "host/recording/aecg/aecg_writer.h"

#include <cmath>
#include <cstdio>
#include <sstream>

#include "host/recording/aecg/aecg_annotations.h"
#include "host/recording/aecg/aecg_nodes.h"
#include "host/recording/ecg_block.h"
#include "host/recording/record_text.h"
#include "lib/dbclient/test_record.h"

namespace kx::recording {

namespace {

using Node = pugi::xml_node;

// The text of a record's field, as UTF-8.
template <std::size_t N>
std::string FieldText(const char (&field)[N]) {
    return TextOfField(
        FromRecordText(std::string_view(field, N).substr(0, std::string_view(field, N).find('\0'))));
}

void AddTimeSpan(Node node, const TestRecord& test, std::uint32_t lengthMs) {
    const std::string start = TimeText(test, 0);
    if (!start.empty()) {
        const Node effective = node.append_child("effectiveTime");
        AddValue(effective, "low", start);
        AddValue(effective, "high", TimeText(test, lengthMs));
    }
}

void AddName(Node person, const TestRecord& test) {
    struct Part {
        const char* element;
        void (TestRecord::*text)(char*, std::size_t) const;
    };
    constexpr Part kParts[] = {{"family", &TestRecord::LastName},
                               {"given", &TestRecord::FirstName},
                               {"given", &TestRecord::MiddleName}};
    const Node name = person.append_child("name");
    for (const Part& part : kParts) {
        char text[sizeof test.patientName];
        (test.*part.text)(text, sizeof text);
        AddText(name, part.element, FromRecordText(text));
    }
}

void AddPatient(Node root, const TestRecord& test) {
    const Node assignment =
        AddPath(root, {"componentOf", "timepointEvent", "componentOf", "subjectAssignment"});
    Node subject = AddPath(assignment, {"subject", "trialSubject"});
    Node id = subject.append_child("id");
    id.append_attribute("extension") = FieldText(test.patientId).c_str();
    Node person = subject.append_child("subjectDemographicPerson");
    AddName(person, test);
    if (test.sex == KX_SEX_MALE || test.sex == KX_SEX_FEMALE) {
        Node sex = person.append_child("administrativeGenderCode");
        sex.append_attribute("code") = test.sex == KX_SEX_MALE ? "M" : "F";
        sex.append_attribute("codeSystem") = "2.16.840.1.113883.5.1";
    }
    if (test.HasBirthDate()) {
        char date[16];
        std::snprintf(date, sizeof date, "%04d%02d%02d", test.birthDate.year, test.birthDate.month,
                      test.birthDate.day);
        AddValue(person, "birthTime", date);
    }
    // A trial is asked for by the format; an ECG of a patient belongs to none.
    AddPath(assignment, {"componentOf", "clinicalTrial", "id"}).append_attribute("nullFlavor") = "NA";
}

void AddAge(Node root, const TestRecord& test) {
    if (test.HasBirthDate() || test.AgeDays() == 0) {
        return;
    }
    Node observation = AddPath(root, {"controlVariable", "relatedObservation"});
    Node code = observation.append_child("code");
    code.append_attribute("code") = "21612-7";
    code.append_attribute("codeSystem") = "2.16.840.1.113883.6.1";
    code.append_attribute("codeSystemName") = "LOINC";
    Node value = AddTyped(observation, "PQ");
    value.append_attribute("value") = test.AgeDays();
    value.append_attribute("unit") = "d";
}

void AddDevice(Node series, const TestRecord& test) {
    Node device = AddPath(series, {"author", "seriesAuthor", "manufacturedSeriesDevice"});
    device.append_child("id").append_attribute("extension") = FieldText(test.deviceSerial).c_str();
    AddText(device, "manufacturerModelName", FieldText(test.deviceName));
    AddText(device, "softwareName", FieldText(test.deviceRevision));
}

// The record knows that there was a filter; of the notch its frequency, of the others what they are for.
void AddFilters(Node series, const TestRecord& test) {
    const auto filter = [&](const char* code) {
        const Node variable = AddPath(series, {"controlVariable", "controlVariable"});
        AddCode(variable, code, kMdc);
        return AddPath(variable, {"component", "controlVariable"});
    };
    const auto describe = [](Node variable, const char* text) {
        AddCode(variable, "MDC_ECG_CTL_VBL_ATTR_FILTER_DESCRIPTION", kMdc);
        AddTyped(variable, "ST").text() = text;
    };
    if (test.MainsFrequency() != 0) {
        const Node variable = filter("MDC_ECG_CTL_VBL_ATTR_FILTER_NOTCH");
        AddCode(variable, "MDC_ECG_CTL_VBL_ATTR_FILTER_NOTCH_FREQ", kMdc);
        Node value = AddTyped(variable, "PQ");
        value.append_attribute("value") = test.MainsFrequency();
        value.append_attribute("unit") = "Hz";
    }
    if (test.BaselineFilter()) {
        describe(filter("MDC_ECG_CTL_VBL_ATTR_FILTER_HIGH_PASS"), "baseline wander");
    }
    if (test.ArtifactFilter() != 0) {
        describe(filter("MDC_ECG_CTL_VBL_ATTR_FILTER_LOW_PASS"), "muscle artifact");
    }
}

// The times of a set's samples; absolute when a start is given.
Node AddTimes(Node series, const std::string& start, double sampleRate) {
    Node set = AddPath(series, {"component", "sequenceSet"});
    const Node sequence = AddPath(set, {"component", "sequence"});
    AddCode(sequence, start.empty() ? "TIME_RELATIVE" : "TIME_ABSOLUTE", kActCode);
    const Node value = AddTyped(sequence, start.empty() ? "GLIST_PQ" : "GLIST_TS");
    if (start.empty()) {
        AddQuantity(value, "head", 0, "s");
    } else {
        AddValue(value, "head", start);
    }
    AddQuantity(value, "increment", 1 / sampleRate, "s");
    return set;
}

template <typename Units>
void AddLead(Node set, std::size_t lead, double microvolts, std::size_t count, Units units) {
    const Node sequence = AddPath(set, {"component", "sequence"});
    AddCode(sequence, LeadCode(kLeadNames[lead]).c_str(), kMdc);
    Node value = AddTyped(sequence, "SLIST_PQ");
    AddQuantity(value, "origin", 0, "uV");
    AddQuantity(value, "scale", microvolts, "uV");
    std::string digits;
    for (std::size_t i = 0; i < count; ++i) {
        digits += (i == 0 ? "" : " ") + std::to_string(units(i));
    }
    value.append_child("digits").text() = digits.c_str();
}

void AddRhythm(Node series, const Recording& recording, const TestRecord& test) {
    const Node set = AddTimes(series, TimeText(test, 0), recording.sampleRate);
    for (std::size_t lead = 0; lead < kLeadCount; ++lead) {
        const double unit = recording.resolutionUv[lead];
        AddLead(set, lead, unit, recording.SampleCount(),
                [&](std::size_t i) { return std::lround(double{recording.leads[lead][i]} / unit); });
    }
}

void AddMedianBeat(Node series, const EpisodeRecord& episode) {
    const Node set = AddTimes(series, "", episode.sampleRate);
    for (std::uint32_t lead = 0; lead < kLeadCount; ++lead) {
        if (episode.Samples(lead) != nullptr) {
            AddLead(set, lead, episode.resolutionNv / 1000.0, episode.samplesPerLead,
                    [&](std::size_t i) { return episode.Sample(lead, static_cast<std::uint32_t>(i)); });
        }
    }
}

Node AddRoot(pugi::xml_document& document, const std::string& documentId) {
    Node declaration = document.append_child(pugi::node_declaration);
    declaration.append_attribute("version") = "1.0";
    declaration.append_attribute("encoding") = "UTF-8";
    Node root = document.append_child("AnnotatedECG");
    root.append_attribute("xmlns") = "urn:hl7-org:v3";
    root.append_attribute("xmlns:xsi") = "http://www.w3.org/2001/XMLSchema-instance";
    root.append_attribute("type") = "Observation";
    root.append_child("id").append_attribute("root") = documentId.c_str();
    Node code = root.append_child("code");
    code.append_attribute("code") = "93000";  // electrocardiogram, complete
    code.append_attribute("codeSystem") = "2.16.840.1.113883.6.12";
    code.append_attribute("codeSystemName") = "CPT-4";
    return root;
}

}  // namespace

std::optional<std::string> WriteAecg(const TestRecord& test, const std::string& documentId) {
    const auto recording = DecodeEcg(test);
    const EpisodeRecord* episode = test.Episode(0);
    if (!recording || episode == nullptr || episode->sampleRate == 0) {
        return std::nullopt;
    }
    const auto lengthMs = static_cast<std::uint32_t>(std::lround(recording->DurationMs()));
    pugi::xml_document document;
    Node root = AddRoot(document, documentId);
    AddTimeSpan(root, test, lengthMs);
    AddPatient(root, test);
    AddAge(root, test);
    const Node series = AddPath(root, {"component", "series"});
    AddCode(series, "RHYTHM", kActCode);
    AddTimeSpan(series, test, lengthMs);
    AddDevice(series, test);
    AddFilters(series, test);
    AddRhythm(series, *recording, test);
    AddBeatAnnotations(series, test);
    const Node derived = AddPath(series, {"derivation", "derivedSeries"});
    AddCode(derived, "REPRESENTATIVE_BEAT", kActCode);
    AddMedianBeat(derived, *episode);
    AddBeatMeasurements(derived, test);
    std::ostringstream text;
    document.save(text, " ", pugi::format_indent, pugi::encoding_utf8);
    return text.str();
}

}  // namespace kx::recording
