#pragma once

#include "storage/XmlNode.h"

#include <algorithm>
#include <concepts>

namespace veldan {

// Reading and writing the elements of a profile, each a child of the root found by its name. A missing element, a
// missing attribute and an empty one read alike. Every write ends with a break, the start of a new line after the
// root's last child.

/// What the format needs of a combo box: its entries in order and the one that is selected, -1 for none.
template <class T>
concept ProfileCombo = requires(T& combo, const T& constCombo, CString& text) {
    { constCombo.GetCount() } -> std::convertible_to<int>;
    { constCombo.GetCurSel() } -> std::convertible_to<int>;
    constCombo.GetLBText(0, text);
    { constCombo.GetWindowText() } -> std::convertible_to<CString>;
    combo.ResetContent();
    combo.AddString(text);
    // Also shows the entry's text on the face; -1 selects none and shows the empty text.
    combo.SelectEntry(0);
    combo.EnableFace(1);
};

/// An element that has a value and a place in a list.
struct ProfileChoice {
    CString strValue;
    int nIndex = -1;
};

/// Appends what every write ends with.
void AppendBreak(const XmlNode& root);

void WriteValueNode(const XmlNode& root, const char* name, std::string_view text);
void WriteTextNode(const XmlNode& root, const char* name, std::string_view text);
void WriteChoiceNode(const XmlNode& root, const char* name, const ProfileChoice& choice);

/// Whether the value is "Yes", in capitals or not.
bool ReadValueNode(const XmlNode& root, const char* name, CString& text);
CString ReadValueText(const XmlNode& root, const char* name, CString& text);
/// As it stands in the file. A missing index is that of the first entry, where there is a value at all.
[[nodiscard]] ProfileChoice ReadChoice(const XmlNode& root, const char* name);

/// The entries of a list's value. Empty ones don't count.
[[nodiscard]] CStringArray SplitEntries(std::string_view value);
[[nodiscard]] CString JoinEntries(const CStringArray& entries);

/// Whether a text is "Yes", in capitals or not.
[[nodiscard]] bool IsYes(std::string_view text);

/// The entry that an index stands for in a list of so many: the first for one beyond the end, -1 for any below.
[[nodiscard]] constexpr int EntryAt(int index, int count) {
    return index < count ? std::max(index, -1) : 0;
}

/// The text in use: that of the selected entry, or what the combo shows where none is.
template <ProfileCombo Combo>
[[nodiscard]] ProfileChoice CurrentOf(const Combo& combo) {
    ProfileChoice choice{{}, combo.GetCurSel()};
    if (choice.nIndex < 0) {
        choice = {combo.GetWindowText(), -1};
    } else {
        combo.GetLBText(choice.nIndex, choice.strValue);
    }
    return choice;
}

template <ProfileCombo Combo>
[[nodiscard]] ProfileChoice ListOf(const Combo& combo) {
    CStringArray entries(static_cast<std::size_t>(combo.GetCount()));
    for (int i = 0; i < combo.GetCount(); ++i) {
        combo.GetLBText(i, entries[static_cast<std::size_t>(i)]);
    }
    return {JoinEntries(entries), combo.GetCurSel()};
}

template <ProfileCombo Combo>
void WriteComboNode(const XmlNode& root, const char* name, const Combo& combo) {
    WriteChoiceNode(root, name, CurrentOf(combo));
}

template <ProfileCombo Combo>
void WriteComboListNode(const XmlNode& root, const char* name, const Combo& combo) {
    WriteChoiceNode(root, name, ListOf(combo));
}

template <class Window>
void WriteEditNode(const XmlNode& root, const char* name, const Window& window) {
    WriteTextNode(root, name, window.GetWindowText());
}

/// Fills a combo with the entries of a list and selects the one that the file names. Without entries the face is
/// disabled and keeps its text.
template <ProfileCombo Combo>
void FillComboFromNode(const XmlNode& root, const char* name, Combo& combo) {
    const ProfileChoice list = ReadChoice(root, name);
    const CStringArray entries = SplitEntries(list.strValue);
    combo.ResetContent();
    for (const CString& strEntry : entries) {
        combo.AddString(strEntry);
    }
    if (!entries.empty()) {
        combo.SelectEntry(EntryAt(list.nIndex, static_cast<int>(entries.size())));
    }
    combo.EnableFace(entries.empty() ? 0 : 1);
}

/// Whether a stream is disabled, by the entry of a filled combo that the element's index stands for: 1 or 0, and -1
/// where the index is -1 or missing, which disables as well.
template <ProfileCombo Combo>
[[nodiscard]] int ReadDisableIndex(const XmlNode& root, const char* name, Combo& combo) {
    const int index = XmlNode(root.GetChild(name, false)).GetAttributeInt("index", -1);
    if (index == -1) {
        return -1;
    }
    CString text;
    const int count = combo.GetCount();
    if (count > 0) {
        const int entry = EntryAt(index, count);
        combo.SelectEntry(entry);
        if (entry >= 0) {
            combo.GetLBText(entry, text);
        }
    }
    return IsYes(text) ? 1 : 0;
}

}  // namespace veldan
