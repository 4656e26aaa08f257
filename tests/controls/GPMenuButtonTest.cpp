#include "controls/GPMenuButton.h"

#include "controls/ControlFixture.h"
#include "controls/LookCache.h"

namespace veldan {
namespace {

constexpr std::uint32_t kSkin = 0x6f3217;
constexpr std::uint32_t kHovered = 0xb3410f;
constexpr CPoint kAway = {10, 10};

class GPMenuButtonTest : public ControlTest {
protected:
    /// A profile row, from (0, 100) of the popup.
    std::unique_ptr<CGPMenuButton> MakeRow(UINT id = 1000, int top = 100, CSize size = {350, 50}) {
        auto pRow = std::make_unique<CGPMenuButton>();
        pRow->Create("row", WS_CHILD | WS_VISIBLE, CRect::FromSize({0, top}, size), &m_parent, id);
        pRow->SetKind(1);
        return pRow;
    }
    void MakeUsual(CGPMenuButton& row, const CString& description = "Description") {
        row.LoadImageFile(Icon(RGB(0, 0, 200)), "PNG");
        row.SetCaption("Caption");
        row.SetDescription(description);
        row.Invalidate();
        Person().Settle();
    }
    [[nodiscard]] std::vector<std::uint32_t> PixelsOf(const CWnd& window) const {
        const CRect rect = window.GetWindowRect();
        std::vector<std::uint32_t> pixels;
        for (int i = 0; i < rect.Width() * rect.Height(); ++i) {
            pixels.push_back(Seen(rect.TopLeft() + CPoint{i % rect.Width(), i / rect.Width()}));
        }
        return pixels;
    }
    [[nodiscard]] CPoint PointOn(const CWnd& window) const { return window.GetWindowRect().TopLeft() + CPoint{300, 5}; }
    /// How many pixels of the area have another colour than the skin, or the hovered one.
    [[nodiscard]] int Ink(const CRect& area) const {
        int count = 0;
        for (int i = 0; i < area.Width() * area.Height(); ++i) {
            const std::uint32_t pixel = At(area.TopLeft() + CPoint{i % area.Width(), i / area.Width()});
            count += pixel != kSkin && pixel != kHovered ? 1 : 0;
        }
        return count;
    }
    /// What the states of all rows take.
    static std::size_t StateBytes() { return CLookCache::Share()->States().Bytes(); }

    static constexpr std::uint32_t kYellow = 0xffff00;
};

TEST_F(GPMenuButtonTest, StatesDifferInGradientAndInTheColoursOfTheIcon) {
    const auto pRow = MakeRow();
    MakeUsual(*pRow);
    EXPECT_EQ(At({340, 110}), kSkin);
    // The icon lies 7 pixels from the left and the top.
    EXPECT_EQ(At({6, 106}), kSkin);
    EXPECT_EQ(At({7, 107}), 0x0000c8U);
    EXPECT_EQ(At({41, 141}), 0x0000c8U);
    EXPECT_EQ(At({42, 142}), kSkin);
    Person().Rest(PointOn(*pRow));
    EXPECT_EQ(At({340, 110}), kHovered);
    EXPECT_EQ(At({24, 124}), 0x2626f8U);
    Person().Move(kAway);
    EXPECT_EQ(At({340, 110}), kSkin);
    pRow->SetSelected(TRUE);
    Person().Rest(PointOn(*pRow));
    Person().Move(kAway);
    EXPECT_EQ(At({340, 110}), kHovered) << "a selected row keeps the look";
    pRow->m_bDisabledLook = TRUE;
    pRow->Invalidate();
    Person().Settle();
    EXPECT_EQ(At({24, 124}), 0x161616U);
    EXPECT_EQ(At({340, 100}) & 0xff, At({340, 100}) >> 16);
    EXPECT_GT(At({340, 101}), At({340, 148}));
    const auto pEmpty = MakeRow(1001, 200, {0, 0});
    MakeUsual(*pEmpty);
    pEmpty->SetWindowPos(nullptr, 0, 0, 20, 1, SWP_NOMOVE);
    Person().Settle();
    EXPECT_EQ(At({30, 230}), 0x0a141eU) << "a row without size is harmless";
}

TEST_F(GPMenuButtonTest, TextsStandBehindASquareForTheIcon) {
    const auto pRow = MakeRow();
    MakeUsual(*pRow);
    EXPECT_EQ(Ink({43, 100, 54, 150}), 0);
    EXPECT_GT(Ink({54, 104, 200, 120}), 50);
    EXPECT_GT(Ink({54, 120, 200, 140}), 50);
    EXPECT_EQ(Ink({54, 140, 350, 150}), 0);
    const auto pGroup = MakeRow(4000, 200, {150, 30});
    pGroup->SetKind(2);
    MakeUsual(*pGroup);
    EXPECT_EQ(pGroup->GetKind(), 0);
    EXPECT_EQ(At({7, 207}), 0x0000c8U);
    EXPECT_EQ(At({23, 223}), kSkin);
    EXPECT_GT(Ink({34, 205, 100, 225}), 50);
}

TEST_F(GPMenuButtonTest, AStarAtTheEndOfTheCaptionIsAYellowMark) {
    const auto pRow = MakeRow();
    const auto pPlain = MakeRow(1001, 200);
    for (const auto& [row, caption] : {std::pair{pRow.get(), "Caption**"}, {pPlain.get(), "Caption"}}) {
        row->SetCaption(caption);
        row->LoadImageFile(Icon(RGB(0, 0, 200)), "PNG");
    }
    Person().Settle();
    EXPECT_EQ(pRow->GetCaption(), "Caption");
    CRect differing = {350, 50, 0, 0};
    for (int i = 0; i < 350 * 50; ++i) {
        const CPoint at{i % 350, i / 350};
        if (At(at + CPoint{0, 100}) != At(at + CPoint{0, 200})) {
            differing = {std::min(differing.left, at.x), std::min(differing.top, at.y),
                         std::max(differing.right, at.x + 1), std::max(differing.bottom, at.y + 1)};
        }
    }
    EXPECT_EQ(differing.Size(), (CSize{5, 5}));
    EXPECT_EQ(differing.top, 4);
    EXPECT_EQ(At({differing.left + 2, 106}), kYellow);
    Person().Rest(PointOn(*pRow));
    EXPECT_EQ(At({differing.left + 2, 106}), kYellow);
}

TEST_F(GPMenuButtonTest, ACaptionOfStarsLeavesTheMarkToTheNormalState) {
    const auto pRow = MakeRow();
    pRow->LoadImageFile(Icon(RGB(0, 0, 200)), "PNG");
    pRow->SetCaption("*");
    pRow->SetDescription("Description");
    Person().Settle();
    EXPECT_EQ(At({61, 106}), kYellow);
    EXPECT_GT(Ink({54, 120, 200, 140}), 50);
    Person().Rest(PointOn(*pRow));
    EXPECT_EQ(At({61, 106}), kHovered);
    EXPECT_EQ(Ink({54, 120, 200, 140}), 0);
}

TEST_F(GPMenuButtonTest, WithoutAnImageTheRowIsBlack) {
    const auto pRow = MakeRow();
    pRow->SetCaption("Caption");
    Person().Settle();
    EXPECT_EQ(At({24, 124}), 0U);
    EXPECT_EQ(Ink({0, 100, 350, 150}), 350 * 50);
    pRow->LoadImageFile(m_folder.Write("damaged.png", "no picture"), "PNG");
    pRow->Invalidate();
    Person().Settle();
    EXPECT_EQ(At({24, 124}), kSkin);
    EXPECT_GT(Ink({54, 104, 200, 120}), 50);
}

TEST_F(GPMenuButtonTest, AnIconOfTooManyPixelsIsNone) {
    const auto pRow = MakeRow();
    EXPECT_TRUE(pRow->LoadImageFile(Columns({kParentColour}, 1024, 64), "PNG"));
    EXPECT_FALSE(pRow->LoadImageFile(Columns({kParentColour}, 1025, 64), "PNG"));
    pRow->SetCaption("Caption");
    pRow->Invalidate();
    Person().Settle();
    EXPECT_EQ(At({24, 124}), kSkin);
    EXPECT_GT(Ink({54, 104, 200, 120}), 50);
}

TEST_F(GPMenuButtonTest, WhatIsSetAfterTheFirstPaintDoesNotShow) {
    const auto pRow = MakeRow();
    const auto pSame = MakeRow(1001, 200);
    MakeUsual(*pRow);
    MakeUsual(*pSame);
    pRow->SetCaption("Another");
    pRow->SetDescription("");
    pRow->SetKind(0);
    pRow->m_crHoverTop = 0;
    pRow->LoadImageFile(Icon(RGB(200, 0, 0)), "PNG");
    pRow->Invalidate();
    Person().Settle();
    EXPECT_EQ(PixelsOf(*pRow), PixelsOf(*pSame));
    // The hover state is made only now.
    pRow->SetSelected(TRUE);
    pSame->SetSelected(TRUE);
    m_parent.Invalidate();
    Person().Settle();
    EXPECT_EQ(At({340, 110}), kHovered);
    EXPECT_EQ(PixelsOf(*pRow), PixelsOf(*pSame));
}

TEST_F(GPMenuButtonTest, ManyRowsKeepTheirPixelsWithinABound) {
    std::vector<std::unique_ptr<CGPMenuButton>> rows;
    std::vector<std::uint32_t> first;
    for (UINT i = 0; i < 400; ++i) {
        rows.push_back(MakeRow(1000 + i));
        MakeUsual(*rows.back(), ReplaceAll(CString(200, '-'), "-", "word "));
        if (i == 0) {
            first = PixelsOf(*rows[0]);
        }
        rows.back()->ShowWindow(SW_HIDE);
    }
    EXPECT_LE(StateBytes(), CStatePool::kMostBytes);
    EXPECT_GT(StateBytes(), CStatePool::kMostBytes / 2);
    rows[0]->ShowWindow(SW_SHOW);
    Person().Settle();
    EXPECT_EQ(PixelsOf(*rows[0]), first);
    rows.clear();
    EXPECT_EQ(StateBytes(), 0U);
}

TEST_F(GPMenuButtonTest, RowsThatCanBeSeenKeepTheirPixelsBeyondTheBound) {
    m_parent.SetWindowPos(nullptr, 0, 0, 4000, 1080, SWP_NOMOVE);
    std::vector<std::unique_ptr<CGPMenuButton>> rows;
    for (UINT i = 0; i < 30; ++i) {
        rows.push_back(MakeRow(1000 + i, 0, {1000, 250}));
        MakeUsual(*rows.back(), ReplaceAll(CString(3000, '-'), "-", "word "));
    }
    const std::size_t all = StateBytes();
    EXPECT_GT(all, CStatePool::kMostBytes);
    rows[0]->ShowWindow(SW_HIDE);
    rows.push_back(MakeRow(2000, 0, {1000, 250}));
    MakeUsual(*rows.back(), ReplaceAll(CString(3000, '-'), "-", "word "));
    EXPECT_EQ(StateBytes(), all);
}

TEST_F(GPMenuButtonTest, RestingTellsTheParentOncePerEntryAndEachPressIsAClick) {
    const auto pRow = MakeRow();
    const auto pGroup = MakeRow(4000, 200);
    pGroup->SetKind(0);
    Person().Move(PointOn(*pRow));
    Person().Wait(9);
    EXPECT_EQ(m_parent.CountOf(kMsgItemHover), 0);
    Person().Wait(1);
    EXPECT_EQ(m_parent.CountOf(kMsgItemHover), 1);
    Person().Wait(100);
    Person().Move(PointOn(*pRow) + CPoint{9, 9});
    Person().Wait(100);
    EXPECT_EQ(m_parent.CountOf(kMsgItemHover), 1);
    Person().Rest(PointOn(*pGroup));
    EXPECT_EQ(m_parent.CountOf(kMsgGroupHover), 1);
    Person().Rest(PointOn(*pRow));
    EXPECT_EQ(m_parent.CountOf(kMsgItemHover), 2);
    Person().DoubleClick(PointOn(*pRow));
    EXPECT_EQ(m_parent.CountOf(kMsgItemClick), 2) << "both presses are clicks";
}

MenuButtonClickInfo g_info;

TEST_F(GPMenuButtonTest, ARightClickCallsBackWhereThatIsEnabled) {
    const auto pRow = MakeRow();
    pRow->m_pfnRightClick = [](const MenuButtonClickInfo* pInfo) { g_info = *pInfo; };
    Person().Click(PointOn(*pRow), 3);
    EXPECT_EQ(g_info.pButton, nullptr);
    Person().Wait(600);
    pRow->m_bRightClickEnabled = TRUE;
    Person().Click(PointOn(*pRow), 3);
    EXPECT_EQ(g_info.pButton, pRow.get());
    EXPECT_EQ(g_info.nId, 1000);
    EXPECT_EQ(g_info.x, 300);
    EXPECT_EQ(g_info.y, 5);
    EXPECT_NE(CWnd::GetFocus(), pRow.get());
    auto pOther = MakeRow(1001, 200);
    pOther->m_bRightClickEnabled = TRUE;
    pOther->m_pfnRightClick = [](const MenuButtonClickInfo* pInfo) { delete pInfo->pButton; };
    Person().Click(PointOn(*pOther.release()), 3);
    EXPECT_EQ(TheDesktop().WindowCount(), 2U) << "the callback may delete the button";
}

}  // namespace
}  // namespace veldan
