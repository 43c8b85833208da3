// What the comment lines of a header tell about the patient and the recording.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/recording/recording.h"

namespace kx::recording {

// Reads "dd/mm/yyyy" into year, month and day. False, and nothing changed, for a text that is no date.
bool TakeDayMonthYear(std::string_view text, KxDateTime& time);

// Takes the comment lines one after another, without their '#' and blanks; an empty text for an empty line.
// The styles that are understood are those of wfdb_header.h.
class CommentReader {
  public:
    void Take(std::string_view line);

    int AgeYears() const { return ageYears_; }
    Sex PatientSex() const { return sex_; }
    const std::vector<std::string>& Diagnoses() const { return diagnoses_; }
    const KxDateTime& RecordingDate() const { return date_; }

  private:
    int ageYears_ = -1;
    Sex sex_ = Sex::kUnknown;
    std::vector<std::string> diagnoses_;
    KxDateTime date_{};
    bool inDiagnoses_ = false;
};

}  // namespace kx::recording
