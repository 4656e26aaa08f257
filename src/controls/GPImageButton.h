#pragma once

#include "controls/GPResourceImage.h"
#include "controls/GPSkinButton.h"
#include "platform/draw/DC.h"
#include "platform/draw/Graphics.h"

#include <array>
#include <memory>

namespace veldan {

/// Where the frames of an animated button come from.
class CGPAnimation {
public:
    virtual ~CGPAnimation() = default;
};

/// A button whose whole look comes from one skin image: up to six pictures of it, side by side or stacked. Each state
/// is composed once, into a surface; a state without a picture of its own is derived from the first one by its colours.
/// Painting is a block copy.
///
/// Calls in order: create the window, LoadImageFile, SetTooltipText, BuildStateBitmaps, show it. The fields for further
/// layers and looks are written directly, before BuildStateBitmaps; those that only choose a look also later, followed
/// by an invalidation.
class CGPImageButton : public CGPSkinButton {
public:
    explicit CGPImageButton(int style);
    ~CGPImageButton() override;

    /// The skin: `stateCount` pictures, stacked where `vertical`. With `parentBackground` the image's alpha shows what
    /// the parent has under the button. False if the file is no picture; the button then has no look but still works.
    bool LoadImageFile(const CString& path, const char* type, BOOL vertical, int stateCount, BOOL parentBackground);
    /// Composes all states anew from what the fields say and what the parent shows now. False without an image.
    bool BuildStateBitmaps();
    void ReleaseStateBitmaps();
    /// Copies what the parent had under the button when the states were built.
    void DrawParentBackground(CDC* pDC);
    /// An empty text takes the window's text.
    void SetTooltipText(CString text, BOOL activate);
    void InitToolTip();
    void ReleaseAnimationFrames();

    int m_nStyle;
    int m_nStateCount = 0;
    BOOL m_bVertical = TRUE;
    BOOL m_bParentBackground = FALSE;
    BOOL m_bDisabledLook = FALSE;  ///< Only the look: the button still answers.
    BOOL m_bStatesBuilt = FALSE;
    BOOL m_bLatched = FALSE;
    BOOL m_bShowIcon = FALSE;
    BOOL m_bShowOverlay = FALSE;  ///< The overlay is drawn with m_bOverlayReady set as well.
    BOOL m_bOverlayReady = FALSE;
    BOOL m_bToggled = FALSE;
    CString m_strText;
    CString m_strSubText;
    COLORREF m_crText = 0;
    std::array<COLORREF, 4> m_crPalette = {0x373737, 0xffffff, 0x808080, 0xf5f5f5};
    std::unique_ptr<CGPResourceImage> m_pImage;
    std::unique_ptr<CGPResourceImage> m_pIcon;
    std::unique_ptr<CGPResourceImage> m_pOverlay;
    CRect m_rcText = {-1, -1, -1, -1};     ///< All -1: computed.
    CRect m_rcSubText = {-1, -1, -1, -1};  ///< All -1: computed.
    RectF m_rcfIcon = {-1, -1, -1, -1};    ///< x or y of -1: the usual place.
    int m_nTextHeight = 16;
    int m_nSubTextHeight = 14;
    BOOL m_bTextBold = FALSE;
    BOOL m_bSubTextBold = FALSE;
    UINT m_nTextFormat = DT_SINGLELINE | DT_VCENTER;
    UINT m_nSubTextFormat = DT_WORDBREAK | DT_VCENTER;

    CDC m_dcBackground;
    CDC m_dcNormal;
    CDC m_dcHover;
    CDC m_dcPressed;
    CDC m_dcToggledHover;
    CDC m_dcDisabled;
    CDC m_dcLatched;

    BOOL m_bAnimated = FALSE;  ///< Frames in place of the normal and the hover look.
    std::unique_ptr<CGPAnimation> m_pAnimation;
    int m_nFrame = -1;
    int m_nFrameCount = 0;
    std::unique_ptr<CDC[]> m_pFrames;

protected:
    [[nodiscard]] static const MessageMap& ClassMessageMap();
    [[nodiscard]] const MessageMap& GetMessageMap() const override;
    void DrawItem(DRAWITEMSTRUCT* lpDrawItemStruct) override;

private:
    struct Layout;

    HBRUSH CtlColor(CDC* pDC, UINT ctlColor);
    LRESULT OnMouseLeave(WPARAM wParam, LPARAM lParam);
    LRESULT OnMouseHover(WPARAM wParam, LPARAM lParam);
    void OnTimer(UINT_PTR id);

    [[nodiscard]] std::array<CDC*, 7> Surfaces();
    [[nodiscard]] const CDC& SurfaceToPaint(UINT itemState) const;
    [[nodiscard]] Layout MakeLayout(CDC& buffer) const;
    void PlaceTexts(Layout& layout, CDC& buffer) const;
    void ComposeState(CDC& buffer, const Layout& layout, int state);
    void DrawTexts(CDC& buffer, const Layout& layout) const;
};

}  // namespace veldan
