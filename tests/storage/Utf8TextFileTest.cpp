#include "storage/Utf8TextFile.h"

#include "support/TempFolder.h"

#include <gtest/gtest.h>

namespace veldan {
namespace {

using testing::TempFolder;

constexpr UINT kReplace = CStdioFile::modeCreate | CStdioFile::modeWrite;

const CString kMark = "\xEF\xBB\xBF";

CStringArray ReadThrough(CUtf8TextFile& file, const CString& path) {
    CStringArray lines;
    EXPECT_TRUE(file.Open(path, CStdioFile::modeRead));
    for (CString line; file.ReadString(line);) {
        lines.push_back(line);
    }
    file.Close();
    return lines;
}

TEST(Utf8TextFile, SkipsTheMarkAndReadsMarklessTextAlike) {
    const TempFolder folder;
    for (const CString& content : {kMark + "a\r\n\u65e5", CString("a\n\u65e5\n")}) {
        CUtf8TextFile file;
        EXPECT_EQ(ReadThrough(file, folder.Write("a", content)), (CStringArray{"a", "\u65e5"}));
    }
    CUtf8TextFile file;
    EXPECT_EQ(ReadThrough(file, folder.Write("mark", kMark)), CStringArray{});
    EXPECT_EQ(ReadThrough(file, folder.Write("short", "\xEF\xBB")), (CStringArray{"\xEF\xBB"}));
    EXPECT_EQ(ReadThrough(file, folder / "mark"), CStringArray{kMark}) << "nothing brings the mark back to an object";
}

TEST(Utf8TextFile, WritesTheMarkWithItsFirstText) {
    const TempFolder folder;
    CUtf8TextFile file;
    ASSERT_TRUE(file.Open(folder / "new", kReplace));
    file.WriteString("\u65e5\n");
    file.WriteString("b\n");
    EXPECT_TRUE(file.Close());
    EXPECT_EQ(folder.Read("new"), kMark + "\u65e5\r\nb\r\n");
    ASSERT_TRUE(file.Open(folder / "empty", kReplace));
    EXPECT_TRUE(file.Close());
    EXPECT_EQ(folder.Names(), (std::set<CString>{"empty", "new"}));
    EXPECT_EQ(folder.Read("empty"), "");
}

}  // namespace
}  // namespace veldan
