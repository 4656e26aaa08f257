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

constexpr CPoint kMenu{300, 60};
constexpr CSize kMenuSize{507, 604};
constexpr const char* kMenuTitle = "veldan menu";

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

    void StartWithMenu(std::vector<std::string> options = {}) {
        options.insert(options.begin(),
                       {VELDAN_HOST, "--base", m_catalogue.Base(), "--geometry", "260x330+20+40", "--show", "300,60"});
        m_program = std::make_unique<Program>(options, Program::Environment{{"DISPLAY", m_server.Name()}});
        ASSERT_EQ(m_program->Line(), "ready") << m_program->Noise();
        ASSERT_EQ(m_program->Line(), "shown 300 60");
        ASSERT_TRUE(WaitUntil([&] { return MenuWindow() != 0; }));
    }

    [[nodiscard]] xcb_window_t MenuWindow() const { return m_hand->FindWindow(kMenuTitle); }
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
    EXPECT_THAT(m_program->Noise(), IsEmpty());
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
    EXPECT_TRUE(WaitUntil([&] { return MenuWindow() == 0; }));

    const CRect host = m_hand->RectOf(m_hand->FindWindow("veldan host"));
    const CPoint shown = host.TopLeft() + CPoint{24, 102};
    m_hand->ClickAt(host.TopLeft() + CPoint{100, 80});
    EXPECT_EQ(m_program->Line(), "shown " + std::to_string(shown.x) + " " + std::to_string(shown.y));
    ASSERT_TRUE(WaitUntil([&] { return MenuWindow() != 0; }));
    EXPECT_EQ(m_hand->RectOf(MenuWindow()).TopLeft(), shown);
    m_hand->ClickAt(shown + RowPoint(1));
    EXPECT_THAT(m_program->Line(), HasSubstr(m_catalogue.Entry(kLongGroup, "1")));
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
        m_strErrors = program.Noise();
    }
    void ExpectFault() const {
        EXPECT_EQ(m_iStatus, 2);
        EXPECT_THAT(m_strOutput, IsEmpty());
        EXPECT_THAT(m_strErrors, HasSubstr("veldan-host: "));
    }

    std::string m_strOutput;
    std::string m_strErrors;
    int m_iStatus = -1;
};

TEST_F(HostProgramTest, OptionsThatMakeNoSenseAndAMissingDisplayAreFaults) {
    const std::vector<std::vector<std::string>> commands{{"--unknown"},
                                                         {"stray"},
                                                         {"--base"},
                                                         {"--base", ""},
                                                         {"--show", "1"},
                                                         {"--show", "1,2,3"},
                                                         {"--show", "a,b"},
                                                         {"--demo"},
                                                         {"--geometry", "0x10+1+1"},
                                                         {"--geometry", "300"},
                                                         {"--exit-after-pick", "--show"}};
    for (const auto& options : commands) {
        SCOPED_TRACE(options.back());
        Run(options);
        ExpectFault();
    }
    for (const char* display : {"", ":987", "nowhere"}) {
        SCOPED_TRACE(display);
        Run({"--base", "/nowhere"}, {{"DISPLAY", display}});
        ExpectFault();
    }
}

TEST_F(HostProgramTest, DemoWritesPicturesAndCopiesTheSamples) {
    const testing::TempFolder folder;
    std::filesystem::create_directories(folder.Path() + "/pictures");
    Run({"--demo", folder / "pictures"}, {{"XDG_DATA_HOME", folder / "data"}});

    EXPECT_EQ(m_iStatus, 0);
    EXPECT_THAT(m_strErrors, IsEmpty());
    EXPECT_THAT(m_strOutput, HasSubstr("file " + folder.Path() + "/data/veldan/Profiles/"));
    const auto pictures = folder.Names("pictures");
    EXPECT_EQ(pictures.size(), 8U);
    for (const CString& name : pictures) {
        EXPECT_THAT(folder.Read("pictures/" + name), ::testing::StartsWith("\x89PNG\r\n\x1a\n")) << name;
    }
    Run({"--demo", folder / "missing"}, {{"XDG_DATA_HOME", folder / "data"}});
    EXPECT_EQ(m_iStatus, 2);
    EXPECT_THAT(m_strErrors, HasSubstr("veldan-host: can't write "));
}

/// A host written in C links against what the library exports, and finds its calls harmless.
TEST(CHostTest, GoesThroughAllCalls) {
    const Catalogue catalogue;
    Program program({VELDAN_C_HOST, catalogue.Base()}, {{"VELDAN_DISPLAY", "memory"}});
    EXPECT_EQ(program.Finish(), 0);
    EXPECT_THAT(program.Rest(), IsEmpty());
    EXPECT_THAT(program.Noise(), IsEmpty());
}

}  // namespace
}  // namespace veldan
