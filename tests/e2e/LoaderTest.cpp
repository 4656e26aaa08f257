#include "e2e/Catalogue.h"
#include "e2e/Program.h"
#include "e2e/ServerResources.h"
#include "x11/XHand.h"
#include "x11/XServer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

namespace veldan {
namespace {

using ::testing::Contains;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Key;

/// A host in a process of its own that loads the library by its path.
class LoaderTest : public ::testing::Test {
protected:
    /// Its lines come apart from the standard streams, on which nothing may appear.
    static constexpr int kVoice = 3;

    void SetUp() override {
        m_folder.Write("Profiles/order.ini", "[Order]\r\nNum=3\r\n0=Recent\r\n1=Music\r\n2=Movies\r\n");
        m_folder.Write("Profiles/Recent/order.ini", "[Order]\r\nNum=0\r\n");
        Fill("Music");
        Fill("Movies");
    }

    void Fill(const std::string& group) const {
        std::string index = "[Order]\r\nNum=5\r\n";
        for (const std::string number : {"0", "1", "2", "3", "4"}) {
            const std::string stem = group + number;
            index += number + "=" + stem + ".xml\r\n" + stem + ".xml=" + stem + ".png\r\n";
            m_folder.Write("Profiles/" + group + "/" + stem + ".xml",
                           "<Profile>\r\n<ProfileName value=\"" + stem + "\"/>\r\n</Profile>\r\n");
            std::filesystem::copy_file(VELDAN_SAMPLES "/Profiles/MP4 Video/mp4-h264-720p.png",
                                       m_folder / ("Profiles/" + group + "/" + stem + ".png"));
        }
        m_folder.Write("Profiles/" + group + "/order.ini", index);
    }

    [[nodiscard]] std::vector<std::string> Command(const std::vector<std::string>& what) const {
        std::vector<std::string> command{VELDAN_LOADER, VELDAN_LIBRARY, m_folder.Path()};
        command.insert(command.end(), what.begin(), what.end());
        return command;
    }

    static void ExpectSilentEnd(Program& program) {
        EXPECT_THAT(program.Rest(), IsEmpty());
        EXPECT_EQ(program.Finish(), 0);
        EXPECT_THAT(program.Noise(), IsEmpty());
    }

    void ExpectPick(const Program::Environment& variables, const std::string& display) const {
        Program program(Command({"once"}), variables, kVoice);
        EXPECT_EQ(program.Line(), display);
        EXPECT_EQ(program.Line(), Catalogue::WithBackslashes(m_folder / "Profiles/Music/Music0.xml"));
        EXPECT_EQ(program.Line(), "changed:");
        ExpectSilentEnd(program);
    }

    /// What must be as after the tenth round after the last one. `resources` counts those of the display.
    template <class Resources>
    void ExpectRoundsLeaveNothing(const Program::Environment& variables, Resources resources) const {
#ifdef __SANITIZE_ADDRESS__
        constexpr const char* kRounds = "50";
        constexpr bool kIsMemoryJudged = false;  // the sanitizer keeps freed memory back
#else
        constexpr const char* kRounds = "1000";
        constexpr bool kIsMemoryJudged = true;
#endif
        Program program(Command({"rounds", kRounds}), variables, kVoice);
        const std::string warm = program.Line();
        const Memory warmMemory = ReadMemory(program);
        const auto warmResources = resources();
        ASSERT_THAT(warm, HasSubstr("mapped=no"));
        program.Say("on");
        EXPECT_EQ(program.Line(), warm);
        const Memory memory = ReadMemory(program);
        EXPECT_EQ(resources(), warmResources);
        program.Say("on");
        ExpectSilentEnd(program);
        if (kIsMemoryJudged) {
            EXPECT_EQ(memory.regions, warmMemory.regions);
            EXPECT_LE(memory.kibibytes, warmMemory.kibibytes + 256);
        }
    }

    struct Memory {
        long regions = 0;
        long kibibytes = 0;
    };
    static Memory ReadMemory(Program& program) {
        Memory memory;
        std::istringstream(program.Line()) >> memory.regions >> memory.kibibytes;
        EXPECT_GT(memory.kibibytes, 0);
        return memory;
    }

    testing::TempFolder m_folder;
};

TEST_F(LoaderTest, RoundsOnAServerLeaveNothingBehind) {
    const XServer server;
    ASSERT_TRUE(server.IsRunning());
    const XHand eyes(server.Name());
    const auto resources = [&] { return CountResources(eyes.Connection()); };
    ASSERT_THAT(resources(), Contains(Key("WINDOW")));
    ExpectRoundsLeaveNothing({{"DISPLAY", server.Name()}}, resources);
}

TEST_F(LoaderTest, RoundsInMemoryLeaveNothingBehind) {
    ExpectRoundsLeaveNothing({{"VELDAN_DISPLAY", "memory"}}, [] { return 0; });
}

TEST_F(LoaderTest, HostThatOnlyPollsMissesNothingAfterAnyCall) {
    const XServer server;
    ASSERT_TRUE(server.IsRunning());
    Program program(Command({"calls"}), {{"DISPLAY", server.Name()}}, kVoice);
    ExpectSilentEnd(program);
}

TEST_F(LoaderTest, CallsReturnWhenTheServerDiedWhetherThatWasNoticedOrNot) {
    for (const char* loss : {"loss", "noticed-loss"}) {
        XServer server;
        ASSERT_TRUE(server.IsRunning());
        Program program(Command({loss}), {{"DISPLAY", server.Name()}}, kVoice);
        ASSERT_EQ(program.Line(), "shown");
        server.Kill();
        program.Say("dead");
        if (loss == std::string_view("noticed-loss")) {
            EXPECT_EQ(program.Line(), "hidden");
            EXPECT_EQ(program.Line(), "quiet");
        }
        EXPECT_EQ(program.Line(), "quiet");
        ExpectSilentEnd(program);
    }
}

TEST_F(LoaderTest, PickWorksOverTheNetworkAndLocally) {
    const XServer server(XServerOptions{false, true, {}});
    ASSERT_TRUE(server.IsRunning());
    ExpectPick({{"DISPLAY", server.TcpName()}}, "x11");
    ExpectPick({{"DISPLAY", server.Name()}, {"VELDAN_DISPLAY", "x11"}}, "x11");
    ExpectPick({{"DISPLAY", server.Name()}, {"VELDAN_DISPLAY", "memory"}}, "memory");
}

TEST_F(LoaderTest, PickWorksOnServersThatLackMemoryToShareOrEndWithTheirLastClient) {
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"-extension", "MIT-SHM"}, {"-terminate"}}) {
        const XServer server(XServerOptions{false, false, arguments});
        ASSERT_TRUE(server.IsRunning());
        ExpectPick({{"DISPLAY", server.Name()}}, "x11");
    }
}

TEST_F(LoaderTest, MenuStaysInMemoryWhereNoServerAnswers) {
    ExpectPick({}, "memory");
    ExpectPick({{"DISPLAY", ":987"}, {"VELDAN_DISPLAY", "x11"}}, "memory");
    for (const char* display : {"", ":987", "nowhere", "127.0.0.1:987", "host.invalid:0"}) {
        SCOPED_TRACE(display);
        ExpectPick({{"DISPLAY", display}}, "memory");
    }
}

TEST_F(LoaderTest, ServerThatRefusesIsPassedOverSilently) {
    using namespace std::string_view_literals;
    const std::string keys = m_folder.Write("keys",
                                            "\x01\x00\x00\x04"
                                            "host\x00\x01"
                                            "0\x00\x12MIT-MAGIC-COOKIE-1\x00\x10"
                                            "0123456789abcdef"sv);
    const XServer server(XServerOptions{false, false, {"-auth", keys}});
    ASSERT_TRUE(server.IsRunning());
    const XHand hand(server.Name());
    xcb_set_access_control(hand.Connection(), XCB_ACCESS_CONTROL_ENABLE);
    hand.Sync();
    ExpectPick({{"DISPLAY", server.Name()}, {"XAUTHORITY", m_folder / "missing"}}, "memory");
}

}  // namespace
}  // namespace veldan
