#pragma once

#include "profile/ProfileNodes.h"

namespace veldan::testing {

/// What the format asks of a combo box, without a window.
class ListCombo {
public:
    [[nodiscard]] int GetCount() const { return static_cast<int>(m_entries.size()); }
    [[nodiscard]] int GetCurSel() const { return m_iSelected; }
    void GetLBText(int index, CString& text) const { text = m_entries.at(static_cast<std::size_t>(index)); }
    [[nodiscard]] CString GetWindowText() const { return m_strWindowText; }
    void ResetContent() {
        m_entries.clear();
        m_iSelected = -1;
    }
    void AddString(const CString& text) { m_entries.push_back(text); }
    void SelectEntry(int index) {
        m_iSelected = index;
        m_strFace = index < 0 ? "" : m_entries.at(static_cast<std::size_t>(index));
    }
    void EnableFace(int isEnabled) { m_bEnabled = isEnabled != 0; }

    CStringArray m_entries;
    int m_iSelected = -1;
    CString m_strWindowText;
    CString m_strFace = "old";
    bool m_bEnabled = true;
};

}  // namespace veldan::testing
