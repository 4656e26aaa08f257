#include "menu/DlgCustomMenu.h"
#include "platform/core/File.h"
#include "platform/window/Desktop.h"
#include "resources/Dialogs.h"
#include "storage/Log.h"
#include "veldan/veldan.h"

#include <algorithm>
#include <cstdlib>
#include <mutex>
#include <utility>

namespace veldan {
namespace {

/// The trace goes to the disk when the person who starts the host asks for it.
void ChooseLogFolder() {
    static std::recursive_mutex mutex;
    const char* pszFolder = secure_getenv("VELDAN_LOG_DIR");
    if (pszFolder && PathExists(pszFolder, true)) {
        SetLogTarget(pszFolder, "veldan.log", "veldan-api.log", &mutex);
    }
}

/// Far beyond any screen, and near enough that no sum with the menu's size overflows.
int LimitCoordinate(int nPosition) {
    constexpr int kMaxCoordinate = 16384;
    return std::clamp(nPosition, -kMaxCoordinate, kMaxCoordinate);
}

}  // namespace
}  // namespace veldan

using veldan::CDlgCustomMenu;
using veldan::Desktop;
using veldan::g_pMenuDialog;

// Each call may come from inside a message of the menu itself, and what it shows or hides runs code of the host, which
// may call again; so nothing is held across such a step. At the end of each the host's loop can wait safely.

void VELDAN_InitProfileMenus(veldan::CWnd* /*pParentWnd*/, const char* pszPath) {
    if (g_pMenuDialog) {
        return;
    }
    veldan::ChooseLogFolder();
    g_pMenuDialog = new CDlgCustomMenu;
    g_pMenuDialog->SetBasePath(pszPath);
    g_pMenuDialog->Create(veldan::kMenuDialogId);
    Desktop::Get().Settle();
}

void VELDAN_ShowProfileMenus(veldan::CWnd* pHostWnd, int x, int y, unsigned uMsg) {
    if (!g_pMenuDialog || !pHostWnd) {
        return;
    }
    g_pMenuDialog->SetHost(pHostWnd->GetSafeHwnd(), uMsg);
    g_pMenuDialog->SetWindowPos(nullptr, veldan::LimitCoordinate(x), veldan::LimitCoordinate(y), 0, 0,
                                veldan::SWP_NOSIZE);
    g_pMenuDialog->ShowWindow(veldan::SW_SHOW);
    Desktop::Get().Settle();
}

void VELDAN_HideProfileMenus() {
    if (g_pMenuDialog) {
        g_pMenuDialog->ShowWindow(veldan::SW_HIDE);
        Desktop::Get().Settle();
    }
}

void VELDAN_ReleaseProfileMenus() {
    // The name goes first: losing the menu's activation, the host may call Release again.
    if (CDlgCustomMenu* pMenu = std::exchange(g_pMenuDialog, nullptr)) {
        pMenu->DestroyWindow();
        delete pMenu;
        Desktop::Get().Settle();
    }
}
