#include "platform/core/File.h"

#include "support/FaultyFileCalls.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <functional>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace veldan {
namespace {

using testing::FaultyFileCalls;
using testing::TempFolder;
using Fault = FaultyFileCalls::Fault;

mode_t ModeOf(const CString& path) {
    struct stat status = {};
    return stat(path.c_str(), &status) == 0 ? status.st_mode & 07777 : 0;
}

bool Copies(const CString& source, const CString& target, const WriteRules& rules = {}) {
    return CopyFile(source, target, 1000, rules) == CopyResult::Copied;
}

TEST(File, ReadsRegularFilesWholeUpToALimit) {
    const TempFolder folder;
    const CString content("line\r\n\0\xff", 8);
    folder.Write("Group/a.xml", content);
    CString bytes = "before";
    EXPECT_FALSE(ReadWholeFile(folder / "group\\A.xml", bytes, 7));
    EXPECT_FALSE(ReadWholeFile(folder / "Group", bytes, 1000));
    EXPECT_FALSE(ReadWholeFile(folder / "missing", bytes, 1000));
    EXPECT_EQ(bytes, "before");
    EXPECT_TRUE(ReadWholeFile(folder / "group\\A.xml", bytes, 8));
    EXPECT_EQ(bytes, content);
    folder.Write("empty", "");
    EXPECT_TRUE(ReadWholeFile(folder / "empty", bytes, 0));
    EXPECT_EQ(bytes, "");
}

TEST(File, TakesPipesAndFoldersForNoFiles) {
    const TempFolder folder;
    const CString pipe = folder / "pipe";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    folder.Write("folder/a", "");
    folder.Write("source", "x");
    for (const CString& path : {pipe, folder / "folder", folder / "folder/"}) {
        CString bytes;
        EXPECT_FALSE(FileExists(path));
        EXPECT_FALSE(ReadWholeFile(path, bytes, 100));
        EXPECT_FALSE(WriteFileWhole(path, "x"));
        EXPECT_FALSE(Copies(path, folder / "copy"));
        EXPECT_FALSE(Copies(folder / "source", path));
        EXPECT_FALSE(DeleteFile(path));
    }
    EXPECT_EQ(QueryPath(pipe), PathKind::None);
    EXPECT_EQ(folder.Names(), (std::set<CString>{"folder", "pipe", "source"}));
}

TEST(File, CostsNoMoreCallsThanItMust) {
    const TempFolder folder;
    folder.Write("a.xml", "12345");
    const FaultyFileCalls calls;
    CString bytes;
    for (const char* path : {"", "/", "\\", "//"}) {
        EXPECT_FALSE(FileExists(path));
        EXPECT_FALSE(ReadWholeFile(path, bytes, 100));
        EXPECT_FALSE(WriteFileWhole(path, "x"));
        EXPECT_FALSE(DeleteFile(path));
    }
    EXPECT_EQ(calls.Calls(), 0) << "a path of separators names no file";
    EXPECT_TRUE(ReadWholeFile(folder / "a.xml", bytes, 100));
    EXPECT_EQ(calls.Calls(), 3) << "open, read and close";
}

TEST(File, NamesThatDifferOnlyInCaseShareAFile) {
    const TempFolder folder;
    folder.Write("Recent/Order.ini", "old");
    EXPECT_TRUE(WriteFileWhole(folder / "RECENT/order.ini", "new"));
    EXPECT_TRUE(Copies(folder / "recent/ORDER.ini", folder / "recent/Copy.ini"));
    EXPECT_TRUE(Copies(folder / "recent/ORDER.ini", folder / "recent/COPY.INI"));
    EXPECT_EQ(folder.Names("Recent"), (std::set<CString>{"Order.ini", "Copy.ini"}));
    EXPECT_EQ(folder.Read("Recent/Order.ini"), "new");
    EXPECT_TRUE(DeleteFile(folder / "recent/order.INI"));
    EXPECT_EQ(folder.Names("Recent"), (std::set<CString>{"Copy.ini"}));
}

TEST(File, RefusesToCreateForbiddenNames) {
    const TempFolder folder;
    folder.Write("source", "x");
    const CString tooLong(256, 'n');
    for (const char* name : {"a:b", "a*b", "a?b", "a\"b", "a<b", "a>b", "a|b", "a\tb", "a\x7f", "new/", "no/such", ".",
                             "..", tooLong.c_str()}) {
        EXPECT_FALSE(WriteFileWhole(folder / name, "x")) << name;
        EXPECT_FALSE(Copies(folder / "source", folder / name)) << name;
    }
    EXPECT_EQ(folder.Names(), (std::set<CString>{"source"}));
}

TEST(File, ReplacingKeepsTheModeAndACopyCanBeWrittenByItsOwnerToo) {
    const TempFolder folder;
    const CString path = folder.Write("a", "old");
    chmod(path.c_str(), 0640);
    EXPECT_TRUE(WriteFileWhole(path, "new"));
    EXPECT_EQ(ModeOf(path), 0640U);
    folder.Write("target", "old");
    EXPECT_TRUE(Copies(path, folder / "target"));
    EXPECT_EQ(ModeOf(folder / "target"), 0640U);
    chmod(path.c_str(), 0444);
    EXPECT_TRUE(Copies(path, folder / "copy"));
    EXPECT_EQ(ModeOf(folder / "copy"), 0644U);
    EXPECT_FALSE(Copies(folder / "target", path) || DeleteFile(path)) << "it is read-only";
    EXPECT_TRUE(Copies(folder / "target", path, {.bReadOnlyToo = true}));
    chmod(path.c_str(), 0444);
    EXPECT_TRUE(DeleteFile(path, {.bReadOnlyToo = true}));
    umask(027);
    EXPECT_TRUE(WriteFileWhole(folder / "fresh", "x"));
    EXPECT_EQ(ModeOf(folder / "fresh"), 0640U);
}

TEST(File, CopyingTellsNothingToCopyFromAFailure) {
    const TempFolder folder;
    const CString source = folder.Write("source", "12345");
    folder.Write("old", "old");
    EXPECT_EQ(CopyFile(source, folder / "copy", 5), CopyResult::Copied);
    EXPECT_EQ(CopyFile(source, folder / "old", 4), CopyResult::NoSource);
    EXPECT_EQ(CopyFile(folder / "missing", folder / "old", 100), CopyResult::NoSource);
    EXPECT_EQ(CopyFile(folder.Path(), folder / "old", 100), CopyResult::NoSource);
    EXPECT_EQ(CopyFile(source, folder / "no/such", 100), CopyResult::Failed);
    FileCalls calls = SystemFileCalls();
    // As of a file of the system that has no size and no end.
    calls.pread = [](int, void*, size_t count, off_t) { return static_cast<ssize_t>(count); };
    ReplaceFileCalls(&calls);
    EXPECT_EQ(CopyFile(source, folder / "old", 1'000'000), CopyResult::NoSource);
    calls.pread = SystemFileCalls().pread;
    calls.openat = [](int, const char*, int, mode_t) { return errno = EACCES, -1; };
    EXPECT_EQ(CopyFile(source, folder / "old", 100), CopyResult::Failed);
    ReplaceFileCalls(nullptr);
    EXPECT_EQ(folder.Names(), (std::set<CString>{"copy", "old", "source"}));
    EXPECT_EQ(folder.Read("old"), "old");
}

TEST(File, CopyingOntoItselfChangesNothing) {
    const TempFolder folder;
    const CString path = folder.Write("Only.xml", "the only copy");
    std::filesystem::create_hard_link(path, folder / "second name");
    const FaultyFileCalls calls;
    EXPECT_TRUE(Copies(path, folder / "ONLY.XML"));
    EXPECT_TRUE(Copies(path, folder / "second name"));
    EXPECT_EQ(calls.Renames(), 0);
    EXPECT_EQ(folder.Read("Only.xml"), "the only copy");
}

TEST(File, LinksAreFollowedForReadingAndUpToTheRootOnly) {
    const TempFolder folder;
    folder.Write("outside/a.xml", "outside");
    folder.Write("tree/group/b.xml", "b");
    std::filesystem::create_symlink("tree", folder / "top");
    std::filesystem::create_symlink("../../outside/a.xml", folder / "tree/group/link.xml");
    std::filesystem::create_symlink("../../outside/new.xml", folder / "tree/group/dangling.xml");
    std::filesystem::create_symlink("../outside", folder / "tree/linked");
    const WriteRules rules = {.strRoot = folder / "TOP/"};
    CString bytes;
    EXPECT_TRUE(ReadWholeFile(folder / "top/Linked/A.xml", bytes, 100));
    EXPECT_TRUE(ReadWholeFile(folder / "top/group/LINK.xml", bytes, 100));
    for (const char* name : {"TOP/group/link.xml", "TOP/group/DANGLING.xml", "TOP/linked/a.xml", "TOP/Linked/new.xml",
                             "TOP/../outside/a.xml", "TOP/linked", "top/group/b.xml"}) {
        EXPECT_FALSE(WriteFileWhole(folder / name, "x", rules)) << name;
        EXPECT_FALSE(Copies(folder / "tree/group/b.xml", folder / name, rules)) << name;
        EXPECT_FALSE(DeleteFile(folder / name, rules)) << name;
    }
    EXPECT_FALSE(WriteFileWhole(folder / "top/group/link.xml", "x")) << "without a root it is the last component";
    EXPECT_TRUE(WriteFileWhole(folder / "top/linked/new.xml", "new"));
    EXPECT_TRUE(WriteFileWhole(folder / "TOP//GROUP\\B.xml", "written", rules));
    EXPECT_TRUE(Copies(folder / "TOP/linked/a.xml", folder / "TOP/group/c.xml", rules));
    EXPECT_TRUE(DeleteFile(folder / "TOP/group/C.xml", rules));
    EXPECT_EQ(folder.Names("tree/group"), (std::set<CString>{"b.xml", "link.xml", "dangling.xml"}));
    EXPECT_EQ(folder.Read("tree/group/b.xml"), "written");
    EXPECT_EQ(folder.Names("outside"), (std::set<CString>{"a.xml", "new.xml"}));
    EXPECT_EQ(folder.Read("outside/a.xml"), "outside");
}

TEST(File, AFolderThatIsSwappedForALinkLeadsNowhereElse) {
    const std::function<void(const CString&, const WriteRules&)> actions[] = {
        [](const CString& path, const WriteRules& rules) { WriteFileWhole(path + "a.xml", "new", rules); },
        [](const CString& path, const WriteRules& rules) { WriteFileWhole(path + "new.xml", "new", rules); },
        [](const CString& path, const WriteRules& rules) { CopyFile(path + "a.xml", path + "b.xml", 100, rules); },
        [](const CString& path, const WriteRules& rules) { DeleteFile(path + "A.xml", rules); },
        [](const CString& path, const WriteRules& rules) { SweepTemporaries(path, rules); },
    };
    const std::set<CString> names = {"a.xml", "b.xml", ".veldan-tmp-1-0123456789abcdef"};
    for (const auto& act : actions) {
        for (int call = 1, calls = call; call <= calls; ++call) {
            const TempFolder folder;
            for (const char* name :
                 {"outside/a.xml", "outside/b.xml", "outside/.veldan-tmp-1-0123456789abcdef", "tree/group/a.xml"}) {
                folder.Write(name, "kept");
            }
            FaultyFileCalls swapping;
            swapping.ActAt(call, [&] {
                std::filesystem::rename(folder / "tree/group", folder / "tree/moved");
                std::filesystem::create_symlink("../outside", folder / "tree/group");
            });
            act(folder / "tree/group/", {.strRoot = folder / "tree"});
            calls = swapping.Calls();
            EXPECT_EQ(folder.Names("outside"), (std::set<CString>{"a.xml", "b.xml", ".veldan-tmp-1-0123456789abcdef"}))
                << call;
            EXPECT_EQ(folder.Read("outside/a.xml") + folder.Read("outside/b.xml"), "keptkept") << call;
        }
    }
}

TEST(File, WhetherAFileIsWritableIsAskedWithoutOpeningIt) {
    const TempFolder folder;
    const CString path = folder.Write("a.xml", "text");
    chmod(folder.Path().c_str(), 0755);
    std::filesystem::create_symlink("a.xml", folder / "link.xml");
    std::filesystem::create_symlink("/dev/null", folder / "device.xml");
    mkfifo((folder / "pipe.xml").c_str(), 0666);
    const FaultyFileCalls calls;
    CString bytes;
    for (const FileAccess access : {FileAccess::Read, FileAccess::ReadIfWritable}) {
        EXPECT_FALSE(ReadFileStart(folder / "device.xml", access, bytes, 100));
        EXPECT_FALSE(ReadFileStart(folder / "pipe.xml", access, bytes, 100));
        EXPECT_FALSE(ReadFileStart(folder / "pipe.xml", FileAccess::Append, bytes, 100));
    }
    EXPECT_EQ(calls.Calls(), 4) << "nothing was opened but, for appending, the pipe's folder";
    EXPECT_TRUE(ReadFileStart(folder / "LINK.xml", FileAccess::ReadIfWritable, bytes, 100));
    // One that its owner alone may not write.
    chmod(path.c_str(), 0466);
    const bool isRoot = geteuid() == 0;
    ASSERT_TRUE(!isRoot || (chown(path.c_str(), 65'534, 0) == 0 && seteuid(65'534) == 0));
    EXPECT_FALSE(ReadFileStart(path, FileAccess::ReadIfWritable, bytes, 100));
    EXPECT_TRUE(ReadFileStart(path, FileAccess::Read, bytes, 100));
    EXPECT_EQ(calls.OpensForWriting(), 0);
    ASSERT_TRUE(!isRoot || seteuid(0) == 0);
}

TEST(File, IsReadWholeOrNotAtAllWhicheverCallFails) {
    const TempFolder folder;
    folder.Write("source", "content");
    for (const Fault fault : {Fault::InputOutput, Fault::NoPermission, Fault::Short, Fault::Interrupted}) {
        const bool isHarmless = fault == Fault::Short || fault == Fault::Interrupted;
        for (int n = 1; n <= 3; ++n) {
            const FaultyFileCalls faulty(fault, n);
            CString bytes;
            const bool isRead = ReadWholeFile(folder / "source", bytes, 100);
            EXPECT_EQ(bytes, isRead ? "content" : "") << n;
            EXPECT_TRUE(isRead || !isHarmless) << n;
        }
    }
}

TEST(File, SweepRemovesWhatDeadProcessesLeftAndNothingElse) {
    const TempFolder folder;
    const CString strBusy = ".veldan-tmp-7-0123456789abcdef";
    const CString strNamed = ".veldan-tmp-8-0123456789abcdef";
    const std::set<CString> own{".veldan-7-7",
                                ".veldan-tmp-1-0",
                                ".veldan-tmp--0123456789abcdef",
                                ".veldan-tmp-7-0123456789abcdeF",
                                "veldan-tmp-7-0123456789abcdef",
                                "a.xml"};
    folder.Write(".veldan-tmp-1-00000000000000ff", "left by a process whose number is in use again");
    folder.Write(".veldan-tmp-999999999-0123456789abcdef", "left behind");
    const CString busy = folder.Write(strBusy, "being written");
    folder.Write(strNamed, "named by an index");
    for (const CString& strName : own) {
        folder.Write(strName, "somebody's own");
    }
    const int file = open(busy.c_str(), O_RDONLY);
    ASSERT_EQ(flock(file, LOCK_EX), 0);
    SweepTemporaries(folder.Path(), {}, [&](std::string_view name) { return name == strNamed; });
    std::set<CString> left = own;
    left.insert({strBusy, strNamed});
    EXPECT_EQ(folder.Names(), left);
    close(file);
    SweepTemporaries(folder / "missing");
}

}  // namespace
}  // namespace veldan
