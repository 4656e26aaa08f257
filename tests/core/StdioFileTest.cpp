#include "platform/core/StdioFile.h"

#include "support/FaultyFileCalls.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <random>

#include <sys/stat.h>

namespace veldan {
namespace {

using testing::FaultyFileCalls;
using testing::TempFolder;

constexpr UINT kReplace = CStdioFile::modeCreate | CStdioFile::modeWrite;
constexpr UINT kAppend =
    CStdioFile::modeCreate | CStdioFile::modeNoTruncate | CStdioFile::modeReadWrite | CStdioFile::shareDenyNone;

CStringArray LinesOf(const CString& path) {
    CStdioFile file;
    CStringArray lines;
    if (file.Open(path, CStdioFile::modeRead)) {
        for (CString line; file.ReadString(line);) {
            lines.push_back(line);
        }
    }
    return lines;
}

TEST(StdioFile, ReadsLinesWithoutTheirEndsInWhateverStyle) {
    const TempFolder folder;
    EXPECT_EQ(LinesOf(folder.Write("crlf", "a\r\n\r\nb\r\n")), (CStringArray{"a", "", "b"}));
    EXPECT_EQ(LinesOf(folder.Write("lf", "a\n\nb")), (CStringArray{"a", "", "b"}));
    EXPECT_EQ(LinesOf(folder.Write("empty", "")), CStringArray{});
    EXPECT_EQ(LinesOf(folder.Write("cr", "a\rb\r\r\n\r")), (CStringArray{"a\rb\r", "\r"}));
    const CString odd("a\0b\x1a\xff", 5);
    EXPECT_EQ(LinesOf(folder.Write("odd", odd + "\n" + odd)), (CStringArray{odd, odd}));
    EXPECT_EQ(LinesOf(folder / "missing"), CStringArray{});
}

TEST(StdioFile, ReadsLinesThatCrossItsBuffer) {
    const TempFolder folder;
    std::mt19937 random(1);
    CStringArray lines;
    CString bytes;
    for (int i = 0; i < 300; ++i) {
        lines.emplace_back(random() % 900, static_cast<char>('a' + i % 26));
        bytes += lines.back() + "\r\n";
    }
    lines.emplace_back(100'000, 'x');
    EXPECT_EQ(LinesOf(folder.Write("long", bytes + lines.back())), lines);
}

TEST(StdioFile, PositionsAreOffsetsOnTheDisk) {
    const TempFolder folder;
    CStdioFile file;
    CString line;
    EXPECT_FALSE(file.ReadString(line)) << "not open";
    ASSERT_TRUE(file.Open(folder.Write("a", "one\r\ntwo\r\n"), CStdioFile::modeRead));
    EXPECT_FALSE(file.Open(folder / "a", CStdioFile::modeRead)) << "open already";
    EXPECT_EQ(file.GetLength(), 10);
    EXPECT_TRUE(file.ReadString(line));
    EXPECT_EQ(file.GetPosition(), 5);
    std::array<char, 3> start = {};
    EXPECT_EQ(file.ReadHandle(1, start), 3U);
    EXPECT_EQ(std::string_view(start.data(), 3), "ne\r");
    EXPECT_EQ(file.GetPosition(), 5);
    EXPECT_TRUE(file.ReadString(line));
    EXPECT_EQ(line, "two");
    file.Seek(2);
    EXPECT_TRUE(file.ReadString(line));
    EXPECT_EQ(line, "e");
    file.SeekToEnd();
    EXPECT_FALSE(file.ReadString(line));
    EXPECT_EQ(line, "e") << "left alone at the end";
}

TEST(StdioFile, WritesLineFeedsAsCrLfAndOnlyAtClose) {
    const TempFolder folder;
    const CString path = folder.Write("Order.ini", "old");
    CStdioFile file;
    ASSERT_TRUE(file.Open(folder / "order.ini", kReplace));
    file.WriteString("one\ntwo\n");
    EXPECT_EQ(file.GetPosition(), 10);
    file.WriteString("a\r");
    file.Write("\n");
    EXPECT_EQ(folder.Read("Order.ini"), "old");
    EXPECT_TRUE(file.Close());
    const FaultyFileCalls calls;
    EXPECT_EQ(LinesOf(path), (CStringArray{"one", "two", "a"}));
    EXPECT_EQ(calls.Calls(), 3) << "open, read and close";
    EXPECT_EQ(folder.Read("Order.ini"), "one\r\ntwo\r\na\r\n");
    EXPECT_EQ(folder.Names(), (std::set<CString>{"Order.ini"}));
}

TEST(StdioFile, OpensForWritingOnlyWhatMayBeWritten) {
    const TempFolder folder;
    const CString path = folder.Write("readonly", "x");
    chmod(path.c_str(), 0444);
    folder.Write("folder/a", "");
    std::filesystem::create_symlink(folder / "elsewhere", folder / "link");
    CStdioFile file;
    EXPECT_FALSE(file.Open(folder / "link", kAppend));
    for (const UINT flags : {kReplace, kAppend, UINT{CStdioFile::modeReadWrite}}) {
        for (const CString& target : {path, folder / "folder", folder / "no/file", CString("/"), CString()}) {
            EXPECT_FALSE(file.Open(target, flags)) << target << " " << flags;
        }
    }
    EXPECT_FALSE(file.Open(folder / "a?b", kAppend));
    EXPECT_FALSE(file.Open(folder / "missing", CStdioFile::modeReadWrite));
    EXPECT_TRUE(file.Open(path, CStdioFile::modeRead));
    EXPECT_EQ(folder.Names(), (std::set<CString>{"folder", "link", "readonly"}));
}

}  // namespace
}  // namespace veldan
