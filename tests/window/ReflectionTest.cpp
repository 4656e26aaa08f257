#include "support/DesktopFixture.h"
#include "support/Probe.h"

namespace veldan {

namespace {

constexpr UINT kChanged = 5;
constexpr UINT kScrolled = 6;

/// Takes back one notification and every request for colours; its handlers also run the default processing.
class Control : public ProbeWnd {
public:
    int changes = 0;
    std::vector<UINT> kinds;
    std::vector<UINT> drawn;
    bool takesColours = true;

protected:
    const MessageMap& GetMessageMap() const override {
        static constexpr MessageMapEntry kEntries[] = {
            OnReflected<kChanged, &Control::OnChanged>(),
            On<OCM_CTLCOLOR, &Control::CtlColor>(),
        };
        static const MessageMap kMap{&CWnd::ClassMessageMap(), kEntries};
        return kMap;
    }
    void DrawItem(DRAWITEMSTRUCT* item) override {
        drawn.push_back(item->itemID);
        Default();
    }
    void MeasureItem(MEASUREITEMSTRUCT* item) override {
        item->itemHeight = 20;
        Default();
    }

private:
    void OnChanged() {
        ++changes;
        Default();
    }
    HBRUSH CtlColor(CDC* /*dc*/, UINT kind) {
        static const CBrush kBrush(RGB(1, 2, 3));
        kinds.push_back(kind);
        return takesColours ? &kBrush : nullptr;
    }
};

class Parent : public ProbeWnd {
public:
    int scrolls = 0;
    int changes = 0;
    std::vector<UINT> kinds;

protected:
    const MessageMap& GetMessageMap() const override {
        static constexpr MessageMapEntry kEntries[] = {
            OnControl<kScrolled, 7, &Parent::OnScrolled>(),
            OnControl<kChanged, 7, &Parent::OnChanged>(),
            OnCtlColors<&Parent::OnCtlColorOfChild>(),
        };
        static const MessageMap kMap{&CWnd::ClassMessageMap(), kEntries};
        return kMap;
    }

private:
    void OnScrolled() { ++scrolls; }
    void OnChanged() { ++changes; }
    HBRUSH OnCtlColorOfChild(CDC* dc, CWnd* control, UINT kind) {
        kinds.push_back(kind);
        return OnCtlColor(dc, control, kind);
    }
};

}  // namespace

class ReflectionTest : public DesktopTest {
protected:
    ReflectionTest() {
        MakePopup(m_parent, {0, 0, 100, 100});
        m_control.CreateEx(0, CWnd::kPlainClass, "", WS_CHILD | WS_VISIBLE, {0, 0, 50, 50}, m_parent.GetSafeHwnd(), 7);
    }
    LRESULT Send(UINT message, WPARAM wParam) {
        return m_parent.SendMessage(message, wParam, static_cast<LPARAM>(m_control.GetSafeHwnd().Value()));
    }

    Parent m_parent;
    Control m_control;
};

TEST_F(ReflectionTest, NotificationGoesToTheControlForItsCodeElseToTheParent) {
    Send(WM_COMMAND, 7 | kChanged << 16);
    Send(WM_COMMAND, 7 | kScrolled << 16);
    Send(WM_COMMAND, 7 | (kScrolled + 1) << 16);
    EXPECT_EQ(m_control.changes, 1);
    EXPECT_EQ(m_parent.changes, 0);
    EXPECT_EQ(m_parent.scrolls, 1);
}

TEST_F(ReflectionTest, EveryRequestForColoursCarriesItsKind) {
    for (UINT kind = CTLCOLOR_MSGBOX; kind <= CTLCOLOR_STATIC; ++kind) {
        EXPECT_EQ(reinterpret_cast<HBRUSH>(Send(WM_CTLCOLORMSGBOX + kind, 0))->Colour(), RGB(1, 2, 3));
    }
    EXPECT_EQ(m_parent.kinds, (std::vector<UINT>{0, 1, 2, 3, 4, 5, 6}));
    EXPECT_EQ(m_control.kinds, m_parent.kinds);
    m_control.takesColours = false;
    EXPECT_EQ(Send(WM_CTLCOLOREDIT, 0), 0);
}

TEST_F(ReflectionTest, ItemsAreMeasuredAndDrawnByTheControlWithDefaultsThatEnd) {
    MEASUREITEMSTRUCT size;
    m_parent.SendMessage(WM_MEASUREITEM, 7, reinterpret_cast<LPARAM>(&size));
    EXPECT_EQ(size.itemHeight, 20U);
    DRAWITEMSTRUCT item;
    item.itemID = 3;
    item.hwndItem = m_control.GetSafeHwnd();
    m_parent.SendMessage(WM_DRAWITEM, 7, reinterpret_cast<LPARAM>(&item));
    EXPECT_EQ(m_control.drawn, std::vector<UINT>{3});
}

}  // namespace veldan
