#pragma once

#include "controls/GPMenuButtonLook.h"
#include "controls/GPSkinButton.h"
#include "controls/LookCache.h"

#include <memory>

namespace veldan {

class CGPMenuButton;

/// A right click on a menu button, for the length of the callback.
struct MenuButtonClickInfo {
    int nId;
    int x;  ///< In the button's client pixels.
    int y;
    CGPMenuButton* pButton;
};

// Messages to the parent; wParam is the button's control id, lParam 0.
inline constexpr UINT kMsgGroupHover = 0x6bd;  ///< Posted when the pointer rests on a group button.
inline constexpr UINT kMsgItemHover = 0x6be;   ///< Posted when the pointer rests on a profile row.
inline constexpr UINT kMsgItemClick = 0x6c7;   ///< Sent on a click on either.

/// One row of the menu: a group or, with a description, a profile. It shows an icon and its texts over a gradient.
///
/// Image, kind, texts, size and colours are taken as they are when the button first paints; what is set later doesn't
/// show. The pixels of a state are made when it is first shown, kept within the bounds of CStatePool, and made again
/// where they were dropped; all other paints are block copies. Without an image nothing is made and the row is black.
class CGPMenuButton : public CGPSkinButton {
public:
    CGPMenuButton();
    ~CGPMenuButton() override;

    /// 1 makes a profile row; anything else a group button.
    void SetKind(int kind) { m_nKind = kind == 1 ? 1 : 0; }
    /// Keeps the hover look while the pointer is elsewhere. The caller invalidates the button.
    void SetSelected(BOOL selected) { m_bSelected = selected; }
    /// A caption that ends in "*" asks for the yellow mark in place of its stars.
    void SetCaption(const CString& text) { m_strCaption = text; }
    void SetDescription(const CString& text) { m_strDescription = text; }
    /// False if there is no such picture among the resources.
    bool LoadImageResource(UINT id, const char* type);
    /// False if the file is no picture or one of more than 64 Ki pixels; the button is then drawn without one. `type`
    /// is of no importance.
    bool LoadImageFile(const CString& path, const char* type);
    /// The same from the bytes of such a file.
    bool LoadImageBytes(CString bytes);

    /// As if none had been loaded.
    void DropImage() {
        m_pImage.reset();
        m_nImageBytes = 0;
    }

    BOOL m_bDisabledLook = FALSE;
    BOOL m_bShowBadge = FALSE;
    COLORREF m_crText = 0xe9e9e9;
    COLORREF m_crHoverText = 0xe9e9e9;
    COLORREF m_crHoverBottom = 0x0f41b3;
    COLORREF m_crHoverTop = 0x0f41b3;
    COLORREF m_crNormalTop = 0x17326f;
    COLORREF m_crNormalBottom = 0x17326f;
    std::shared_ptr<CGPResourceImage> m_pBadge;
    BOOL m_bRightClickEnabled = FALSE;                              ///< Exactly TRUE lets the callback be called.
    void (*m_pfnRightClick)(const MenuButtonClickInfo*) = nullptr;  ///< May destroy the button.

    [[nodiscard]] int GetKind() const { return m_nKind; }
    [[nodiscard]] const CString& GetCaption() const { return m_strCaption; }
    [[nodiscard]] const CString& GetDescription() const { return m_strDescription; }
    [[nodiscard]] bool HasImage() const { return m_pImage != nullptr; }
    /// What the encoded image takes in memory; nothing for one of the library's own, which all share.
    [[nodiscard]] std::size_t GetImageBytes() const { return m_nImageBytes; }

protected:
    [[nodiscard]] const MessageMap& GetMessageMap() const override;
    void DrawItem(DRAWITEMSTRUCT* lpDrawItemStruct) override;

private:
    HBRUSH CtlColor(CDC* pDC, UINT ctlColor);
    void OnKillFocus(CWnd* pNewWnd);
    void OnClicked();
    void OnRButtonDown(UINT flags, CPoint point);
    LRESULT OnMouseHover(WPARAM wParam, LPARAM lParam);

    void FreezeLook();

    int m_nKind = 0;
    BOOL m_bSelected = FALSE;
    BOOL m_bStatesBuilt = FALSE;
    BOOL m_bNewMark = FALSE;
    CString m_strCaption;
    CString m_strDescription;
    std::shared_ptr<CLookCache> m_pCache = CLookCache::Share();
    std::shared_ptr<CGPResourceImage> m_pImage;
    std::size_t m_nImageBytes = 0;
    std::unique_ptr<const CGPMenuButtonLook> m_pLook;  // once m_bStatesBuilt is set
    CGPFrozenState m_dcNormal;
    CGPFrozenState m_dcHover;
    CGPFrozenState m_dcDisabled;
};

}  // namespace veldan
