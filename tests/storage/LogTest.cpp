#include "storage/Log.h"

#include "support/FaultyFileCalls.h"
#include "support/TempFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ctime>
#include <map>

#include <sys/wait.h>
#include <unistd.h>

namespace veldan {
namespace {

using testing::FaultyFileCalls;
using ::testing::MatchesRegex;
using testing::TempFolder;

class Log : public ::testing::Test {
protected:
    void TearDown() override { SetLogTarget("", "", "", nullptr); }

    void UseFolder() { SetLogTarget(m_folder.Path(), "veldan.log", "veldan-api.log", &m_mutex); }

    TempFolder m_folder;
    std::recursive_mutex m_mutex;
};

TEST_F(Log, RecordsAreLinesWithTimeAndPlace) {
    UseFolder();
    const std::time_t before = std::time(nullptr);
    LogMessage({"DlgCustomMenu", 123}, "AddRecent=%d", 4550);
    const std::time_t after = std::time(nullptr);
    const CString record = m_folder.Read("veldan.log");
    ASSERT_THAT(record, MatchesRegex("[0-9]{8} [0-9]{6}:Func=DlgCustomMenu Line=123 AddRecent=4550\r\n"));
    std::tm local = {};
    EXPECT_NE(strptime(record.c_str(), "%Y%m%d %H%M%S", &local), nullptr);
    local.tm_isdst = -1;
    const std::time_t written = std::mktime(&local);
    EXPECT_TRUE(before <= written && written <= after);
    LogApiFailure({"AplCommon/WBButton", 1}, "api fail %d id=%d", 5, 7);
    EXPECT_THAT(m_folder.Read("veldan-api.log"), MatchesRegex(".*:Func=AplCommon/WBButton Line=1 api fail 5 id=7\r\n"));
    EXPECT_EQ(m_folder.Read("veldan.log"), record) << "failed calls have a file of their own";
}

TEST_F(Log, EveryRecordEndsItsLineOnce) {
    UseFolder();
    const char* messages[][2] = {{"", "\r\n"}, {"a\n", "a\r\n"}, {"a\r", "a\r"}, {"100%d\u65e5", "100%d\u65e5\r\n"}};
    for (const auto& [message, expected] : messages) {
        m_folder.Write("veldan.log", "");
        LogMessage({"Site", 1}, "%s", message);
        const CString record = m_folder.Read("veldan.log");
        EXPECT_EQ(record.substr(record.find("Line=1 ") + 7), expected);
    }
}

TEST_F(Log, WithoutATargetRecordsAreDroppedWithoutASystemCall) {
    const FaultyFileCalls calls;
    LogMessage({"A", 1}, "%s", "dropped");
    LogApiFailure({"A", 1}, "%s", "dropped");
    EXPECT_EQ(calls.Calls(), 0);
}

TEST_F(Log, HugeMessagesAreCut) {
    UseFolder();
    LogMessage({"A", 1}, "%s", CString(200'000, 'x').c_str());
    const CString record = m_folder.Read("veldan.log");
    EXPECT_EQ(record.size() - record.find("xx"), 65'535U + 2U);
}

TEST_F(Log, FailuresAreSilentAndGiveTheMutexBack) {
    SetLogTarget(m_folder / "missing", "veldan.log", "veldan-api.log", &m_mutex);
    LogMessage({"A", 1}, "dropped");
    UseFolder();
    for (int call = 1; call <= 4; ++call) {
        const FaultyFileCalls faulty(FaultyFileCalls::Fault::NoSpace, call);
        LogMessage({"A", 1}, "try %d", call);
    }
    LogMessage({"A", 1}, "kept");
    EXPECT_THAT(m_folder.Read("veldan.log"), MatchesRegex("[^\n]*try 2\r\n[^\n]*try 3\r\n[^\n]*kept\r\n"));
    EXPECT_TRUE(m_mutex.try_lock());
    m_mutex.unlock();
    LogLock();
    LogUnlock();
}

TEST_F(Log, ProcessesAppendWithoutLosingOrSplittingLines) {
    UseFolder();
    constexpr int kRecords = 200;
    for (int child = 0; child < 2; ++child) {
        if (fork() == 0) {
            for (int i = 0; i < kRecords; ++i) {
                LogMessage({"Child", child}, "%d %s", i, CString(500, static_cast<char>('a' + child)).c_str());
            }
            _exit(0);
        }
    }
    while (wait(nullptr) > 0) {
    }
    std::map<CString, int> lines;
    CString log = m_folder.Read("veldan.log");
    for (std::size_t end = log.find("\r\n"); end != CString::npos; end = log.find("\r\n")) {
        ++lines[log.substr(log.find("Line="), end - log.find("Line="))];
        log.erase(0, end + 2);
    }
    EXPECT_EQ(lines.size(), 2U * kRecords);
    for (int i = 0; i < 2 * kRecords; ++i) {
        const CString text(500, static_cast<char>('a' + i % 2));
        EXPECT_EQ(lines[Format("Line=%d %d %s", i % 2, i / 2, text.c_str())], 1);
    }
}

}  // namespace
}  // namespace veldan
