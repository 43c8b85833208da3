#include "tests/rig/template_layout.h"

#include <algorithm>
#include <cstring>

namespace kx::test {
namespace {

// Reads the little-endian words of a resource; past its end everything is 0 and `failed` says so.
class ResourceReader {
  public:
    ResourceReader(const BYTE* data, std::size_t size) : data_(data), size_(size) {}

    template <typename T>
    T Take() {
        T value{};
        if (at_ + sizeof value > size_) {
            failed = true;
            return value;
        }
        std::memcpy(&value, data_ + at_, sizeof value);
        at_ += sizeof value;
        return value;
    }

    // A text, or an ordinal behind 0xFFFF, which comes back in `ordinal`.
    std::wstring TakeText(WORD* ordinal = nullptr) {
        std::wstring text;
        WORD unit = Take<WORD>();
        if (unit == 0xFFFF && ordinal != nullptr) {
            *ordinal = Take<WORD>();
            return text;
        }
        for (; unit != 0 && !failed; unit = Take<WORD>()) {
            text.push_back(static_cast<wchar_t>(unit));
        }
        return text;
    }

    void Align() { at_ = (at_ + 3) & ~std::size_t{3}; }
    void Skip(std::size_t bytes) { at_ += bytes; }

    bool failed = false;

  private:
    const BYTE* data_;
    std::size_t size_;
    std::size_t at_ = 0;
};

const wchar_t* PredefinedClass(WORD ordinal) {
    static const wchar_t* const names[] = {L"Button", L"Edit", L"Static", L"ListBox", L"ScrollBar", L"ComboBox"};
    return ordinal >= 0x80 && ordinal <= 0x85 ? names[ordinal - 0x80] : L"";
}

RECT TakeUnits(ResourceReader& reader) {
    const LONG x = reader.Take<short>();
    const LONG y = reader.Take<short>();
    const LONG width = reader.Take<short>();
    const LONG height = reader.Take<short>();
    return {x, y, x + width, y + height};
}

// Class names are compared without case; predefined ones get one spelling.
std::wstring Spelled(const std::wstring& name) {
    for (WORD ordinal = 0x80; ordinal <= 0x85; ++ordinal) {
        if (lstrcmpiW(name.c_str(), PredefinedClass(ordinal)) == 0) {
            return PredefinedClass(ordinal);
        }
    }
    return name;
}

TemplateItem TakeItem(ResourceReader& reader) {
    TemplateItem item{};
    reader.Align();
    reader.Skip(2 * sizeof(DWORD));  // help id, extended style
    item.style = reader.Take<DWORD>();
    item.units = TakeUnits(reader);
    item.id = reader.Take<DWORD>();
    WORD classOrdinal = 0;
    item.windowClass = Spelled(reader.TakeText(&classOrdinal));
    if (classOrdinal != 0) {
        item.windowClass = PredefinedClass(classOrdinal);
    }
    WORD textOrdinal = 0;
    item.text = reader.TakeText(&textOrdinal);
    reader.Skip(reader.Take<WORD>());
    return item;
}

// A font selected into a screen-compatible context, with the measures that the dialog manager takes of it.
class MeasuredFont {
  public:
    MeasuredFont(const std::wstring& face, int points, int weight, int dpi) {
        font_ = CreateFontW(-MulDiv(points, dpi, 72), 0, 0, 0, weight, FALSE, FALSE, FALSE, DEFAULT_CHARSET, OUT_DEFAULT_PRECIS,
                            CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY, DEFAULT_PITCH, face.c_str());
        context_ = CreateCompatibleDC(nullptr);
        previous_ = SelectObject(context_, font_);
    }
    ~MeasuredFont() {
        SelectObject(context_, previous_);
        DeleteDC(context_);
        DeleteObject(font_);
    }
    MeasuredFont(const MeasuredFont&) = delete;
    MeasuredFont& operator=(const MeasuredFont&) = delete;

    SIZE BaseUnits() const {
        const wchar_t alphabet[] = L"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
        SIZE extent{};
        GetTextExtentPoint32W(context_, alphabet, 52, &extent);
        TEXTMETRICW metrics{};
        GetTextMetricsW(context_, &metrics);
        return {(extent.cx / 26 + 1) / 2, metrics.tmHeight};
    }

    SIZE Measure(const std::wstring& text, LONG width, UINT format) const {
        RECT box{0, 0, width, 0};
        DrawTextW(context_, text.c_str(), static_cast<int>(text.size()), &box, format | DT_CALCRECT);
        return {box.right, box.bottom};
    }

  private:
    HFONT font_;
    HDC context_;
    HGDIOBJ previous_;
};

bool IsClass(const TemplateItem& item, const wchar_t* name) { return lstrcmpiW(item.windowClass.c_str(), name) == 0; }

DWORD ButtonKind(const TemplateItem& item) { return item.style & BS_TYPEMASK; }
bool IsGroupBox(const TemplateItem& item) { return IsClass(item, L"Button") && ButtonKind(item) == BS_GROUPBOX; }
bool IsPushButton(const TemplateItem& item) {
    return IsClass(item, L"Button") && (ButtonKind(item) == BS_PUSHBUTTON || ButtonKind(item) == BS_DEFPUSHBUTTON);
}
bool IsTextStatic(const TemplateItem& item) {
    return IsClass(item, L"Static") && ((item.style & SS_TYPEMASK) <= SS_RIGHT || (item.style & SS_TYPEMASK) == SS_LEFTNOWORDWRAP);
}
bool IsEtchedLine(const TemplateItem& item) {
    return IsClass(item, L"Static") && (item.style & SS_TYPEMASK) >= SS_ETCHEDHORZ && (item.style & SS_TYPEMASK) <= SS_ETCHEDFRAME;
}

// How much of a control's rectangle is its text's, and how the text is set in it.
struct TextSpace {
    LONG width;
    LONG height;
    UINT format;
};

bool FindTextSpace(const TemplateItem& item, const RECT& pixels, int dpi, TextSpace& space) {
    space = {pixels.right - pixels.left, pixels.bottom - pixels.top, DT_SINGLELINE};
    if (IsTextStatic(item)) {
        space.format = (item.style & SS_TYPEMASK) == SS_LEFTNOWORDWRAP ? DT_EXPANDTABS : DT_WORDBREAK;
        return true;
    }
    if (IsClass(item, L"ComboBox")) {
        // The drop-down height of the template is not the closed box's, which fits its font by itself.
        space.width -= MulDiv(17 + 8, dpi, 96);
        space.height = MAXLONG;
        return true;
    }
    if (!IsClass(item, L"Button") || (item.style & (BS_OWNERDRAW | BS_ICON | BS_BITMAP)) >= BS_ICON || ButtonKind(item) == BS_OWNERDRAW) {
        return false;
    }
    if (IsGroupBox(item)) {
        space.width -= MulDiv(18, dpi, 96);
    } else if (IsPushButton(item)) {
        space.width -= MulDiv(8, dpi, 96);
        space.height -= MulDiv(4, dpi, 96);
    } else {
        // The box is 13 pixels at 96 dpi, and half a digit stands between it and the text.
        space.width -= MulDiv(13 + 4, dpi, 96);
    }
    if ((item.style & BS_MULTILINE) != 0) {
        space.format = DT_WORDBREAK;
    }
    return true;
}

std::string Narrow(const std::wstring& text) {
    char buffer[512] = {};
    WideCharToMultiByte(CP_UTF8, 0, text.c_str(), -1, buffer, sizeof buffer - 1, nullptr, nullptr);
    return buffer;
}

std::string NameOf(const TemplateItem& item) {
    return Narrow(item.windowClass) + " " + std::to_string(static_cast<WORD>(item.id)) + " \"" + Narrow(item.text) + "\"";
}

RECT ToPixels(const RECT& units, const SIZE& base) {
    return {MulDiv(units.left, base.cx, 4), MulDiv(units.top, base.cy, 8), MulDiv(units.right, base.cx, 4),
            MulDiv(units.bottom, base.cy, 8)};
}

void CheckTexts(const TemplateItem& item, const RECT& pixels, const MeasuredFont& font, const ShownText& shown, int dpi,
                std::vector<std::string>& faults) {
    TextSpace space{};
    if (!FindTextSpace(item, pixels, dpi, space)) {
        return;
    }
    std::vector<std::wstring> texts = shown.texts;
    texts.push_back(item.text);
    for (const std::wstring& text : texts) {
        if (text.empty()) {
            continue;
        }
        const SIZE needed = font.Measure(text, space.width, space.format);
        if (needed.cx > space.width || (!IsGroupBox(item) && needed.cy > space.height)) {
            faults.push_back(std::to_string(dpi) + " dpi: " + NameOf(item) + ": \"" + Narrow(text) + "\" needs " +
                             std::to_string(needed.cx) + " x " + std::to_string(needed.cy) + " of " + std::to_string(space.width) + " x " +
                             std::to_string(space.height));
        }
    }
}

bool MayBeCovered(const TemplateItem& item) { return IsGroupBox(item) || IsEtchedLine(item); }

// A combo box covers only its closed height; 14 units hold it.
RECT CoveredUnits(const TemplateItem& item) {
    RECT units = item.units;
    if (IsClass(item, L"ComboBox")) {
        units.bottom = std::min(units.bottom, units.top + 14);
    }
    return units;
}

void CheckPlaces(const DialogTemplate& dialog, std::vector<std::string>& faults) {
    for (std::size_t i = 0; i < dialog.items.size(); ++i) {
        const RECT a = CoveredUnits(dialog.items[i]);
        if (a.left < 0 || a.top < 0 || a.right > dialog.units.cx || a.bottom > dialog.units.cy) {
            faults.push_back(NameOf(dialog.items[i]) + " reaches out of the dialog");
        }
        for (std::size_t j = i + 1; j < dialog.items.size(); ++j) {
            const RECT b = CoveredUnits(dialog.items[j]);
            RECT common{};
            if (!MayBeCovered(dialog.items[i]) && !MayBeCovered(dialog.items[j]) && IntersectRect(&common, &a, &b)) {
                faults.push_back(NameOf(dialog.items[i]) + " and " + NameOf(dialog.items[j]) + " cover each other");
            }
        }
    }
}

}  // namespace

DialogTemplate ReadDialogTemplate(HMODULE module, WORD id) {
    DialogTemplate dialog;
    const HRSRC found = FindResourceW(module, MAKEINTRESOURCEW(id), reinterpret_cast<LPCWSTR>(RT_DIALOG));
    const HGLOBAL loaded = found == nullptr ? nullptr : LoadResource(module, found);
    if (loaded == nullptr) {
        return dialog;
    }
    ResourceReader reader(static_cast<const BYTE*>(LockResource(loaded)), SizeofResource(module, found));
    const WORD version = reader.Take<WORD>();
    if (reader.Take<WORD>() != 0xFFFF || version != 1) {
        return dialog;
    }
    reader.Skip(2 * sizeof(DWORD));  // help id, extended style
    dialog.style = reader.Take<DWORD>();
    const WORD count = reader.Take<WORD>();
    const RECT units = TakeUnits(reader);
    dialog.units = {units.right - units.left, units.bottom - units.top};
    WORD ordinal = 0;
    reader.TakeText(&ordinal);  // menu
    reader.TakeText(&ordinal);  // class
    dialog.title = reader.TakeText();
    if ((dialog.style & DS_SETFONT) != 0) {
        dialog.pointSize = reader.Take<WORD>();
        dialog.weight = reader.Take<WORD>();
        reader.Skip(2);  // italic, character set
        dialog.face = reader.TakeText();
    }
    for (WORD i = 0; i < count && !reader.failed; ++i) {
        dialog.items.push_back(TakeItem(reader));
    }
    if (reader.failed) {
        dialog.items.clear();
    }
    return dialog;
}

std::vector<std::string> LayoutFaults(const DialogTemplate& dialog, int dpi, const std::map<DWORD, ShownText>& shown) {
    std::vector<std::string> faults;
    const MeasuredFont font(dialog.face, dialog.pointSize, dialog.weight, dpi);
    const SIZE base = font.BaseUnits();
    for (const TemplateItem& item : dialog.items) {
        const auto own = shown.find(item.id);
        const ShownText text = own == shown.end() ? ShownText{} : own->second;
        const RECT pixels = ToPixels(item.units, base);
        if (text.boldFace.empty()) {
            CheckTexts(item, pixels, font, text, dpi, faults);
        } else {
            CheckTexts(item, pixels, MeasuredFont(text.boldFace, 8, 800, dpi), text, dpi, faults);
        }
    }
    CheckPlaces(dialog, faults);
    return faults;
}

}  // namespace kx::test
