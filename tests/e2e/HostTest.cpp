#include "e2e/Catalogue.h"
#include "x11/Program.h"
#include "x11/Wait.h"
#include "x11/XHand.h"
#include "x11/XServer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

namespace veldan {
namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;

constexpr CPoint kMenu{300, 60};
constexpr CSize kMenuSize{507, 604};
constexpr const char* kMenuTitle = "veldan menu";
constexpr const char* kHostTitle = "Convert a Video - veldan host";
constexpr CRect kScreen{0, 0, 1024, 768};
// In the host's window: the button, and the tile behind the icon of the last pick.
constexpr CRect kButton{24, 64, 224, 100};
constexpr CPoint kTile{28, 154};
constexpr std::uint32_t kTileColour = 0x6f3217;

// A group with more profiles than fit, its place in the catalogue, and places in the menu, in its own pixels.
constexpr const char* kLongGroup = "MP4 Video";
constexpr CPoint kLongGroupButton{80, 47};
constexpr CRect kRows{155, 17, 505, 567};
constexpr CPoint RowPoint(int row) {
    return {400, 42 + 50 * row};
}

/// The example host on a server of its own, alone or beside a window manager.
class HostTest : public ::testing::TestWithParam<bool> {
protected:
    void SetUp() override {
        ASSERT_TRUE(m_server.IsRunning());
        m_hand = std::make_unique<XHand>(m_server.Name());
    }

    void Start(const CRect& rect, std::vector<std::string> options = {}) {
        const auto text = [](int number) { return std::to_string(number); };
        const std::string geometry =
            text(rect.Width()) + "x" + text(rect.Height()) + "+" + text(rect.left) + "+" + text(rect.top);
        options.insert(options.begin(), {VELDAN_HOST, "--base", m_catalogue.Base(), "--geometry", geometry});
        m_program = std::make_unique<Program>(options, Program::Environment{{"DISPLAY", m_server.Name()}});
        ASSERT_EQ(m_program->Line(), "ready") << m_program->StrayOutput();
        ASSERT_TRUE(WaitUntil([&] { return m_hand->RectOf(m_hand->FindWindow(kHostTitle)) == rect; }));
    }
    void StartWithMenu(std::vector<std::string> options = {}) {
        options.insert(options.begin(), {"--show", "300,60"});
        ASSERT_NO_FATAL_FAILURE(Start({20, 40, 280, 370}, options));
        ASSERT_EQ(m_program->Line(), "shown 300 60");
        ASSERT_TRUE(WaitForMenu(true));
    }

    [[nodiscard]] xcb_window_t MenuWindow() const { return m_hand->FindWindow(kMenuTitle); }
    [[nodiscard]] bool WaitForMenu(bool isVisible) const {
        return WaitUntil([&] { return (MenuWindow() != 0) == isVisible; });
    }
    /// Of the host's window, on the screen.
    [[nodiscard]] CPoint HostPlace() const { return m_hand->RectOf(m_hand->FindWindow(kHostTitle)).TopLeft(); }
    [[nodiscard]] CRect Button() const { return kButton.Offset(HostPlace()); }
    /// Does something and waits for the rows to look different.
    template <class Act>
    [[nodiscard]] bool RowsChangeBy(Act act) const {
        const CRect area = kRows.Offset(kMenu);
        const auto before = m_hand->Capture(area);
        act();
        return WaitUntil([&] { return m_hand->Capture(area) != before; });
    }

    XServer m_server{XServerOptions{GetParam(), false, {}}};
    std::unique_ptr<XHand> m_hand;
    Catalogue m_catalogue;
    std::unique_ptr<Program> m_program;
};

INSTANTIATE_TEST_SUITE_P(, HostTest, ::testing::Bool(),
                         [](const auto& stage) { return stage.param ? "WithManager" : "Alone"; });

TEST_P(HostTest, PickReachesTheHostAndTheDisk) {
    StartWithMenu({"--exit-after-pick"});
    ASSERT_TRUE(RowsChangeBy([&] { m_hand->Move(kMenu + kLongGroupButton); }));
    m_hand->Move(kMenu + RowPoint(2));
    ASSERT_TRUE(RowsChangeBy([&] { m_hand->Wheel(-1); }));
    m_hand->Click();

    const std::string name = m_catalogue.Entry(kLongGroup, "3");
    ASSERT_THAT(name, Not(IsEmpty()));
    const std::string file = m_catalogue.Base() + "/Profiles/" + kLongGroup + "/" + name;
    EXPECT_EQ(m_program->Line(), "picked " + Catalogue::WithBackslashes(file));
    EXPECT_EQ(m_program->Line(), "file " + file);
    EXPECT_EQ(m_program->Finish(), 0);
    EXPECT_THAT(m_program->Rest(), IsEmpty());
    EXPECT_THAT(m_program->StrayOutput(), IsEmpty());
    EXPECT_EQ(m_catalogue.Entry("Recent", "0"), name);
    EXPECT_EQ(m_catalogue.Folder().Read("Profiles/Recent/" + name),
              m_catalogue.Folder().Read(std::string("Profiles/") + kLongGroup + "/" + name));
}

TEST_P(HostTest, MenuIsGoneAfterAPickAndTheNextPickIsTold) {
    StartWithMenu();
    EXPECT_EQ(m_hand->RectOf(MenuWindow()), CRect::FromSize(kMenu, kMenuSize));
    ASSERT_TRUE(RowsChangeBy([&] { m_hand->Move(kMenu + kLongGroupButton); }));
    m_hand->ClickAt(kMenu + RowPoint(0));
    EXPECT_THAT(m_program->Line(), HasSubstr("picked "));
    EXPECT_THAT(m_program->Line(), HasSubstr("file /"));
    EXPECT_TRUE(WaitForMenu(false));
    EXPECT_TRUE(m_hand->WaitForPixel(HostPlace() + kTile, kTileColour)) << "the host shows what was picked";

    const CPoint shown = HostPlace() + CPoint{24, 102};
    m_hand->ClickAt(HostPlace() + CPoint{100, 80});
    EXPECT_EQ(m_program->Line(), "shown " + std::to_string(shown.x) + " " + std::to_string(shown.y));
    ASSERT_TRUE(WaitForMenu(true));
    EXPECT_EQ(m_hand->RectOf(MenuWindow()).TopLeft(), shown);
    m_hand->ClickAt(shown + RowPoint(1));
    EXPECT_THAT(m_program->Line(), HasSubstr(m_catalogue.Entry(kLongGroup, "1")));
}

TEST_P(HostTest, PressOnTheButtonLeavesAnOpenMenuClosed) {
    StartWithMenu();
    ASSERT_TRUE(RowsChangeBy([&] { m_hand->Move(kMenu + kLongGroupButton); }));
    m_hand->Move(Button().TopLeft() + CPoint{100, 16});
    for (const bool isVisible : {false, true, false, true}) {
        m_hand->Click();
        ASSERT_TRUE(WaitForMenu(isVisible));
    }
    m_hand->ClickAt(m_hand->RectOf(MenuWindow()).TopLeft() + RowPoint(0));
    for (const char* line : {"shown ", "shown ", "picked "}) {
        EXPECT_THAT(m_program->Line(), StartsWith(line)) << "each second press opens it";
    }
}

TEST_P(HostTest, MenuOfTheButtonStaysOnTheScreen) {
    for (const CPoint host : {CPoint{700, 30}, {20, 550}, {700, 550}, {300, 300}}) {
        SCOPED_TRACE(::testing::PrintToString(std::pair(host.x, host.y)));
        ASSERT_NO_FATAL_FAILURE(Start(CRect::FromSize(host, {260, 200})));
        m_hand->ClickAt(Button().TopLeft() + CPoint{100, 16});
        ASSERT_TRUE(WaitForMenu(true));
        const CRect menu = m_hand->RectOf(MenuWindow());
        EXPECT_EQ(menu.Intersect(kScreen), menu);
        EXPECT_EQ(menu.Size(), kMenuSize);
        // With the window in the middle there is room for the menu neither above nor below the button.
        EXPECT_EQ(menu.Intersects(Button()), host == (CPoint{300, 300}));
        m_program.reset();
        ASSERT_TRUE(WaitForMenu(false));
    }
}

TEST_P(HostTest, EndsWhenTheServerDoes) {
    StartWithMenu();
    m_server.Kill();
    EXPECT_EQ(m_program->Finish(), 2);
    EXPECT_THAT(m_program->StrayOutput(), HasSubstr("the display is gone"));
}

/// The example host without a server.
class HostProgramTest : public ::testing::Test {
protected:
    void Run(const std::vector<std::string>& options, const Program::Environment& variables = {}) {
        std::vector<std::string> command{VELDAN_HOST};
        command.insert(command.end(), options.begin(), options.end());
        Program program(command, variables);
        m_strOutput = program.Rest();
        m_iStatus = program.Finish();
        m_strErrors = program.StrayOutput();
    }
    void ExpectFault(int status, const std::string& about) const {
        EXPECT_EQ(m_iStatus, status);
        EXPECT_THAT(m_strOutput, IsEmpty());
        EXPECT_THAT(m_strErrors, HasSubstr("veldan-host: "));
        EXPECT_THAT(m_strErrors, HasSubstr(about));
    }

    std::string m_strOutput;
    std::string m_strErrors;
    int m_iStatus = -1;
};

TEST_F(HostProgramTest, EachOptionThatMakesNoSenseIsNamed) {
    const testing::TempFolder folder;
    const std::string file = folder.Write("file", "");
    const std::vector<std::vector<std::string>> commands{{"--unknown"},
                                                         {"stray"},
                                                         {"--base"},
                                                         {"--base", ""},
                                                         {"--base", "/nowhere"},
                                                         {"--base", file},
                                                         {"--base", folder.Path()},
                                                         {"--base=" + folder.Path()},
                                                         {"--show", "1"},
                                                         {"--show", "1,2,3"},
                                                         {"--show=a,b"},
                                                         {"--show", "--exit-after-pick"},
                                                         {"--demo"},
                                                         {"--demo", folder / "missing"},
                                                         {"--log", folder / "missing"},
                                                         {"--log", file},
                                                         {"--geometry", "0x10+1+1"},
                                                         {"--geometry", "300"}};
    std::vector<std::string> all;
    for (const auto& options : commands) {
        SCOPED_TRACE(options.back());
        Run(options, {{"DISPLAY", ":987"}});
        ExpectFault(2, options.front().substr(0, options.front().find('=')));
        EXPECT_THAT(m_strErrors, HasSubstr("--help"));
        all.insert(all.end(), options.begin(), options.end());
    }
    Run(all);
    for (const auto& options : commands) {
        ExpectFault(2, options.front().substr(0, options.front().find('=')));
    }
}

TEST_F(HostProgramTest, MissingDisplayHasAStatusOfItsOwn) {
    for (const char* display : {"", ":987", "nowhere"}) {
        SCOPED_TRACE(display);
        Run({"--base", VELDAN_SAMPLES}, {{"DISPLAY", display}});
        ExpectFault(3, "no display answers");
    }
}

TEST_F(HostProgramTest, ExplainsItself) {
    for (const auto& [option, text] : {std::pair("--help", "--exit-after-pick"), {"--version", "veldan-host 0."}}) {
        Run({option});
        EXPECT_EQ(m_iStatus, 0);
        EXPECT_THAT(m_strOutput, HasSubstr(text));
        EXPECT_THAT(m_strErrors, IsEmpty());
    }
}

/// The catalogue and its entries as they were before.
class DemoTest : public HostProgramTest, public ::testing::WithParamInterface<const char*> {};

INSTANTIATE_TEST_SUITE_P(On, DemoTest, ::testing::Values("", "catalogue"),
                         [](const auto& base) { return *base.param == '\0' ? "Samples" : "ABase"; });

TEST_P(DemoTest, WritesPicturesAndLeavesThePersonsListsAlone) {
    const testing::TempFolder folder;
    for (const char* name : {"pictures", "data", "tmp"}) {
        std::filesystem::create_directories(folder / name);
    }
    std::filesystem::copy(VELDAN_SAMPLES, folder / "catalogue", std::filesystem::copy_options::recursive);
    const std::string index = folder.Read("catalogue/Profiles/Recent/order.ini");
    std::vector<std::string> options{"--demo", folder / "pictures"};
    if (*GetParam() != '\0') {
        options.insert(options.end(), {"--base", folder / GetParam()});
    }
    Run(options, {{"XDG_DATA_HOME", folder / "data"}, {"TMPDIR", folder / "tmp"}});

    EXPECT_EQ(m_iStatus, 0);
    EXPECT_THAT(m_strErrors, IsEmpty());
    EXPECT_THAT(m_strOutput, HasSubstr("\nfile " + folder / "tmp" + "/"));
    EXPECT_THAT(folder.Names("data"), IsEmpty());
    EXPECT_THAT(folder.Names("tmp"), IsEmpty());
    EXPECT_EQ(folder.Read("catalogue/Profiles/Recent/order.ini"), index);
    const auto pictures = folder.Names("pictures");
    EXPECT_EQ(pictures.size(), 8U);
    for (const CString& name : pictures) {
        EXPECT_THAT(folder.Read("pictures/" + name), StartsWith("\x89PNG\r\n\x1a\n")) << name;
    }
}

/// A host written in C links against what the library exports, and finds its calls harmless.
TEST(CHostTest, GoesThroughAllCalls) {
    const Catalogue catalogue;
    Program program({VELDAN_C_HOST, catalogue.Base()}, {{"VELDAN_DISPLAY", "memory"}});
    EXPECT_EQ(program.Finish(), 0);
    EXPECT_THAT(program.Rest(), IsEmpty());
    EXPECT_THAT(program.StrayOutput(), IsEmpty());
}

}  // namespace
}  // namespace veldan
