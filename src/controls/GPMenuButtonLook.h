#pragma once

#include "controls/GPFrozenState.h"
#include "controls/GPResourceImage.h"
#include "platform/core/Types.h"
#include "platform/draw/DC.h"

#include <memory>

namespace veldan {

class CLookCache;

/// Everything that the pixels of a menu button depend on, as it was when the button first painted. Composing a state
/// gives the same pixels at any time.
struct CGPMenuButtonLook {
    enum class State { Normal, Hover, Disabled };

    int nKind = 0;
    CSize size;
    CString strCaption;  // without the stars that ask for the mark
    CString strDescription;
    bool bNewMark = false;
    /// The normal state draws its texts and the mark also where stars were all of the caption.
    bool bTextInNormal = false;
    COLORREF crText = 0;
    COLORREF crHoverText = 0;
    COLORREF crHoverBottom = 0;
    COLORREF crHoverTop = 0;
    COLORREF crNormalTop = 0;
    COLORREF crNormalBottom = 0;
    std::shared_ptr<CGPResourceImage> pImage;
    std::shared_ptr<CGPResourceImage> pBadge;  // null unless it is shown

    void Compose(CGPFrozenState& frozen, State state, CLookCache& cache) const;

private:
    [[nodiscard]] std::shared_ptr<const CDC> Background(State state, CLookCache& cache) const;
    void DrawIcon(CDC& dc, State state) const;
    void DrawBadge(CDC& dc, State state) const;
    void DrawCaption(CDC& dc, State state) const;
    void DrawDescription(CDC& dc, State state) const;
    [[nodiscard]] COLORREF TextColour(State state) const;
};

}  // namespace veldan
