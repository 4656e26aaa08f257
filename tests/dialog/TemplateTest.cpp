#include "platform/dialog/Dialog.h"
#include "platform/widgets/Static.h"
#include "support/DesktopFixture.h"
#include "support/Probe.h"

namespace veldan {

namespace {

constexpr UINT kStop = WS_VISIBLE | WS_TABSTOP;

constexpr DialogControl kControls[] = {
    ControlOf<CStatic>(10, "Name", {4, 8, 40, 8}),
    ControlOf<CButton>(11, "first", {4, 16, 40, 16}, kStop | BS_OWNERDRAW),
    ControlOf<CButton>(12, "hidden", {4, 40, 40, 16}, WS_TABSTOP),
    ControlOf<CButton>(13, "second", {4, 40, 40, 16}, kStop),
    ControlOf<CButton>(14, "no stop", {4, 64, 40, 16}),
};
constexpr DialogTemplate kForms[] = {{.id = 900, .size = {0, 0, 100, 80}, .caption = "form", .controls = kControls}};

/// Counts its bindings, as a control does that prepares itself there.
class BoundButton : public ProbeButton {
public:
    int bindings = 0;
    const CFont* fontAtBinding = nullptr;

protected:
    void PreSubclassWindow() override {
        ++bindings;
        fontAtBinding = GetFont();
    }
};

class Form : public Probe<CDialog> {
public:
    BoundButton button;
    BoundButton missing;
    CString strName = "from the member";

protected:
    void DoDataExchange(CDataExchange* pDX) override {
        DDX_Control(pDX, 11, button);
        DDX_Control(pDX, 99, missing);
        DDX_Text(pDX, 10, strName);
    }
};

}  // namespace

class TemplateTest : public DesktopTest {
protected:
    TemplateTest() {
        m_form.Create(900);
        m_form.SetWindowPos(nullptr, 0, 0, 0, 0, SWP_NOSIZE);
        m_form.ShowWindow(SW_SHOW);
        Person().Settle();
    }

    DialogTemplateTable m_table{kForms};
    Form m_form;
};

TEST_F(TemplateTest, MakesControlsInItsPlacesWithItsTextsAndFont) {
    EXPECT_EQ(m_form.GetClientRect().Size(), (CSize{150, 130}));
    EXPECT_EQ(m_form.GetDlgItem(11)->GetWindowRect(), (CRect{6, 26, 66, 52}));
    EXPECT_EQ(m_form.GetDlgItem(13)->GetWindowText(), "second");
    EXPECT_FALSE(m_form.GetDlgItem(12)->IsWindowVisible());
    ASSERT_NE(m_form.GetDlgItem(13)->GetFont(), nullptr);
    EXPECT_EQ(m_form.GetDlgItem(13)->GetFont()->Face(), m_form.GetFont()->Face());
}

TEST_F(TemplateTest, BindsAMemberOnceToItsControl) {
    EXPECT_EQ(m_form.GetDlgItem(11), &m_form.button);
    EXPECT_EQ(m_form.button.GetWindowText(), "first");
    EXPECT_NE(m_form.button.fontAtBinding, nullptr) << "the control's font is the member's";
    EXPECT_TRUE(m_form.UpdateData(false));
    EXPECT_EQ(m_form.button.bindings, 1);
    EXPECT_FALSE(m_form.missing.GetSafeHwnd());
    Person().Settle();
    EXPECT_EQ(Seen({10, 30}), 0xc80000U) << "the member draws";
    m_form.DestroyWindow();
    EXPECT_FALSE(m_form.UpdateData(true));
    EXPECT_FALSE(m_form.button.GetSafeHwnd());
    EXPECT_TRUE(m_form.Create(900)) << "and again";
    EXPECT_EQ(m_form.button.bindings, 2);
}

TEST_F(TemplateTest, ExchangesTextsInBothDirections) {
    EXPECT_EQ(m_form.GetDlgItem(10)->GetWindowText(), "from the member");
    m_form.GetDlgItem(10)->SetWindowText("from the control");
    m_form.UpdateData(true);
    EXPECT_EQ(m_form.strName, "from the control");
}

TEST_F(TemplateTest, GoesThroughTabStopsInItsOrderWhateverTheirStacking) {
    CButton later;
    later.Create("later", kStop, {100, 100, 120, 120}, &m_form, 20);
    CWnd* first = m_form.GetDlgItem(11);
    CWnd* second = m_form.GetDlgItem(13);
    second->SetWindowPos(nullptr, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
    EXPECT_EQ(m_form.GetNextDlgTabItem(nullptr), first);
    EXPECT_EQ(m_form.GetNextDlgTabItem(first), second);
    EXPECT_EQ(m_form.GetNextDlgTabItem(second), &later);
    EXPECT_EQ(m_form.GetNextDlgTabItem(&later), first);
    EXPECT_EQ(m_form.GetNextDlgTabItem(first, true), &later);
    EXPECT_EQ(m_form.GetNextDlgTabItem(m_form.GetDlgItem(14)), &later) << "from a control without a stop";
    second->EnableWindow(false);
    EXPECT_EQ(m_form.GetNextDlgTabItem(first), &later);
}

TEST_F(TemplateTest, LabelLetsThePointerThroughAndShowsTheDialogUnderItsText) {
    const CRect label = m_form.GetDlgItem(10)->GetWindowRect();
    m_form.log.clear();
    Person().Click(label.TopLeft() + CPoint{2, 2});
    EXPECT_EQ(m_form.CountOf(WM_LBUTTONDOWN), 1);
    EXPECT_EQ(Seen(label.TopLeft() + CPoint{label.Width() - 1, 1}), 0xc80000U);
    bool hasInk = false;
    for (int x = label.left; x < label.right; ++x) {
        hasInk = hasInk || Seen({x, label.top + 6}) != 0xc80000U;
    }
    EXPECT_TRUE(hasInk);
}

}  // namespace veldan
