// The elements that an annotated ECG is written from.
#pragma once

#include <charconv>
#include <pugixml.hpp>
#include <string>
#include <string_view>

namespace kx::recording {

inline constexpr const char* kMdc = "2.16.840.1.113883.6.24";     // ISO/IEEE 11073
inline constexpr const char* kActCode = "2.16.840.1.113883.5.4";  // HL7 ActCode

// The shortest decimal number that reads back as the same.
inline std::string NumberText(double value) {
    char text[32];
    const auto [end, failure] = std::to_chars(text, text + sizeof text, value);
    return {text, end};
}

inline pugi::xml_node AddValue(pugi::xml_node parent, const char* name, const std::string& value) {
    pugi::xml_node node = parent.append_child(name);
    node.append_attribute("value") = value.c_str();
    return node;
}

inline void AddQuantity(pugi::xml_node parent, const char* name, double value, const char* unit) {
    AddValue(parent, name, NumberText(value)).append_attribute("unit") = unit;
}

inline void AddText(pugi::xml_node parent, const char* name, const std::string& text) {
    if (!text.empty()) {
        parent.append_child(name).text() = text.c_str();
    }
}

inline void AddCode(pugi::xml_node parent, const char* code, const char* system) {
    pugi::xml_node node = parent.append_child("code");
    node.append_attribute("code") = code;
    node.append_attribute("codeSystem") = system;
    node.append_attribute("codeSystemName") = std::string_view(system) == kMdc ? "MDC" : "ActCode";
}

inline pugi::xml_node AddTyped(pugi::xml_node parent, const char* type) {
    pugi::xml_node node = parent.append_child("value");
    node.append_attribute("xsi:type") = type;
    return node;
}

// The chain of elements, each in the one before; returns the last.
inline pugi::xml_node AddPath(pugi::xml_node node, std::initializer_list<const char*> names) {
    for (const char* name : names) {
        node = node.append_child(name);
    }
    return node;
}

// The code of one of the twelve leads: "MDC_ECG_LEAD_AVR".
inline std::string LeadCode(std::string_view name) {
    std::string code = "MDC_ECG_LEAD_";
    for (const char c : name) {
        code += c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    }
    return code;
}

}  // namespace kx::recording
