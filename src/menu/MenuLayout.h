#pragma once

#include "platform/core/Geometry.h"

namespace veldan {

/// Where everything in the menu stands, for a number of groups: a column of groups to the left, beside it the rows of
/// the open group between two strips that scroll them. All rectangles are in the menu's client pixels.
class MenuLayout {
public:
    /// So many groups have room beside the rows of a menu whose number of rows isn't corrected.
    static constexpr int kGroupsOfFullMenu = 20;

    explicit MenuLayout(int groupCount = kGroupsOfFullMenu)
        : m_iGroupCount(groupCount), m_iRowAdjust((groupCount - kGroupsOfFullMenu) / 2) {}

    [[nodiscard]] CSize Size() const { return {507, 30 * m_iGroupCount + 4}; }
    [[nodiscard]] static CRect Group(int number);
    /// A profile in a row of the screen; the first is 0, rows scrolled past are negative.
    [[nodiscard]] static CRect Row(int row);
    [[nodiscard]] CRect ScrollUp() const;
    [[nodiscard]] CRect ScrollDown() const;
    /// The row below those that are shown of the user's own profiles.
    [[nodiscard]] CRect AddButton() const { return Row(VisibleRows(true)); }
    /// The line between the groups and the rows, one pixel wide.
    [[nodiscard]] CRect Separator() const;

    /// How many rows of a group are shown. The user's own profiles leave one row to the add button.
    [[nodiscard]] int VisibleRows(bool isUserDefine) const { return m_iRowAdjust + (isUserDefine ? 10 : 11); }
    /// The y at which so many rows end.
    [[nodiscard]] static int RowsBottom(int rows) { return Row(rows).top; }
    [[nodiscard]] static int RowsTop() { return Row(0).top; }

    /// Whether the wheel moves the menu there, instead of scrolling the rows.
    [[nodiscard]] static bool IsOverGroups(CPoint client) { return client.x < 150; }
    /// How far down a turn of the wheel over the groups moves a menu at this place of the screen. It brings what
    /// overhangs the owner within reach and goes no further; a limit beyond which groups would leave the screen, or
    /// never come back onto it, gives way.
    [[nodiscard]] static int SlideOf(const CRect& menu, const CRect& owner, const CRect& screen, int zDelta);

private:
    int m_iGroupCount;
    int m_iRowAdjust;  ///< Correction of the number of rows for the number of groups.
};

}  // namespace veldan
