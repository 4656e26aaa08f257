#pragma once

#include "menu/MenuFixture.h"

namespace veldan {

/// A host with its menu on a catalogue, and a desktop for the process that makes it.
class Actor {
public:
    explicit Actor(const CString& base) {
        m_pHost = std::make_unique<HostWnd>();
        m_pHost->CreateEx(0, CWnd::kPlainClass, "host", WS_VISIBLE, {700, 50, 1300, 850}, {}, 0);
        VELDAN_InitProfileMenus(m_pHost.get(), base.c_str());
        VELDAN_ShowProfileMenus(m_pHost.get(), 100, 100, kPickMessage);
    }
    ~Actor() { VELDAN_ReleaseProfileMenus(); }
    Actor(const Actor&) = delete;
    Actor& operator=(const Actor&) = delete;

    [[nodiscard]] static CDlgCustomMenu& Menu() { return *g_pMenuDialog; }
    [[nodiscard]] HostWnd& Host() { return *m_pHost; }

    /// The id of a profile's row in a group; 0 if there is none.
    [[nodiscard]] static int IDOf(std::string_view group, std::string_view xml) {
        for (const auto& [strKey, pItem] : Menu().Items()) {
            if (pItem->m_strXml == xml && pItem->m_pParent->m_strFolder == group) {
                return pItem->m_iID;
            }
        }
        return 0;
    }

    /// Clicks a row. False if there is no such row.
    static bool Pick(std::string_view group, std::string_view xml) {
        const int id = IDOf(group, xml);
        if (id != 0) {
            Menu().OnItemClick(static_cast<WPARAM>(id), 0);
        }
        return id != 0;
    }
    static void Delete(const CString& strXml) { Menu().RemoveProfileByFile("C:\\Profiles\\UserDefine\\" + strXml); }

private:
    MemoryDesk m_desk;
    std::unique_ptr<HostWnd> m_pHost;
};

}  // namespace veldan
