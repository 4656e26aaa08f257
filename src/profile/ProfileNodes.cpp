#include "profile/ProfileNodes.h"

#include <cstddef>

namespace veldan {

namespace {

constexpr const char* kValue = "value";
constexpr const char* kIndex = "index";

}  // namespace

void AppendBreak(const XmlNode& root) {
    root.AppendText("\r\n    ");
}

void WriteValueNode(const XmlNode& root, const char* name, std::string_view text) {
    const XmlNode node = root.GetChild(name, true);
    node.SetAttribute(kValue, text, "", "");
    AppendBreak(root);
}

void WriteTextNode(const XmlNode& root, const char* name, std::string_view text) {
    WriteChoiceNode(root, name, {CString(text), 0});
}

void WriteChoiceNode(const XmlNode& root, const char* name, const ProfileChoice& choice) {
    const XmlNode node = root.GetChild(name, true);
    node.SetAttribute(kValue, choice.strValue, "", "");
    node.SetAttributeInt(kIndex, choice.nIndex, "", "");
    AppendBreak(root);
}

bool ReadValueNode(const XmlNode& root, const char* name, CString& text) {
    return IsYes(ReadValueText(root, name, text));
}

CString ReadValueText(const XmlNode& root, const char* name, CString& text) {
    text = root.GetChild(name, false)->GetAttribute(kValue, nullptr);
    return text;
}

ProfileChoice ReadChoice(const XmlNode& root, const char* name) {
    const XmlNode node = root.GetChild(name, false);
    ProfileChoice choice{node.GetAttribute(kValue, nullptr)};
    choice.nIndex = node.GetAttributeInt(kIndex, choice.strValue.empty() ? -1 : 0);
    return choice;
}

CStringArray SplitEntries(std::string_view value) {
    CStringArray entries;
    while (!value.empty()) {
        const std::string_view entry = value.substr(0, value.find(','));
        if (!entry.empty()) {
            entries.emplace_back(entry);
        }
        value.remove_prefix(std::min(entry.size() + 1, value.size()));
    }
    return entries;
}

CString JoinEntries(const CStringArray& entries) {
    CString value;
    for (const CString& strEntry : entries) {
        value.append(value.empty() ? "" : ",").append(strEntry);
    }
    return value;
}

bool IsYes(std::string_view text) {
    constexpr std::string_view kYes = "YES";
    return std::ranges::equal(text, kYes, {}, [](char c) { return c >= 'a' && c <= 'z' ? c - 'a' + 'A' : c; });
}

}  // namespace veldan
