// What --help prints.
#include "host/batch/command_line.h"

namespace kxhost {
namespace {

constexpr std::string_view kUsage = R"(usage:
  kxhost [RECORD | --builtin] [--archive FILE] [--units-per-mv N]
      opens the workstation window on its worklist, on a recording, or on the built-in synthetic one
  kxhost --import RECORD... [--archive FILE] [--units-per-mv N]
      takes recordings into the archive
  kxhost --list [FILTER] [--archive FILE]
      prints the tests of the archive
  kxhost --export ID FILE.xml|FILE.csv|FILE.html|FILE.pdf|FILE.png [--archive FILE]
      writes a test of the archive: HL7 annotated ECG, its samples, the table of the wave amplitudes, the page of its tracing
  kxhost --measure RECORD... [--json] [--units-per-mv N]
      prints the beats and the measurements of the median beat
  kxhost --export-aecg RECORD FILE [--units-per-mv N]
      writes the recording with its measurements as HL7 annotated ECG
  kxhost --export-csv RECORD FILE [--units-per-mv N]
      writes the samples of the recording, in microvolts
  kxhost --interpret RECORD [--units-per-mv N]
      prints the statements of the automatic interpretation
  kxhost --fields RECORD [CODES] [--units-per-mv N]
      prints the texts of the report fields
  kxhost --expand TEMPLATE RECORD [--units-per-mv N]
      prints a text with the patient in the place of {%1}, {%2}, {%5}, {%11} and {%14}
  kxhost --table FILE.csv|FILE.html RECORD [--units-per-mv N]
      writes the table of the wave amplitudes
  kxhost --print FILE.pcl|FILE.bmp|FILE.png RECORD LEAD [--paper A4|Letter] [--units-per-mv N]
      writes the page of one lead, as a printer is sent it or as a picture
  kxhost --print FILE.pdf|FILE.png|FILE.pcl|FILE.bmp RECORD tracing [--units-per-mv N]
      writes the page of the whole tracing, A4 across at its true size
  kxhost --print-to PRINTER RECORD LEAD [--paper A4|Letter] [--units-per-mv N]
      prints it, as PCL 5 past the printer's driver; LEAD may be "tracing"
  kxhost --print-by-driver PRINTER RECORD [--units-per-mv N]
      prints the page of the whole tracing through the printer's driver
  kxhost --shot FILE.png RECORD PANE [--units-per-mv N] [--size WxH] [--archive FILE]
      writes a picture of one pane, or of the whole window
  kxhost --version
  kxhost --help

RECORD  a file of SCP-ECG, of a DICOM waveform or of HL7 aECG, told by what it holds, or the header (.hea) of a WFDB
        recording, with or without its extension; in its place --builtin takes the built-in synthetic recording
PANE    worklist, tracing, general, qrs, p, t, hypertrophy, interpretation, table, report, or window for the whole workstation window
LEAD    I, II, III, aVR, aVL, aVF, V1 to V6
PRINTER the name of a local printer; without its driver it has to understand PCL 5
CODES   field codes of the report templates, as 1,2,48-59; all by default
FILTER  words of a patient's name or id, a date, or a state (originale, riletto, confermato): all of them must be there
ID      the number of a test, as --list prints it
N       sample units in one millivolt, in place of what a WFDB header says (a whole number)
WxH     size of the picture in pixels, 64x64 to 4096x4096; by default the pane's or the window's own size
--      what follows is no option

--measure prints one "name<TAB>value" a line: "beat" once for each beat found (ms from the start of the recording),
"rPeak" (the alignment point, ms from the start of the median beat), the intervals and durations (ms), the axes
(degrees) and the fiducial points (ms) by their names, then "LEAD.name" for each lead: amplitudes and ST levels in
microvolts, markers in ms; 0 is an absent marker. Numbers are decimal integers. Of several recordings each begins with
"record<TAB>NAME"; one that cannot be read is told on standard error, the others are printed, and the exit code is 1.
--json prints the same as one array of objects.

--archive names the archive, which is made when it is not there; without it the one of the environment variable
KX_ARCHIVE is used, else the user's own.

--import prints "id<TAB>RECORD" for each; one that cannot be read is told on standard error, the others are imported,
and the exit code is 1.

--list prints "id<TAB>date<TAB>name<TAB>patient id<TAB>kind<TAB>state" a line in UTF-8, the newest first; no test is no
error.

--export replaces the file as a whole or leaves it as it was; a .csv file is that of --export-csv.

--export-csv writes a line for each sample, cells separated by semicolons and decimals by a comma: the time in ms, then
the twelve leads in microvolts.

--interpret prints one "code<TAB>text" a line in UTF-8, the overall classification last.

--fields prints one "code<TAB>text" a line in UTF-8; CR, LF, tab and backslash in a text are written \r, \n, \t, \\.

--table replaces the file as a whole or leaves it as it was. A .csv file has cells separated by semicolons, in microvolts.

--print and --print-to draw the page of a lead for A4 unless --paper says otherwise, 300 dots an inch, one bit a dot, and print
the size of these bits: "rawBytes<TAB>N" as they are, "packedBytes<TAB>N" as the printer is sent them.

The batch forms show no message and wait for nobody. Exit code: 0 done; 1 it could not be done, one line on standard
error says why; 2 the command line was not understood. The program is a Windows program without a console of its own:
it writes to the redirected handles, else to the console that it was started from.
)";

}  // namespace

std::string_view UsageText() {
    return kUsage;
}

}  // namespace kxhost
