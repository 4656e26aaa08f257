#include "platform/core/FolderLock.h"

#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace veldan {
namespace {

using testing::TempFolder;

/// Whether another process could take the lock; a file opened anew stands for that process.
bool IsFree(const CString& folder) {
    const int file = open(folder.c_str(), O_RDONLY);
    const bool bFree = flock(file, LOCK_EX | LOCK_NB) == 0;
    close(file);
    return bFree;
}

TEST(FolderLock, KeepsOthersOutWhileItStands) {
    const TempFolder folder;
    folder.Write("Recent/a", "");
    {
        const FolderLock outer(folder / "RECENT");
        EXPECT_TRUE(outer.IsHeld());
        EXPECT_FALSE(IsFree(folder / "Recent"));
        EXPECT_TRUE(IsFree(folder.Path()));
        {
            const FolderLock inner(folder / "Recent/");
            EXPECT_TRUE(inner.IsHeld());
        }
        EXPECT_FALSE(IsFree(folder / "Recent")) << "the inner lock was the outer one's guest";
    }
    EXPECT_TRUE(IsFree(folder / "Recent"));
}

TEST(FolderLock, GoesOnWithoutTheLockWhenItCannotBeHad) {
    const TempFolder folder;
    const int other = open(folder.Path().c_str(), O_RDONLY);
    ASSERT_EQ(flock(other, LOCK_EX), 0);
    EXPECT_FALSE(FolderLock(folder.Path()).IsHeld());
    EXPECT_FALSE(FolderLock(folder / "missing").IsHeld());
    close(other);
    EXPECT_TRUE(FolderLock(folder.Path()).IsHeld());
}

}  // namespace
}  // namespace veldan
