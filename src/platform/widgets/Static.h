#pragma once

#include "platform/window/Wnd.h"

namespace veldan {

/// Style bits of statics.
inline constexpr UINT SS_LEFT = 0x00;
inline constexpr UINT SS_CENTER = 0x01;

/// A label: text in the window's font, wrapped at words, on the brush that the parent gives for WM_CTLCOLORSTATIC or
/// else on the parent's own background. The pointer passes through to the parent. Never takes the focus.
class VELDAN_PLATFORM_API CStatic : public CWnd {
public:
    CStatic();
    ~CStatic() override;

    /// `rect` is in the parent's client pixels.
    bool Create(const CString& text, UINT style, const CRect& rect, CWnd* parent, UINT id);

    static const WindowClass kWindowClass;

protected:
    [[nodiscard]] static const MessageMap& ClassMessageMap();
    [[nodiscard]] const MessageMap& GetMessageMap() const override;
    LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    void Paint();
    void DrawParentBackground(CDC& dc);
    void DrawLabel(CDC& dc);
};

}  // namespace veldan
