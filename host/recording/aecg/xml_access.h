// Elements of an XML document by their local names.
#pragma once

#include <initializer_list>
#include <pugixml.hpp>
#include <string>
#include <string_view>

namespace kx::recording {

// The name behind a prefix.
inline std::string_view LocalName(const char* name) {
    const std::string_view whole = name;
    return whole.substr(whole.find(':') + 1);
}

inline bool IsNamed(const pugi::xml_node& node, std::string_view name) {
    return LocalName(node.name()) == name;
}

// The first child of the name; an empty node when there is none.
inline pugi::xml_node Child(const pugi::xml_node& node, std::string_view name) {
    for (const pugi::xml_node& child : node) {
        if (IsNamed(child, name)) {
            return child;
        }
    }
    return {};
}

// The first child of the first child and so on.
inline pugi::xml_node Descend(pugi::xml_node node, std::initializer_list<std::string_view> names) {
    for (const std::string_view name : names) {
        node = Child(node, name);
    }
    return node;
}

// The first element of the name anywhere below.
inline pugi::xml_node Below(const pugi::xml_node& node, std::string_view name) {
    return node.find_node([name](const pugi::xml_node& other) { return IsNamed(other, name); });
}

// An attribute's value; empty when there is none.
inline std::string_view Attribute(const pugi::xml_node& node, std::string_view name) {
    for (const pugi::xml_attribute& attribute : node.attributes()) {
        if (LocalName(attribute.name()) == name) {
            return attribute.value();
        }
    }
    return {};
}

// All text of the node itself, comments left out.
inline std::string TextOf(const pugi::xml_node& node) {
    std::string text;
    for (const pugi::xml_node& child : node) {
        if (child.type() == pugi::node_pcdata || child.type() == pugi::node_cdata) {
            text += child.value();
        }
    }
    return text;
}

}  // namespace kx::recording
