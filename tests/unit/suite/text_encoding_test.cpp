#include "suite/text_encoding.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using kx::suite::ToWindows1252;

TEST(TextEncoding, TellsUtf8FromWindows1252) {
    struct Row {
        std::string file, text;
    };
    for (const Row& row : {
             Row{"", ""},
             Row{"Rossi;Anna", "Rossi;Anna"},
             Row{"Nicol\xC3\xB2", "Nicol\xF2"},                              // UTF-8
             Row{"Nicol\xF2", "Nicol\xF2"},                                  // Windows-1252 already
             Row{"Nicol\xC3\xB2 e Nicol\xF2", "Nicol\xC3\xB2 e Nicol\xF2"},  // no UTF-8 throughout
             Row{"\xEF\xBB\xBFNicol\xC3\xB2", "Nicol\xF2"},                  // with a mark
             Row{"\xEF\xBB\xBF", ""},
             Row{"\xE2\x82\xAC \xE2\x80\x99 \xC5\xB8", "\x80 \x92 \x9F"},
             Row{"\xC2\xA0\xC3\xBF", "\xA0\xFF"},
             Row{"\xC2\x81 \xCE\xB1 \xF0\x9F\xAB\x80",
                 "? ? ?"},                 // nothing for U+0081, a letter alpha, a heart
             Row{"\xC3", "\xC3"},          // cut short
             Row{"\xC0\x80", "\xC0\x80"},  // longer than it needs to be
             Row{"\xE0\x80\x80", "\xE0\x80\x80"},
             Row{"\xED\xA0\x80", "\xED\xA0\x80"},          // half a pair
             Row{"\xF4\x90\x80\x80", "\xF4\x90\x80\x80"},  // beyond the last character
             Row{"\xFF\xFE", "\xFF\xFE"},
             Row{"\x80", "\x80"},
             Row{std::string("a\0b", 3), std::string("a\0b", 3)},
         }) {
        EXPECT_EQ(row.text, ToWindows1252(row.file)) << row.file;
    }
}

}  // namespace
