#include "platform/core/Path.h"

#include "platform/core/File.h"
#include "platform/core/FolderSnapshot.h"
#include "platform/core/PathResolver.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

namespace veldan {
namespace {

using testing::TempFolder;

CString Spelling(const CString& path) {
    const auto resolved = ResolvePath(path);
    return resolved && resolved->bExists ? resolved->strName : "";
}

TEST(Path, PlainFileNamesStayInTheirFolder) {
    for (const char* name : {"a.xml", "..a", "a..", " ", "a b", "\u00e4", "a=b", ";a"}) {
        EXPECT_TRUE(IsPlainFileName(name)) << name;
    }
    for (const char* name : {"", ".", "..", "a/b", "a\\b", "../a", "..\\a"}) {
        EXPECT_FALSE(IsPlainFileName(name)) << name;
    }
}

TEST(PathResolver, FindsEachComponentWhateverItsCaseAndSeparators) {
    const TempFolder folder;
    folder.Write("Profiles/B\u00e4r Gro\u00df/order.ini", "x");
    EXPECT_EQ(Spelling(folder / "Profiles/B\u00e4r Gro\u00df/order.ini"), "order.ini");
    EXPECT_EQ(Spelling(folder / "PROFILES//B\u00c4R gro\u00df\\\\Order.INI"), "order.ini");
    EXPECT_EQ(Spelling(folder / "Profiles\\Missing\\Order.INI"), "");
    EXPECT_TRUE(PathExists(folder / "profiles\\", true));
    EXPECT_FALSE(PathExists(folder / "profiles", false));
    EXPECT_FALSE(PathExists(folder / "Profiles/B\u00e4r Gro\u00df/ORDER.ini/", false)) << "a file is no folder";
    folder.Write("caf\xE9.XML", "");
    EXPECT_EQ(Spelling(folder / "CAF\xE9.xml"), "caf\xE9.XML");
    EXPECT_EQ(Spelling(folder / "CAF\xC9.xml"), "") << "bytes that are no UTF-8 have no case";
    std::filesystem::current_path(folder.Path());
    EXPECT_EQ(Spelling("PROFILES"), "Profiles");
    EXPECT_EQ(FileSpelling("profiles\\B\u00e4r gro\u00df//ORDER.ini"), "Profiles/B\u00e4r Gro\u00df/order.ini");
    EXPECT_EQ(FileSpelling("profiles"), "") << "a folder";
    std::filesystem::create_symlink("Profiles", folder / "link");
    EXPECT_TRUE(IsSameFile("profiles", "LINK"));
    EXPECT_FALSE(IsSameFile("profiles", "."));
    EXPECT_FALSE(IsSameFile("missing", "missing"));
}

TEST(PathResolver, PrefersTheExactSpellingThenTheByteSmallest) {
    const TempFolder folder;
    folder.Write("order.ini", "");
    folder.Write("Order.ini", "");
    folder.Write("ORDER.ini", "");
    EXPECT_EQ(Spelling(folder / "order.ini"), "order.ini");
    EXPECT_EQ(Spelling(folder / "Order.ini"), "Order.ini");
    EXPECT_EQ(Spelling(folder / "oRDER.INI"), "ORDER.ini");
    folder.Write("GROUP/a.xml", "");
    folder.Write("Group/b.xml", "");
    EXPECT_EQ(Spelling(folder / "Group/B.xml"), "b.xml");
    EXPECT_EQ(Spelling(folder / "group/b.xml"), "") << "the folder is chosen before its content is known";
}

TEST(PathResolver, RefusesPathsThatNameNothing) {
    for (const std::string_view path : {"", "/", "\\", "//\\", "\\/"}) {
        EXPECT_FALSE(ResolvePath(path)) << path;
    }
    EXPECT_FALSE(ResolvePath(std::string_view("/tmp\0/x", 7)));
    EXPECT_FALSE(ResolvePath("/tmp/" + CString(5000, 'x')));
    EXPECT_FALSE(PathExists("/", true));
}

TEST(FolderSnapshot, SeesOwnWritesAtOnceAndOthersAfterItsEnd) {
    const TempFolder folder;
    folder.Write("old.xml", "");
    {
        const FolderSnapshot snapshot;
        EXPECT_TRUE(FileExists(folder / "OLD.xml"));
        folder.Write("added.xml", "");
        EXPECT_FALSE(FileExists(folder / "ADDED.xml")) << "the folder was listed before";
        EXPECT_TRUE(FileExists(folder / "added.xml")) << "the exact name needs no listing";
        ASSERT_TRUE(WriteFileWhole(folder / "own.xml", "x"));
        EXPECT_TRUE(FileExists(folder / "OWN.xml"));
        ASSERT_TRUE(DeleteFile(folder / "OLD.xml"));
        EXPECT_FALSE(FileExists(folder / "OLD.xml"));
        std::filesystem::remove(folder / "own.xml");
        EXPECT_FALSE(FileExists(folder / "OWN.xml")) << "a name is not trusted";
    }
    folder.Write("later.xml", "");
    EXPECT_TRUE(FileExists(folder / "LATER.xml"));
}

}  // namespace
}  // namespace veldan
