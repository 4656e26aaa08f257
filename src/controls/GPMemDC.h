#pragma once

#include "platform/draw/DC.h"

namespace veldan {

/// A device context for one drawing pass: what is drawn on it reaches the target as one block copy, at its end. The
/// target must outlive it. On a printing target it draws straight away, through the target's own handles.
class CGPMemDC : public CDC {
public:
    /// `rect` is in the target's logical coordinates, which serve here as well; all zero, it means the clip box.
    CGPMemDC(CDC& target, const CRect& rect);
    ~CGPMemDC() override;

private:
    CBitmap m_bitmap;
    CBitmap* m_pOldBitmap = nullptr;
    CDC* m_pDC;
    CRect m_rect;
    BOOL m_bMemDC;
};

}  // namespace veldan
