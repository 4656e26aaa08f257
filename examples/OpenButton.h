#pragma once

#include "platform/widgets/Button.h"

/// The button that opens the menu.
class OpenButton : public veldan::CButton {
protected:
    [[nodiscard]] const veldan::MessageMap& GetMessageMap() const override;
    void DrawItem(veldan::DRAWITEMSTRUCT* lpDrawItemStruct) override;

private:
    void OnMouseMove(veldan::UINT flags, veldan::CPoint point);
    veldan::LRESULT OnMouseLeave(veldan::WPARAM wParam, veldan::LPARAM lParam);

    bool m_bHot = false;
};
