#include "platform/core/ReadAhead.h"

#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace veldan {
namespace {

using Request = ReadAhead::Request;

TEST(ReadAhead, GivesWhatEachFileHolds) {
    const testing::TempFolder folder;
    std::vector<Request> requests;
    for (int i = 0; i < 200; ++i) {
        const CString name = "file" + std::to_string(i);
        folder.Write(name, CString(static_cast<std::size_t>(i) * 37, 'a') + name);
        // Spelled in another way than on the disk.
        requests.push_back({folder / ("FILE" + std::to_string(i)), FileAccess::Read, 1'000'000});
    }
    ReadAhead files(requests);
    for (int i = 0; i < 200; ++i) {
        const auto at = static_cast<std::size_t>(i);
        EXPECT_EQ(files.Take(at), CString(at * 37, 'a') + "file" + std::to_string(i));
    }
}

TEST(ReadAhead, GivesNothingForWhatIsNoFileToRead) {
    const testing::TempFolder folder;
    const CString strLocked = folder.Write("locked", "text");
    std::filesystem::permissions(strLocked, std::filesystem::perms::owner_read);
    std::vector<Request> requests(30, Request{folder.Write("long", "0123456789"), FileAccess::Read, 4});
    requests[3] = {folder / "missing", FileAccess::Read, 100};
    requests[4] = {folder.Path(), FileAccess::Read, 100};
    requests[5] = {"", FileAccess::Read, 100};
    requests[6] = {strLocked, FileAccess::ReadIfWritable, 100};
    requests[7] = {strLocked, FileAccess::Read, 100};
    ReadAhead files(requests);
    for (const std::size_t none : {3, 4, 5, 6}) {
        EXPECT_EQ(files.Take(none), std::nullopt) << none;
    }
    EXPECT_EQ(files.Take(7), "text");
    EXPECT_EQ(files.Take(8), "0123") << "the start of a longer file";
}

// Far more than is read ahead at a time; the thread must neither stop for good nor go on without an end.
TEST(ReadAhead, GoesThroughMoreThanItHoldsAndMayEndAnywhere) {
    const testing::TempFolder folder;
    const CString strLarge = folder.Write("large", CString(1'000'000, 'x'));
    const std::vector<Request> requests(60, Request{strLarge, FileAccess::Read, 2'000'000});
    for (const std::size_t taken : {0, 1, 20, 60}) {
        ReadAhead files(requests);
        std::size_t right = 0;
        for (std::size_t i = 0; i < taken; ++i) {
            right += files.Take(i)->size() == 1'000'000 ? 1 : 0;
        }
        EXPECT_EQ(right, taken);
    }
}

}  // namespace
}  // namespace veldan
