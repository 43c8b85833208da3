// Whether a dialog template has room for its texts, asked at any screen resolution without opening the
// dialog.
#pragma once

#include <windows.h>

#include <map>
#include <string>
#include <vector>

namespace kx::test {

struct TemplateItem {
    DWORD id;
    std::wstring windowClass;  // predefined classes by their names: "Button", "Static", "ComboBox", ...
    std::wstring text;
    DWORD style;
    RECT units;  // dialog units
};

struct DialogTemplate {
    DWORD style = 0;
    std::wstring title;
    std::wstring face;
    int pointSize = 0;
    int weight = 0;
    SIZE units{};
    std::vector<TemplateItem> items;
};

// Reads the extended dialog template `id` of a module (also one loaded as a data file). No items: no such
// template, or one that is not extended or is damaged.
DialogTemplate ReadDialogTemplate(HMODULE module, WORD id);

// What a control shows when the template's own text and font are not what it has at run time.
struct ShownText {
    std::vector<std::wstring> texts;  // besides the template's text; a combo box's choices
    std::wstring boldFace;            // not empty: this face in weight 800 at 8 points
};

// Lays the template out as the dialog manager would at `dpi` and measures every text of its static controls,
// check boxes, radio buttons, push buttons, group boxes and (by `shown`) combo boxes with its font against
// its rectangle; word-wrapping ones by DT_CALCRECT | DT_WORDBREAK. One line for each text that is cut, naming
// the control and by how much; controls that reach out of the dialog or cover another control are named as
// well.
std::vector<std::string> LayoutFaults(const DialogTemplate& dialog, int dpi, const std::map<DWORD, ShownText>& shown = {});

}  // namespace kx::test
