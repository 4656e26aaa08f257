#include "storage/IniDocument.h"

#include "support/FaultyFileCalls.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <optional>
#include <random>

#include <sys/stat.h>

namespace veldan {
namespace {

using testing::FaultyFileCalls;
using testing::TempFolder;

const CString kMark = "\xEF\xBB\xBF";

class IniDocument : public ::testing::Test {
protected:
    CIniDocument& Holding(std::string_view content) {
        m_document.emplace();
        m_document->Load(m_folder.Write("order.ini", content));
        return *m_document;
    }
    CString GetFrom(std::string_view content, std::string_view section, std::string_view key) {
        return Holding(content).Get(section, key, "default");
    }

    CString AfterSet(std::string_view content, std::string_view section, std::string_view key, std::string_view value) {
        CIniDocument& document = Holding(content);
        document.Set(section, key, value);
        EXPECT_EQ(document.Get(section, key, "default"), value);
        return m_folder.Read("order.ini");
    }

    TempFolder m_folder;
    std::optional<CIniDocument> m_document;
};

TEST_F(IniDocument, ReadsValuesWithoutTheBlanksAroundThem) {
    EXPECT_EQ(GetFrom(kMark + "[Order]\r\n \t0 =\ta b = c \r\n", "Order", "0"), "a b = c");
    EXPECT_EQ(GetFrom("", "Order", "0"), "default");
    EXPECT_EQ(GetFrom(kMark, "", ""), "default");
    EXPECT_EQ(GetFrom("[Order]\n0=", "Order", "0"), "") << "an empty value is no missing one";
    EXPECT_EQ(GetFrom("[Order]\n0=\xC3\xA0\xE2\x80\x85", "Order", "0"), "\xC3\xA0\xE2\x80\x85");
    EXPECT_EQ(GetFrom("[Order]\n\xFF\xFE=\xE4", "Order", "\xFF\xFE"), "\xE4") << "bytes that are no UTF-8 stay";
}

TEST_F(IniDocument, TakesOnlyTheFirstSectionAndTheFirstLineOfAKey) {
    const CString content =
        "0=before\n[order]\n0=small\n  [ Order ] rest\n;1=comment\n\n0=first\n0=second\n[Next]\n2=other\n[Order]\n3=x";
    EXPECT_EQ(GetFrom(content, "Order", "0"), "first");
    EXPECT_EQ(GetFrom(content, "order", "0"), "small");
    for (const char* key : {"1", ";1", "2", "3"}) {
        EXPECT_EQ(GetFrom(content, "Order", key), "default") << key;
    }
    EXPECT_EQ(GetFrom("[no end\n0=a", "", "0"), "a") << "malformed lines have empty names";
    EXPECT_EQ(GetFrom("[Order]\nno sign\n0=a", "Order", ""), "");
    EXPECT_EQ(GetFrom("[Order]\n=a\nno sign", "Order", ""), "a");
}

TEST_F(IniDocument, SetChangesItsOwnLineOnlyAndKeepsTheMarkOrItsAbsence) {
    EXPECT_EQ(AfterSet("; top\r\n[Order]\r\n 0 = a \r\n\r\n  1=b", "Order", "0", "x=y"),
              "; top\r\n[Order]\r\n0=x=y\r\n\r\n  1=b\r\n");
    EXPECT_EQ(AfterSet("[Order]\n0=a\n\n[Next]\n", "Order", "1", "b"), "[Order]\r\n0=a\r\n\r\n1=b\r\n[Next]\r\n");
    EXPECT_EQ(AfterSet("[Order]", "Order", "0", "a"), "[Order]\r\n0=a\r\n");
    EXPECT_EQ(AfterSet("[A]\n0=a", "B", "0", "b"), "[A]\r\n0=a\r\n[B]\r\n0=b\r\n");
    EXPECT_EQ(AfterSet(kMark + "[A]\n0=\u65e5\xff", "A", "1", "b"), kMark + "[A]\r\n0=\u65e5\xff\r\n1=b\r\n");
    EXPECT_EQ(AfterSet(kMark, "A", "1", "b"), kMark + "[A]\r\n1=b\r\n");
    EXPECT_EQ(AfterSet("", "A", "1", "b"), "[A]\r\n1=b\r\n");
}

TEST_F(IniDocument, AMissingFileOrOneBegunAnewComesWithTheMark) {
    CIniDocument document;
    EXPECT_EQ(document.Get("Order", "Num", "default"), "default");
    document.Load(m_folder / "new.ini");
    EXPECT_FALSE(document.IsUnreadable());
    EXPECT_EQ(document.Get("Order", "Num", "default"), "default");
    document.Set("Order", "Num", "1");
    document.Set("Order", "0", "a");
    EXPECT_EQ(m_folder.Read("new.ini"), kMark + "[Order]\r\nNum=1\r\n0=a\r\n");
    document.Begin(m_folder.Write("old.ini", "; old\n[Order]\nNum=5"));
    document.SetInLines("Order", "Num", "0");
    EXPECT_TRUE(document.Save());
    EXPECT_EQ(m_folder.Read("old.ini"), kMark + "[Order]\r\nNum=0\r\n");
}

TEST_F(IniDocument, SetWorksOnWhatTheFileHoldsByThenAndAFailedSaveLeavesIt) {
    CIniDocument& document = Holding("[A]\n0=a");
    m_folder.Write("order.ini", "[A]\n0=a\n1=b");
    document.Set("A", "0", "x");
    EXPECT_EQ(m_folder.Read("order.ini"), "[A]\r\n0=x\r\n1=b\r\n");
    chmod((m_folder / "order.ini").c_str(), 0444);
    EXPECT_FALSE(document.Save());
    EXPECT_EQ(document.Get("A", "0", "default"), "default");
    EXPECT_EQ(m_folder.Read("order.ini"), "[A]\r\n0=x\r\n1=b\r\n");
}

TEST_F(IniDocument, SavesManyChangesWithOneReplacement) {
    CIniDocument& document = Holding("");
    for (int i = 0; i < 100; ++i) {
        document.SetInLines("Order", Format("%d", i), Format("%d.xml", i));
    }
    const FaultyFileCalls calls;
    EXPECT_TRUE(document.Save());
    EXPECT_EQ(calls.Renames(), 1);
    EXPECT_FALSE(calls.WasUnsyncedRename());
    EXPECT_EQ(document.Get("Order", "99", ""), "99.xml");
    EXPECT_EQ(m_folder.Names(), (std::set<CString>{"order.ini"}));
}

TEST_F(IniDocument, NeverWritesOverAFileThatItCouldNotRead) {
    const CString path = m_folder.Write("order.ini", kMark + "[A]\n0=a");
    for (int n = 1; n <= 3; ++n) {
        CIniDocument document;
        document.Load(path);
        const FaultyFileCalls faulty(FaultyFileCalls::Fault::InputOutput, n);
        document.Set("B", "0", "b");
        EXPECT_TRUE(document.IsUnreadable()) << n;
        EXPECT_EQ(document.Get("A", "0", "default"), "default") << n;
    }
    EXPECT_EQ(m_folder.Read("order.ini"), kMark + "[A]\n0=a");
    std::filesystem::resize_file(path, 100'000'000);
    CIniDocument document;
    document.Load(path);
    EXPECT_TRUE(document.IsUnreadable());
}

TEST_F(IniDocument, LooksAtEachLineAFewTimesWhateverTheFileHolds) {
    constexpr int kKeys = 3000;
    const CStringArray patterns = {"[%d", "[Order]%d", "%d", "name %d", ";%d", "%d=x", "same", "%d000", "x=%d", ""};
    for (const CString& pattern : patterns) {
        CIniDocument& document = Holding("[Next]\n[Order]\n[Last]\n" + CString(kKeys, '\n'));
        for (int i = 0; i < kKeys; ++i) {
            const CString key = ReplaceAll(pattern, "%d", std::to_string(i));
            document.SetInLines("Order", key, "first");
            document.SetInLines("Order", key, "value");
            document.SetInLines("Order", std::to_string(i), key);
            static_cast<void>(document.Get("Order", key, "-"));
            static_cast<void>(document.Get("Order", Format("none %d", i), ""));
        }
        EXPECT_EQ(document.Get("Order", "2999", "-"), ReplaceAll(pattern, "%d", "2999"));
        EXPECT_TRUE(document.Save());
        EXPECT_LT(document.Steps(), 12U * kKeys) << pattern;
    }
}

TEST_F(IniDocument, KeysThatReadAsHeadersPileUpBehindTheSection) {
    CIniDocument& document = Holding("[A]\n[B]\n1=b\n");
    document.SetInLines("A", "[x", "1");
    document.SetInLines("A", "[y", "2");
    document.SetInLines("A", "0", "a");
    document.SetInLines("B", "0", "b");
    document.SetInLines("A", "1", "c");
    EXPECT_TRUE(document.Save());
    EXPECT_EQ(m_folder.Read("order.ini"), "[A]\r\n0=a\r\n1=c\r\n[y=2\r\n[x=1\r\n[B]\r\n1=b\r\n0=b\r\n");
}

TEST_F(IniDocument, WritesNoFileThatItWouldNotRead) {
    const CString content = "[Order]\n" + CString(3'000'000, '\n');
    CIniDocument& document = Holding(content);
    document.Set("Order", "0", "a");
    EXPECT_EQ(m_folder.Read("order.ini"), content) << "each line end has two bytes when written";
    document.Begin(m_folder / "order.ini");
    for (int i = 0; i < 10'000; ++i) {
        document.SetInLines("Order", std::to_string(i), CString(1000, 'x'));
    }
    EXPECT_FALSE(document.Save());
    EXPECT_LT(document.Size(), 4'200'000U) << "what is too much is not even kept";
}

TEST_F(IniDocument, AfterAnyChangesItAnswersLikeOneThatReadsItsFile) {
    std::mt19937 random(7);
    const auto pick = [&](const CStringArray& texts) { return texts[random() % texts.size()]; };
    const CStringArray names = {"a", "b", "", "[x]", ";c", "d=", " e", "]"};
    const CStringArray lines = {"[a]", " [ b ]x", "[",  "a=1", " a = 2", "b=3=4", ";a=5",
                                "",    " ",       "=6", "d",   "[[a]",   "[]b"};
    for (int round = 0; round < 100; ++round) {
        CString content;
        for (unsigned i = random() % 12; i > 0; --i) {
            content += pick(lines) + "\n";
        }
        CIniDocument& document = Holding(content);
        for (int step = 0; step < 12; ++step) {
            static_cast<void>(document.Get(pick(names), pick(names), "-"));
            document.SetInLines(pick(names), pick(names), Format("%d", step));
        }
        ASSERT_TRUE(document.Save());
        CIniDocument fresh;
        fresh.Load(m_folder / "order.ini");
        for (const CString& section : names) {
            for (const CString& key : names) {
                ASSERT_EQ(document.Get(section, key, "-"), fresh.Get(section, key, "-")) << content;
            }
        }
    }
}

}  // namespace
}  // namespace veldan
