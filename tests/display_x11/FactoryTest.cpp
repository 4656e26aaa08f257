#include "X11DisplayTest.h"

#include "platform/core/Clock.h"
#include "platform/display/DisplayFactory.h"

namespace veldan {

namespace {

TEST(FactoryTest, EnvironmentChoosesTheDisplay) {
    const XServer server;
    ASSERT_TRUE(server.IsRunning());
    const auto chosen = [](const char* wish, const char* display) {
        wish ? setenv("VELDAN_DISPLAY", wish, 1) : unsetenv("VELDAN_DISPLAY");
        display ? setenv("DISPLAY", display, 1) : unsetenv("DISPLAY");
        return std::string(CreateDisplay(SteadyClock())->Name());
    };
    EXPECT_EQ(chosen(nullptr, server.Name().c_str()), "x11");
    EXPECT_EQ(chosen("x11", server.Name().c_str()), "x11");
    EXPECT_EQ(chosen("memory", server.Name().c_str()), "memory");
    EXPECT_EQ(chosen(nullptr, nullptr), "memory");
    EXPECT_EQ(chosen("x11", ":4711"), "memory");
}

}  // namespace

}  // namespace veldan
