#pragma once

#include "controls/GPMenuButton.h"
#include "platform/core/Text.h"

#include <memory>
#include <unordered_map>

namespace veldan {

/// One entry of the menu, a group or a profile, with its button.
struct MenuItem {
    std::unique_ptr<CGPMenuButton> m_pButton;
    int m_iID = 0;                  ///< Control id of the button.
    int m_iMenuNum = 1;             ///< Group: number of its rows as its index tells, within what is possible.
    int m_iLevel = 1;               ///< 1 group, 2 profile.
    int m_iIndex = 0;               ///< Profile: number of its entry in the group's index.
    int m_iMenuCurSelectedPos = 0;  ///< Group: minus the number of rows scrolled past.
    int m_iParentID = 0;            ///< Profile: id of its group.
    MenuItem* m_pParent = nullptr;  ///< Profile: its group.
    CString m_strName;              ///< Profile: its name for the user.
    CString m_strComment;
    CString m_strXml;                           ///< Profile: file name, as in the index.
    CString m_strPng;                           ///< Profile: file name of its icon, as in the index.
    CMapStringToPtr<MenuItem> m_mapLevel2Menu;  ///< Group: its profiles, which belong to the menu.
    CString m_strFolder;                        ///< Group: its name, which is its folder's too.
};

/// Entries by the decimal text of their id, with ownership.
using MenuItemMap = std::unordered_map<CString, std::unique_ptr<MenuItem>>;

}  // namespace veldan
