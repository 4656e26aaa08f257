#include "e2e/Catalogue.h"
#include "x11/Program.h"
#include "x11/XHand.h"
#include "x11/XServer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <xcb/res.h>

#include <map>
#include <sstream>

namespace veldan {
namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;

/// How many resources of each kind all clients of a server have, by the atom of the kind's name.
std::map<xcb_atom_t, unsigned> CountResources(xcb_connection_t* connection) {
    std::map<xcb_atom_t, unsigned> counts;
    const auto clients = Ask<&xcb_res_query_clients_reply>(connection, xcb_res_query_clients(connection));
    for (int i = 0; clients && i < xcb_res_query_clients_clients_length(clients.get()); ++i) {
        const xcb_res_client_t& client = xcb_res_query_clients_clients(clients.get())[i];
        const auto kinds = Ask<&xcb_res_query_client_resources_reply>(
            connection, xcb_res_query_client_resources(connection, client.resource_base));
        for (int k = 0; kinds && k < xcb_res_query_client_resources_types_length(kinds.get()); ++k) {
            const xcb_res_type_t& kind = xcb_res_query_client_resources_types(kinds.get())[k];
            counts[kind.resource_type] += kind.count;
        }
    }
    return counts;
}

/// A host in a process of its own that loads the library by its path.
class LoaderTest : public ::testing::Test {
protected:
    /// Its lines are separate from the standard streams, on which nothing may appear.
    static constexpr int kLinesDescriptor = 3;

    void SetUp() override {
        m_catalogue.Folder().Write("Profiles/order.ini", "[Order]\r\nNum=2\r\n0=Recent\r\n1=MP4 Video\r\n");
    }

    [[nodiscard]] std::vector<std::string> Command(const std::vector<std::string>& what) const {
        std::vector<std::string> command{VELDAN_LOADER, VELDAN_LIBRARY, m_catalogue.Base()};
        command.insert(command.end(), what.begin(), what.end());
        return command;
    }

    static void ExpectSilentEnd(Program& program) {
        EXPECT_THAT(program.Rest(), IsEmpty());
        EXPECT_EQ(program.Finish(), 0);
        EXPECT_THAT(program.StrayOutput(), IsEmpty());
    }

    void ExpectPick(const Program::Environment& variables, const std::string& display) const {
        Program program(Command({"once"}), variables, kLinesDescriptor);
        EXPECT_EQ(program.Line(), display);
        EXPECT_EQ(program.Line(),
                  Catalogue::WithBackslashes(m_catalogue.Base() + "/Profiles/MP4 Video/mp4-h264-source.xml"));
        EXPECT_EQ(program.Line(), "changed:");
        ExpectSilentEnd(program);
    }

    /// Compares the process after its last round with itself after the tenth. `resources` counts those of the display.
    template <class Resources>
    void ExpectRoundsLeaveNothing(const Program::Environment& variables, Resources resources) const {
#ifdef __SANITIZE_ADDRESS__
        constexpr bool kIsMemoryJudged = false;  // the sanitizer doesn't return freed memory
#else
        constexpr bool kIsMemoryJudged = true;
#endif
        Program program(Command({"rounds", kIsMemoryJudged ? "1000" : "50"}), variables, kLinesDescriptor);
        const std::string warm = program.Line();
        const Memory warmMemory = ReadMemory(program);
        const auto warmResources = resources();
        ASSERT_THAT(warm, HasSubstr("mapped=no"));
        program.SendLine("on");
        EXPECT_EQ(program.Line(), warm);
        const Memory memory = ReadMemory(program);
        EXPECT_EQ(resources(), warmResources);
        program.SendLine("on");
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

    Catalogue m_catalogue;
};

TEST_F(LoaderTest, RoundsOnAServerLeaveNothingBehind) {
    const XServer server;
    ASSERT_TRUE(server.IsRunning());
    const XHand eyes(server.Name());
    const auto resources = [&] { return CountResources(eyes.Connection()); };
    ASSERT_FALSE(resources().empty());
    ExpectRoundsLeaveNothing({{"DISPLAY", server.Name()}}, resources);
}

TEST_F(LoaderTest, RoundsInMemoryLeaveNothingBehind) {
    ExpectRoundsLeaveNothing({{"VELDAN_DISPLAY", "memory"}}, [] { return 0; });
}

TEST_F(LoaderTest, HostThatOnlyPollsMissesNothingAfterAnyCall) {
    const XServer server;
    ASSERT_TRUE(server.IsRunning());
    Program program(Command({"calls"}), {{"DISPLAY", server.Name()}}, kLinesDescriptor);
    ExpectSilentEnd(program);
}

TEST_F(LoaderTest, CallsReturnWhenTheServerDiedWhetherThatWasNoticedOrNot) {
    for (const char* loss : {"loss", "noticed-loss"}) {
        XServer server;
        ASSERT_TRUE(server.IsRunning());
        Program program(Command({loss}), {{"DISPLAY", server.Name()}}, kLinesDescriptor);
        ASSERT_EQ(program.Line(), "shown");
        server.Kill();
        program.SendLine("dead");
        if (loss == std::string_view("noticed-loss")) {
            EXPECT_EQ(program.Line(), "hidden");
            EXPECT_EQ(program.Line(), "quiet");
        }
        EXPECT_EQ(program.Line(), "quiet");
        ExpectSilentEnd(program);
    }
}

TEST_F(LoaderTest, PickWorksOverTheNetworkAndLocallyAndOnAServerThatEndsWithItsLastClient) {
    const XServer server(XServerOptions{false, true, {"-extension", "MIT-SHM"}});
    const XServer mortal(XServerOptions{false, false, {"-terminate"}});
    ASSERT_TRUE(server.IsRunning() && mortal.IsRunning());
    ExpectPick({{"DISPLAY", server.TcpName()}}, "x11");
    ExpectPick({{"DISPLAY", server.Name()}, {"VELDAN_DISPLAY", "x11"}}, "x11");
    ExpectPick({{"DISPLAY", server.Name()}, {"VELDAN_DISPLAY", "memory"}}, "memory");
    ExpectPick({{"DISPLAY", mortal.Name()}}, "x11");
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
    const std::string keys = m_catalogue.Folder().Write("keys",
                                                        "\x01\x00\x00\x04"
                                                        "host\x00\x01"
                                                        "0\x00\x12MIT-MAGIC-COOKIE-1\x00\x10"
                                                        "0123456789abcdef"sv);
    const XServer server(XServerOptions{false, false, {"-auth", keys}});
    ASSERT_TRUE(server.IsRunning());
    const XHand hand(server.Name());
    xcb_set_access_control(hand.Connection(), XCB_ACCESS_CONTROL_ENABLE);
    hand.Sync();
    ExpectPick({{"DISPLAY", server.Name()}, {"XAUTHORITY", m_catalogue.Base() + "/missing"}}, "memory");
}

}  // namespace
}  // namespace veldan
