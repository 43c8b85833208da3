// Report scripts: a text with the places at which the values of a test stand. Portable.
//
// A script is plain text (UTF-8 or Windows-1252), its lines are those of the report:
//
//   # ...            a comment
//   {#N}             the value of field N, without blanks around it (codes: lib/dbclient/summary_text.h)
//   {%N}             the patient's placeholders of the suite's texts, such as {%2} for the last name
//   [ ... ]          a part that is left out when one of the fields in it has no value
//   ?CONDITION text  a line that is left out unless the condition holds; there may be several conditions
//   \c               the character c itself, where it would mean one of the above
//
// A condition is a field's code, alone (the field has a value) or after ! (it has none), or the code, one of
// the comparisons "=", "!=", "<", "<=", ">", ">=" and what to compare with, up to the next blank: a number
// with the first number in the field's text, anything else with the whole text. A field without a value, or
// without a number to compare, makes every comparison false.
//
// A field has no value when its text is empty, "NG", "..", "..." or "*", or when its code is not known.
// Outside brackets it is then shown as "...". Lines come out in their order, joined by CR LF; of several
// empty lines in a row one stays, and none at the beginning and the end.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "lib/reporter.h"

namespace kx::render {

// Where a script's values come from.
class ScriptValues {
  public:
    // The text of a field, empty when it has none.
    virtual std::string Field(int code) const = 0;
    // A text with its {%N} replaced.
    virtual std::string WithPatient(const std::string& text) const = 0;

  protected:
    ScriptValues() = default;
    ScriptValues(const ScriptValues&) = default;
    ScriptValues& operator=(const ScriptValues&) = default;
    ~ScriptValues() = default;
};

// Writes the report, Windows-1252 and terminated. A line that cannot be understood, and one that does not fit
// any more, is left out as a whole and reported with its number; with the latter the report ends. False, and
// nothing written, without a buffer.
bool RunScript(std::string_view script, const ScriptValues& values, char* buffer, std::size_t size,
               Reporter& log);

}  // namespace kx::render
