// The fields of physician and site, and of the patient.
#include "lib/dbclient/summary_fields.h"

namespace kx {

namespace {

using Record = KxTestRecord;

template <std::size_t kFlag>
void PutClinicalFlag(const SummaryOutput& output) {
    output.test.ClinicalFlagText(output.request.texts, static_cast<int>(kFlag), output.buffer, output.size,
                                 output.request.clinicalFlagLists[kFlag]);
}

void PutSex(const SummaryOutput& output) {
    output.test.SexText(output.request.texts, output.buffer, output.size, output.request.sexList);
}

void PutRace(const SummaryOutput& output) {
    output.test.RaceText(output.request.texts, output.buffer, output.size, output.request.raceList);
}

// Shown like the other dates of the patient: a date that does not exist is not given.
void PutBirthDate(const SummaryOutput& output) {
    if (!output.test.HasBirthDate() ||
        !output.test.BirthDate().ShortDate(output.buffer, output.size, output.request.locale)) {
        output.Put("NG");
    }
}

void PutClinicalDate(const SummaryOutput& output) {
    output.test.ClinicalDateText(output.buffer, output.size, output.request.locale);
}

constexpr SummaryField kSiteFields[] = {
    {7, PutText<&Record::confirmedBy>}, {8, PutText<&Record::text6160>},   {208, PutText<&Record::text6192>},
    {209, PutText<&Record::text6224>},  {210, PutText<&Record::text6288>}, {448, PutText<&Record::text6320>},
};

constexpr SummaryField kPatientFields[] = {
    {1, PutGetter<&TestRecord::FullName>},
    {2, PutGetter<&TestRecord::PatientId>},
    {3, PutSex},
    {4, PutGetter<&TestRecord::AgeText>},
    {5, PutGetter<&TestRecord::WeightText>},
    {6, PutGetter<&TestRecord::HeightText>},
    {15, PutRace},
    {35, PutGetter<&TestRecord::BloodPressureText>},
    {42, PutBirthDate},
    {43, PutGetter<&TestRecord::FirstName>},
    {44, PutGetter<&TestRecord::LastName>},
    {45, [](const SummaryOutput& output) { output.Put(WordBySex(output.test, "The", "His", "Her")); }},
    {63, PutClinicalFlag<0>},
    {64, PutClinicalFlag<1>},
    {65, PutClinicalFlag<2>},
    {66, PutClinicalFlag<3>},
    {67, PutText<&Record::text844>},
    {69, PutText<&Record::text332>},
    {75, [](const SummaryOutput& output) { output.Put(WordBySex(output.test, "the", "his", "her")); }},
    {76, [](const SummaryOutput& output) { output.Put(WordBySex(output.test, "the patient", "he", "she")); }},
    {77, [](const SummaryOutput& output) { output.Put(WordBySex(output.test, "The patient", "He", "She")); }},
    {78,
     [](const SummaryOutput& output) { output.Put(WordBySex(output.test, "The patient", "Mr.", "Ms.")); }},
    {126, PutGetter<&TestRecord::MiddleName>},
    {127, PutText<&Record::street>},
    {128, PutText<&Record::city>},
    {129, PutText<&Record::state>},
    {130, PutText<&Record::postalCode>},
    {131, PutClinicalFlag<4>},
    {206, PutGetter<&TestRecord::Address>},
    {207, PutText<&Record::text186>},
    {640, PutClinicalDate},
};

}  // namespace

const char* WordBySex(const TestRecord& test, const char* unknown, const char* male, const char* female) {
    switch (test.Sex()) {
        case KX_SEX_MALE:
            return male;
        case KX_SEX_FEMALE:
            return female;
        default:
            return unknown;
    }
}

bool RenderSiteField(const SummaryOutput& output) {
    return RenderField(kSiteFields, output);
}

bool RenderPatientField(const SummaryOutput& output) {
    return RenderField(kPatientFields, output);
}

}  // namespace kx
