#include "controls/GPScrollImageButton.h"

#include "controls/ControlFixture.h"

#include <array>

namespace veldan {
namespace {

constexpr COLORREF kRed = RGB(200, 0, 0);
constexpr COLORREF kGreen = RGB(0, 200, 0);
constexpr COLORREF kBlue = RGB(0, 0, 200);
constexpr COLORREF kGray = RGB(90, 90, 90);

/// The button stands at (50, 60) of the popup, 100 by 20.
class GPImageButtonTest : public ControlTest {
protected:
    GPImageButtonTest() { m_button.Create("caption", WS_CHILD | WS_VISIBLE, {50, 60, 150, 80}, &m_parent, 3998); }
    void Build(const CString& path, int stateCount, BOOL parentBackground = FALSE, BOOL vertical = FALSE) {
        m_button.LoadImageFile(path, "PNG", vertical, stateCount, parentBackground);
        EXPECT_TRUE(m_button.BuildStateBitmaps());
        Person().Settle();
    }
    /// The colour in the middle of a surface.
    [[nodiscard]] static std::uint32_t Middle(const CDC& surface) {
        return surface.GetSafeHdc() ? surface.GetSurface()->At(50, 10) & 0xffffff : 0xbad;
    }
    [[nodiscard]] std::uint32_t Shown() const { return At({100, 70}); }
    void Repaint() {
        m_button.Invalidate();
        Person().Settle();
    }

    [[nodiscard]] bool TipShows() const { return m_button.m_pToolTip->IsWindowVisible(); }

    CGPScrollImageButton m_button;
    const CPoint m_on = kParentAt + CPoint{100, 70};
};

TEST_F(GPImageButtonTest, SlicesAreTheFirstStatesAndTheOthersAreMadeOfThem) {
    const COLORREF one = RGB(1, 0, 0);
    const struct {
        std::vector<COLORREF> slices;
        std::array<std::uint32_t, 6> states;
    } cases[] = {
        // 200 of 255 is 0.784; scaled by 1.05 and shifted by 0.15 either way.
        {{kRed}, {0xc80000, 0xf82626, 0xac0000, 0x3c3c3c, 0xac0000, 0xf82626}},
        {{kRed, kGreen, kBlue, kGray}, {0xc80000, 0x00c800, 0x0000c8, 0x5a5a5a, 0xac0000, 0xf82626}},
        {{kRed, kGreen, kBlue, kGray, one, one, kRed, kRed},
         {0xc80000, 0x00c800, 0x0000c8, 0x5a5a5a, 0x010000, 0x010000}},
    };
    for (const auto& [slices, states] : cases) {
        Build(Columns(slices, 30, 16), static_cast<int>(slices.size()));
        const std::array seen{Middle(m_button.m_dcNormal),  Middle(m_button.m_dcHover),
                              Middle(m_button.m_dcPressed), Middle(m_button.m_dcDisabled),
                              Middle(m_button.m_dcLatched), Middle(m_button.m_dcToggledHover)};
        EXPECT_EQ(seen, states) << slices.size();
    }
}

TEST_F(GPImageButtonTest, WithoutAnImageOrWhereItIsClearTheParentIsSeenAndTheButtonAnswers) {
    EXPECT_FALSE(m_button.BuildStateBitmaps());
    m_button.LoadImageFile(Columns({kRed}, 30, 16), "PNG", FALSE, 0, FALSE);
    EXPECT_FALSE(m_button.BuildStateBitmaps()) << "there are no states";
    EXPECT_FALSE(m_button.m_bStatesBuilt);
    EXPECT_EQ(m_button.m_dcNormal.GetSafeHdc(), nullptr);
    EXPECT_FALSE(m_button.LoadImageFile(m_folder / "none.png", "PNG", FALSE, 4, TRUE));
    EXPECT_TRUE(m_button.BuildStateBitmaps());
    Person().Settle();
    EXPECT_EQ(Shown(), 0x0a141eU);
    Person().Click(m_on);
    EXPECT_EQ(m_parent.CountOf(WM_COMMAND), 1);
    Build(m_folder.Write("clear.png", EncodePng(Surface(40, 4), PngAlpha::Keep)), 1, TRUE);
    // A matrix that lifts all colours must not lift what isn't there.
    EXPECT_EQ(Middle(m_button.m_dcHover), 0x0a141eU);
    EXPECT_EQ(Shown(), 0x0a141eU);
}

TEST_F(GPImageButtonTest, TheFirstLookThatAppliesIsPainted) {
    Build(Columns({kRed, kGreen, kBlue, kGray, RGB(1, 1, 1), RGB(2, 2, 2)}, 30, 16), 6);
    EXPECT_EQ(Shown(), 0xc80000U);
    Person().Rest(m_on);
    EXPECT_EQ(Shown(), 0x00c800U);
    m_button.m_bToggled = TRUE;
    Repaint();
    EXPECT_EQ(Shown(), 0x020202U);
    m_button.m_bLatched = TRUE;
    Repaint();
    EXPECT_EQ(Shown(), 0x010101U);
    Person().Press();
    EXPECT_EQ(Shown(), 0x0000c8U);
    m_button.m_bDisabledLook = TRUE;
    Repaint();
    EXPECT_EQ(Shown(), 0x5a5a5aU);
    Person().Release();
    EXPECT_EQ(m_parent.CountOf(WM_COMMAND), 1);
    m_button.m_bDisabledLook = m_button.m_bLatched = FALSE;
    Person().Move({10, 10});
    Repaint();
    EXPECT_EQ(Shown(), 0x0000c8U);
}

TEST_F(GPImageButtonTest, StackedSlicesStartAtWholePixels) {
    // Ten rows for three slices: they start at 0, 3 and 6.
    Surface rows(4, 10);
    for (int i = 0; i < 40; ++i) {
        rows.Row(0)[i] = i < 12 ? 0xffc80000 : i < 24 ? 0xff00c800 : 0xff0000c8;
    }
    Build(m_folder.Write("rows.png", EncodePng(rows, PngAlpha::Keep)), 3, FALSE, TRUE);
    EXPECT_EQ(m_button.m_dcHover.GetSurface()->At(50, 0) & 0xffffff, 0x00c800U);
    EXPECT_EQ(m_button.m_dcPressed.GetSurface()->At(50, 0) & 0xffffff, 0x0000c8U);
}

TEST_F(GPImageButtonTest, IconOverlayAndTextsLieOnEveryState) {
    m_button.MoveWindow({50, 60, 300, 150});
    m_button.m_bShowIcon = m_button.m_bShowOverlay = m_button.m_bOverlayReady = TRUE;
    m_button.m_pIcon = std::make_unique<CGPResourceImage>();
    m_button.m_pIcon->LoadFile(Icon(kBlue));
    m_button.m_pOverlay = std::make_unique<CGPResourceImage>();
    m_button.m_pOverlay->LoadFile(Icon(kGreen, 8));
    m_button.m_strText = "Text";
    m_button.m_crText = 0xffffff;
    Build(Columns({kRed, kRed}, 30, 16), 2);
    const std::shared_ptr<Surface> pHover = m_button.m_dcHover.GetSurface();
    EXPECT_EQ(pHover->At(30, 50) & 0xffffff, 0x0000c8U);
    EXPECT_EQ(pHover->At(175, 36) & 0xffffff, 0x00c800U);
    EXPECT_EQ(m_button.m_dcDisabled.GetSurface()->At(30, 50) & 0xffffff, 0x161616U);
    int white = 0;
    for (int i = 0; i < 80 * 20; ++i) {
        white += (pHover->At(7 + i % 80, 7 + i / 80) & 0xffffff) == 0xffffff ? 1 : 0;
    }
    EXPECT_GT(white, 5);
}

TEST_F(GPImageButtonTest, AnimationRunsWhileThePointerRests) {
    Build(Columns({kRed}, 30, 16), 1);
    m_button.m_bAnimated = TRUE;
    m_button.m_nFrameCount = 2;
    m_button.m_pFrames = std::make_unique<CDC[]>(2);
    m_button.m_nFrame = 1;
    Person().Rest(m_on);
    EXPECT_EQ(Shown(), 0U);
    Person().Wait(180);
    EXPECT_EQ(m_button.m_nFrame, 0);
    Person().Move({10, 10});
    Person().Wait(400);
    EXPECT_EQ(m_button.m_nFrame, 0);
    m_button.ReleaseAnimationFrames();
    Repaint();
    EXPECT_EQ(Shown(), 0xc80000U);
}

TEST_F(GPImageButtonTest, ATipShowsAfterTheRestAndGoesWithThePointer) {
    m_button.SetTooltipText("", TRUE);
    EXPECT_EQ(m_button.m_strToolTip, "caption") << "a tip without text";
    m_button.SetTooltipText("Scroll up", TRUE);
    EXPECT_EQ(m_button.m_strToolTip, "Scroll up");
    EXPECT_EQ(m_button.m_pToolTip->SendMessage(TTM_GETTOOLCOUNT), 1);
    Person().Rest(m_on, 799);
    EXPECT_FALSE(TipShows());
    Person().Wait(1);
    EXPECT_TRUE(TipShows());
    EXPECT_EQ(Seen(m_button.m_pToolTip->GetWindowRect().TopLeft() + CPoint{1, 1}), 0xffffe1U);
    EXPECT_EQ(TheDesktop().Active(), m_parent.GetSafeHwnd()) << "a tip never takes the focus";
    Person().Move(m_on + CPoint{1, 1});
    EXPECT_TRUE(TipShows());
    Person().Move({10, 10});
    EXPECT_FALSE(TipShows());
    Person().Click(m_on);
    Person().Wait(900);
    EXPECT_FALSE(TipShows()) << "a press ends the wait until the pointer has left";
    m_parent.SetWindowPos(nullptr, 1770, 1000, 500, 400, 0);
    Person().Rest({1910, 1070}, 900);
    ASSERT_TRUE(TipShows());
    const CRect tip = m_button.m_pToolTip->GetWindowRect();
    EXPECT_EQ(tip.Intersect(m_display->ScreenRect()), tip) << "it stays on the screen";
    EXPECT_FALSE(tip.Contains({1910, 1070}));
    m_button.SetTooltipText("Scroll up", FALSE);
    Person().Move({10, 10});
    Person().Rest({1910, 1070}, 1500);
    EXPECT_FALSE(TipShows()) << "switched off";
}

TEST_F(GPImageButtonTest, LosingTheFocusHidesThePopupOnlyWithThePointerOutside) {
    const TopLevelId other = m_display->AddForeignWindow({900, 600, 1000, 700});
    m_button.SetFocus();
    Person().Move(kParentAt + CPoint{400, 300});
    m_display->FocusForeignWindow(other);
    Person().Settle();
    EXPECT_TRUE(m_parent.IsWindowVisible());
    m_button.SetFocus();
    ASSERT_EQ(CWnd::GetFocus(), &m_button);
    Person().Move({10, 10});
    m_display->FocusForeignWindow(other);
    Person().Settle();
    EXPECT_FALSE(m_parent.IsWindowVisible());
}

}  // namespace
}  // namespace veldan
