#include "storage/XmlDocument.h"

#include "support/FaultyFileCalls.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>
#include <libxml/parser.h>

#include <array>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace veldan {
namespace {

using testing::FaultyFileCalls;
using Fault = FaultyFileCalls::Fault;
using namespace std::string_literals;

class XmlDocumentTest : public ::testing::Test {
protected:
    bool Load(std::string_view bytes) { return m_document.Load(m_folder.Write("a.xml", bytes)); }
    [[nodiscard]] XmlNode Root() const { return m_document.GetRootElement(); }
    [[nodiscard]] XmlNode Child(std::string_view name) const { return Root().GetChild(name, false); }
    CString Saved() {
        EXPECT_TRUE(m_document.Save((m_folder / "b.xml").c_str()));
        return m_folder.Read("b.xml");
    }
    CString Rewritten(std::string_view bytes) { return Load(bytes) ? Saved() : "refused"; }
    [[nodiscard]] bool IsEmptyAt(const CString& path) {
        return Root().IsEmpty() && m_document.GetPath() == path && !m_document.Save(nullptr);
    }

    testing::TempFolder m_folder;
    XmlDocument m_document;
};

CString Repeat(int count, const CString& text) {
    CString all;
    for (int i = 0; i < count; ++i) {
        all += text;
    }
    return all;
}

CString Attributes(int count) {
    CString tag = "<a";
    for (int i = 0; i < count; ++i) {
        tag += Format(" b%d=''", i);
    }
    return tag + "/>";
}

TEST_F(XmlDocumentTest, TakesWhatIsWellFormedAndNothingElse) {
    const CString good[] = {
        "<a/>",
        " \n<a/>\n",
        "\xef\xbb\xbf<?xml version='1.0'?><a/>",
        "<?xml version=\"1.0\" encoding=\"utf-8\" standalone=\"no\" ?><!-- c --><a><![CDATA[<&]]></a><?pi?>",
        "<a b='>' c=\"'\" d='&lt;&#65;&#x1F600;'/>",
        "<p:a xmlns:p='urn:p' p:b='1' b='2'/>",
        "<a xml:id='1'><b xml:id='1'/></a>",
        "<a xmlns:b='relative'/>",
        Attributes(1024),
        Repeat(256, "<a>") + Repeat(256, "</a>"),
    };
    for (const CString& bytes : good) {
        EXPECT_TRUE(Load(bytes)) << bytes.substr(0, 99) << m_document.GetFault().strWhat;
    }
    const CString bad[] = {
        "",
        " ",
        "text",
        "<a>",
        "<a/><b/>",
        "<a/>text",
        "<a></b>",
        "<a b=1/>",
        "<a b='1' b='2'/>",
        "<a b='<'/>",
        "<a>&b;</a>",
        "<a>&</a>",
        "<a>&#0;</a>",
        "<a>]]></a>",
        "<a><!-- -- --></a>",
        "<a>\x01</a>",
        "<a>\xff</a>",
        "<a>\xed\xa0\x80</a>",
        "<a>\xef\xbf\xbf</a>",
        "<a>\xc0\xbc</a>",
        "<a>\0</a>"s,
        " <?xml version='1.0'?><a/>",
        "\xef\xbb\xbf\xef\xbb\xbf<a/>",
        "<?xml version='1.0' encoding='ascii'?><a b='\xc3\xa4'/>",
        "<?xml version='1.0' encoding='unheard-of'?><a/>",
        "<?xml version='1.0' encoding='UTF-16'?><a/>",
        "\xef\xbb\xbf<?xml version='1.0' encoding='latin1'?><a/>",
        "<p:a/>",
        "<a p:b=''/>",
        "<a xmlns:p='' />",
        "<a xmlns:p='u' xmlns:q='u' p:b='' q:b=''/>",
        "<!DOCTYPE a><a/>",
        "<!DOCTYPE a [<!ENTITY b 'c'>]><a>&b;</a>",
        "<!DOCTYPE a SYSTEM 'file:///etc/passwd'><a/>",
        Attributes(1025),
        Repeat(257, "<a>") + Repeat(257, "</a>"),
        Repeat(256, "<a>") + "<a/>" + Repeat(256, "</a>"),
    };
    for (const CString& bytes : bad) {
        EXPECT_FALSE(Load(bytes)) << bytes.substr(0, 99);
        EXPECT_TRUE(IsEmptyAt(m_folder / "a.xml")) << bytes.substr(0, 99);
        EXPECT_FALSE(m_document.GetFault().strWhat.empty()) << bytes.substr(0, 99);
    }
    EXPECT_FALSE(Load("<a>\n<b>\n</a>"));
    EXPECT_EQ(m_document.GetFault().nLine, 3);
}

TEST_F(XmlDocumentTest, ReadsTheUsualEncodingsAndWritesUtf8) {
    const CString byDeclaration[][3] = {
        {"iso-8859-1", "\xe4", "ä"},  {"windows-1251", "\xe4", "д"},    {"koi8-r", "\xc1", "а"},
        {"gb2312", "\x81\x40", "丂"}, {"GBK", "\x94\x39\xfc\x36", "😀"}, {"shift_jis", "\\\x87\x40", "\\①"},
        {"euc-kr", "\x8c\x63", "똠"}, {"big5", "\xa4\xa4", "中"},       {"windows-1258", "e\xec", "é"},
    };
    for (const auto& [strName, strBytes, strText] : byDeclaration) {
        EXPECT_EQ(Rewritten("<?xml version=\"1.0\" encoding=\"" + strName + "\"?><a b=\"" + strBytes + "\"/>"),
                  "<?xml version=\"1.0\"?>\r\n<a b=\"" + strText + "\"/>\r\n")
            << strName;
    }
    const auto wide = [](std::u16string_view text, bool bBigEndian) {
        CString bytes;
        for (const char16_t unit : text) {
            const char halves[] = {static_cast<char>(unit), static_cast<char>(unit >> 8)};
            bytes += {halves[bBigEndian ? 1 : 0], halves[bBigEndian ? 0 : 1]};
        }
        return bytes;
    };
    for (const bool bBigEndian : {false, true}) {
        EXPECT_EQ(Rewritten(wide(u"\ufeff<a b='ä😀'/>", bBigEndian)), "<a b=\"ä😀\"/>\r\n");
        EXPECT_EQ(Rewritten(wide(u"<?xml version='1.0' encoding='utf-16'?><a/>", bBigEndian)),
                  "<?xml version='1.0'?>\r\n<a/>\r\n");
        EXPECT_EQ(Rewritten(wide(u"<a/>", bBigEndian)), "refused") << "nothing tells the encoding";
        EXPECT_EQ(Rewritten(wide(u"\ufeff<?xml version='1.0' encoding='utf-8'?><a/>", bBigEndian)), "refused");
        EXPECT_EQ(Rewritten(wide(u"\ufeff<a b='\xd83d'/>", bBigEndian)), "refused") << "half a character";
        EXPECT_EQ(Rewritten(wide(u"\ufeff<a/>", bBigEndian) + " "), "refused") << "half a unit";
    }
}

TEST_F(XmlDocumentTest, PutsTheRootsChildrenOnLinesAndChangesNoOtherSpace) {
    const CString cases[][2] = {
        {"<a><b/><c> </c></a>", "<a>\r\n    <b/>\r\n    <c> </c>\r\n</a>\r\n"},
        {"<a>\r\n\r\n\t<b/>\r\n</a>", "<a>\r\n    <b/>\r\n</a>\r\n"},
        {"<a>\n<b>\n <c/>\n</b><!-- x\ny --></a>", "<a>\n    <b>\n <c/>\n</b>\n    <!-- x\ny -->\n</a>\n"},
        {"<a>\r\n<b>\r\n <c/></b><?d e\r\nf?></a>", "<a>\r\n    <b>\r\n <c/></b>\r\n    <?d e\r\nf?>\r\n</a>\r\n"},
        {"<a>\ntext\n  <b/> <c/>text<d/>\n</a>", "<a>\ntext\n  <b/>\n    <c/>text<d/>\n</a>\n"},
        {"<a> <![CDATA[ ]]> <b/></a>", "<a>\r\n    <![CDATA[ ]]>\r\n    <b/>\r\n</a>\r\n"},
        {"<a xml:space='preserve'> <b/>\n</a>", "<a xml:space=\"preserve\"> <b/>\n</a>\n"},
        {"<a xml:space='default'> <b/></a>", "<a xml:space=\"default\">\r\n    <b/>\r\n</a>\r\n"},
        {"<a> </a>", "<a/>\r\n"},
        {"<a></a>", "<a/>\r\n"},
        {"<!--b--> <a/> <?c?>", "<!--b-->\r\n<a/>\r\n<?c?>\r\n"},
        {"<?xml  version='1.0'\tencoding = 'UTF-8'  standalone='yes' ?><a/>",
         "<?xml  version='1.0'  standalone='yes' ?>\r\n<a/>\r\n"},
    };
    for (const auto& [strBefore, strAfter] : cases) {
        EXPECT_EQ(Rewritten(strBefore), strAfter);
        EXPECT_EQ(Rewritten(strAfter), strAfter);
    }
}

TEST_F(XmlDocumentTest, EscapesWhatWouldReadDifferently) {
    const CString cases[][2] = {
        {"<a b='&quot;&apos;&amp;&lt;>&#9;&#10;&#13;\r\n' c=''/>",
         "<a b=\"&quot;'&amp;&lt;&gt;&#9;&#10;&#13; \" c=\"\"/>\r\n"},
        {"<a>&amp;&lt;&gt;\"'&#13;\t</a>", "<a>&amp;&lt;&gt;\"'&#13;\t</a>\r\n"},
        {"<a>x<b><![CDATA[]]]]><![CDATA[>&\n]]></b>y</a>", "<a>x<b><![CDATA[]]]]><![CDATA[>&\n]]></b>y</a>\n"},
        {"<a>\r\n<b>&#13;\r\n</b></a>", "<a>\r\n    <b>&#13;\r\n</b>\r\n</a>\r\n"},
        {"<a xmlns:b='c?d&amp;e' b:d='1'/>", "<a xmlns:b=\"c?d&amp;e\" b:d=\"1\"/>\r\n"},
        {"<a>\u0085\u2028&#xe9;</a>", "<a>\u0085\u2028é</a>\r\n"},
    };
    for (const auto& [strBefore, strAfter] : cases) {
        EXPECT_EQ(Rewritten(strBefore), strAfter);
        EXPECT_EQ(Rewritten(strAfter), strAfter);
    }
}

TEST_F(XmlDocumentTest, WritesANewDocumentJustAsItWasMade) {
    ASSERT_TRUE(m_document.CreateNew("Profile", "", ""));
    EXPECT_EQ(Saved(), "<?xml version=\"1.0\" ?>\r\n<Profile/>\r\n");
    Root().GetChild("A", true)->SetAttribute("value", "x\r\n\ty", "", "");
    Root().AppendText("\r\n    ");
    Root().GetChild("B", true)->AppendText("\r\n1 < 2");
    EXPECT_EQ(Saved(),
              "<?xml version=\"1.0\" ?>\r\n<Profile><A value=\"x&#13;&#10;&#9;y\"/>\r\n    "
              "<B>&#13;\r\n1 &lt; 2</B></Profile>\r\n");
    EXPECT_TRUE(m_document.CreateNew("Profile", "p", "urn:p"));
    EXPECT_EQ(Saved(), "<?xml version=\"1.0\" ?>\r\n<p:Profile xmlns:p=\"urn:p\"/>\r\n");
    EXPECT_TRUE(m_document.CreateNew("Profile", "", "urn:p"));
    EXPECT_EQ(Saved(), "<?xml version=\"1.0\" ?>\r\n<Profile xmlns=\"urn:p\"/>\r\n");
    EXPECT_EQ(m_document.GetEngineVersion(), 60);
    for (const auto& [strName, strPrefix, strUri] : std::initializer_list<std::array<CString, 3>>{
             {"", "", ""}, {"a b", "", ""}, {"p:a", "", ""}, {"a", "p", ""}, {"a", "xmlns", "u"}, {"a", "xml", "u"}}) {
        EXPECT_FALSE(m_document.CreateNew(strName, strPrefix, strUri)) << strName << strPrefix << strUri;
        EXPECT_TRUE(IsEmptyAt(""));
    }
}

TEST_F(XmlDocumentTest, FindsTheFirstChildOfALocalName) {
    ASSERT_TRUE(Load("<a xmlns:p='u'>b<!--b--><c><b v='0'/></c><p:b v='1'/><b v='2'/><B v='3'/></a>"));
    EXPECT_EQ(Child("b").GetAttribute("v", ""), "1");
    EXPECT_EQ(Root().GetChild("b", true)->GetAttribute("v", ""), "1");
    EXPECT_EQ(Child("c").GetChild("b", false)->GetAttribute("v", ""), "0");
    for (const CString& strName : {""s, "p:b"s, "it's"s, "' or '1'='1"s, "*"s, "b\0"s, "v"s}) {
        EXPECT_TRUE(Child(strName).IsEmpty()) << strName;
    }
    EXPECT_FALSE(Root().GetChild("é", true)->IsEmpty());
    EXPECT_EQ(Saved(),
              "<a xmlns:p=\"u\">b<!--b-->\r\n    <c><b v=\"0\"/></c>\r\n    <p:b v=\"1\"/>\r\n    <b v=\"2\"/>"
              "\r\n    <B v=\"3\"/>\r\n    <é/>\r\n</a>\r\n");
}

TEST_F(XmlDocumentTest, AnswersWithTheDefaultForWhatIsMissingOrEmpty) {
    ASSERT_TRUE(Load("<a t='x' e='' n=' -12z' w='abc' xmlns:p='u' p:t='y'/>"));
    EXPECT_EQ(Root().GetAttribute("t", "d"), "x");
    EXPECT_EQ(Root().GetAttribute("p:t", "d"), "y");
    EXPECT_EQ(Root().GetAttribute("e", "d"), "d");
    EXPECT_EQ(Root().GetAttribute("missing", nullptr), "");
    EXPECT_EQ(Root().GetAttributeInt("n", 7), -12);
    EXPECT_EQ(Root().GetAttributeInt("w", 7), 0);
    EXPECT_EQ(Root().GetAttributeInt("e", 7), 7);
    const XmlNode empty = Root().GetChild("x", false)->GetChild("y", true);
    EXPECT_TRUE(empty.IsEmpty() && XmlNode(XmlNodePtr()).IsEmpty() && empty.AppendText("t")->IsEmpty());
    EXPECT_FALSE(empty.SetAttribute("a", "b", "", ""));
    EXPECT_EQ(empty.GetAttribute("t", "d"), "d");
    EXPECT_EQ(empty.GetAttributeInt("t", 7), 7);
    EXPECT_TRUE(m_document.Save(nullptr)) << "nothing was refused in this document";
}

TEST_F(XmlDocumentTest, SetsAttributesInPlaceAndDeclaresTheirNamespaces) {
    ASSERT_TRUE(Load("<a b='1' c='2' xmlns:p='u'><d xmlns='v'><e/></d></a>"));
    EXPECT_TRUE(Root().SetAttribute("b", "x", "", ""));
    EXPECT_TRUE(Root().SetAttributeInt("z", -5, "", ""));
    EXPECT_TRUE(Child("d").SetAttribute("b", "y", "p", "u"));
    EXPECT_TRUE(Child("d").SetAttribute("b", "z", "q", "w"));
    EXPECT_TRUE(Child("d").SetAttribute("space", "preserve", "xml", "http://www.w3.org/XML/1998/namespace"));
    EXPECT_FALSE(Child("d").GetChild("new", true)->IsEmpty());
    EXPECT_EQ(Saved(),
              "<a xmlns:p=\"u\" b=\"x\" c=\"2\" z=\"-5\">\r\n    <d xmlns=\"v\" xmlns:q=\"w\" p:b=\"y\" q:b=\"z\" "
              "xml:space=\"preserve\"><e/><new xmlns=\"\"/></d>\r\n</a>\r\n");
}

TEST_F(XmlDocumentTest, RefusesWhatXmlCanNotHoldAndIsNotSavedThen) {
    using Write = bool (*)(const XmlNode&);
    const Write writes[] = {
        [](const XmlNode& root) { return root.SetAttribute("b", "\xff", "", ""); },
        [](const XmlNode& root) { return root.SetAttribute("b", "\x1b", "", ""); },
        [](const XmlNode& root) { return root.SetAttribute("b", "a\0"s, "", ""); },
        [](const XmlNode& root) { return root.SetAttribute("", "", "", ""); },
        [](const XmlNode& root) { return root.SetAttribute("1", "", "", ""); },
        [](const XmlNode& root) { return root.SetAttribute("a:b", "", "", ""); },
        [](const XmlNode& root) { return root.SetAttribute("xmlns", "u", "", ""); },
        [](const XmlNode& root) { return root.SetAttribute("b", "", "", "u"); },
        [](const XmlNode& root) { return root.SetAttribute("b", "", "q", ""); },
        [](const XmlNode& root) { return root.SetAttribute("b", "", "p", "other"); },
        [](const XmlNode& root) { return root.SetAttribute("b", "", "q", "no address"); },
        [](const XmlNode& root) { return root.SetAttribute("b", "", "xmlns", "http://www.w3.org/2000/xmlns/"); },
        [](const XmlNode& root) { return !root.AppendText("\xef\xbf\xbe")->IsEmpty(); },
        [](const XmlNode& root) { return !root.AppendText("t")->AppendText("u")->IsEmpty(); },
        [](const XmlNode& root) { return !root.GetChild("it's", true)->IsEmpty(); },
        [](const XmlNode& root) { return root.AppendText("t")->SetAttribute("b", "", "", ""); },
    };
    for (std::size_t i = 0; i < std::size(writes); ++i) {
        ASSERT_TRUE(Load("<a b='1' xmlns:p='u'/>"));
        EXPECT_FALSE(writes[i](Root())) << i;
        EXPECT_EQ(Root().GetAttribute("b", ""), "1") << i;
        EXPECT_FALSE(m_document.Save((m_folder / "b.xml").c_str())) << i;
    }
    EXPECT_EQ(m_folder.Names(), (std::set<CString>{"a.xml"}));
}

TEST_F(XmlDocumentTest, EveryTextIsANodeOfItsOwnUntilTheFileIsReadAgain) {
    ASSERT_TRUE(Load("<a>\n  <b/>\n</a>"));
    for (int saves = 1; saves <= 2; ++saves) {
        for (int i = 0; i < 24; ++i) {
            EXPECT_FALSE(Root().AppendText("\r\n    ")->IsEmpty());
        }
        EXPECT_EQ(Saved(), "<a>\n    <b/>" + Repeat(24 * saves, "\r\n    ") + "</a>\n");
    }
    EXPECT_EQ(Rewritten(Saved()), "<a>\n    <b/>\n</a>\n");
}

TEST_F(XmlDocumentTest, NodesOutliveTheirDocument) {
    ASSERT_TRUE(Load("<a><b c='1'/></a>"));
    const XmlNode node = Child("b");
    m_document.Reset();
    EXPECT_TRUE(IsEmptyAt(""));
    EXPECT_EQ(m_document.GetEngineVersion(), 0);
    EXPECT_TRUE(node.SetAttribute("d", "2", "", ""));
    EXPECT_EQ(node.GetAttribute("c", "") + node.GetAttribute("d", ""), "12");
}

TEST_F(XmlDocumentTest, AFileThatIsNotThereLeavesTheDocumentAsItWas) {
    ASSERT_TRUE(Load("<a b='1'/>"));
    ASSERT_EQ(mkfifo((m_folder / "fifo").c_str(), 0666), 0);
    std::filesystem::create_symlink("/dev/zero", m_folder / "device");
    for (const CString& strName : {"missing"s, "no/folder"s, "fifo"s, "device"s, ""s}) {
        EXPECT_FALSE(m_document.Load(m_folder / strName)) << strName;
        EXPECT_EQ(Root().GetAttribute("b", ""), "1") << strName;
        EXPECT_EQ(m_document.GetPath(), m_folder / "a.xml") << strName;
    }
    m_folder.Write("large", "<a/>");
    std::filesystem::resize_file(m_folder / "large", 16 * 1024 * 1024 + 1);
    EXPECT_FALSE(m_document.Load(m_folder / "large"));
    EXPECT_TRUE(IsEmptyAt(m_folder / "large"));
}

TEST_F(XmlDocumentTest, SaveKeepsTheModeAndLeavesWhatItCanNotReplace) {
    ASSERT_TRUE(Load("<a/>"));
    chmod((m_folder / "a.xml").c_str(), 0640);
    EXPECT_TRUE(m_document.Save(nullptr));
    struct stat status = {};
    ASSERT_EQ(stat((m_folder / "a.xml").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0640U);
    chmod((m_folder / "a.xml").c_str(), 0444);
    EXPECT_FALSE(m_document.Save(nullptr)) << "also where no byte would change";
    EXPECT_FALSE(m_document.Save((m_folder / "missing/b.xml").c_str()));
    EXPECT_EQ(m_document.GetPath(), m_folder / "a.xml");
    EXPECT_TRUE(m_document.Save((m_folder / "b.xml").c_str()));
    EXPECT_EQ(m_document.GetPath(), m_folder / "b.xml");
    const FaultyFileCalls calls;
    EXPECT_TRUE(m_document.Save(nullptr));
    EXPECT_EQ(calls.Renames(), 0) << "the file holds these bytes already";
    Root().SetAttribute("b", CString(16 * 1024 * 1024, 'x'), "", "");
    EXPECT_FALSE(m_document.Save(nullptr)) << "it could not be loaded again";
}

TEST_F(XmlDocumentTest, WhateverFailsOrEndsASaveTheFileIsTheOldOneOrTheNewOne) {
    const CString before = "<a>\n    <b/>\n</a>\n";
    const CString after = "<a c=\"1\">\n    <b/>\n</a>\n";
    const auto change = [&] {
        EXPECT_TRUE(Load(before));
        EXPECT_TRUE(Root().SetAttribute("c", "1", "", ""));
    };
    change();
    int count = 0;
    {
        const FaultyFileCalls calls;
        EXPECT_TRUE(m_document.Save(nullptr));
        EXPECT_FALSE(calls.WasUnsyncedRename());
        count = calls.Calls();
    }
    EXPECT_GT(count, 5);
    for (const Fault fault :
         {Fault::NoSpace, Fault::NoPermission, Fault::InputOutput, Fault::Interrupted, Fault::Short, Fault::Killed}) {
        for (int call = 1; call <= count; ++call) {
            change();
            const pid_t child = fault == Fault::Killed ? fork() : 0;
            bool bSaved = false;
            if (child == 0) {
                const FaultyFileCalls calls(fault, call);
                bSaved = m_document.Save(nullptr);
            }
            waitpid(child, nullptr, 0);
            const CString now = m_folder.Read("a.xml");
            EXPECT_TRUE(now == after || (now == before && !bSaved)) << static_cast<int>(fault) << " at " << call;
            const bool bIsHarmless = fault == Fault::Interrupted || fault == Fault::Short;
            EXPECT_TRUE(bSaved || !bIsHarmless) << call;
        }
    }
}

TEST_F(XmlDocumentTest, LeavesTheEngineAsTheHostHasSetIt) {
    int told = 0;
    const auto tell = [](void* pTold, xmlErrorPtr) { ++*static_cast<int*>(pTold); };
    xmlSetStructuredErrorFunc(&told, tell);
    xmlKeepBlanksDefault(0);
    EXPECT_EQ(xmlReadMemory("<a>", 3, nullptr, nullptr, 0), nullptr);
    EXPECT_EQ(told, 1);
    EXPECT_FALSE(Load("<a b='&c;"));
    EXPECT_EQ(Rewritten("<a><b> <c/> </b></a>"), "<a>\r\n    <b> <c/> </b>\r\n</a>\r\n");
    EXPECT_EQ(told, 1);
    ASSERT_NE(xmlGetLastError(), nullptr);
    EXPECT_EQ(xmlGetLastError()->code, XML_ERR_TAG_NOT_FINISHED);
    EXPECT_EQ(xmlReadMemory("<a>", 3, nullptr, nullptr, 0), nullptr);
    EXPECT_EQ(told, 2);
    xmlSetStructuredErrorFunc(nullptr, nullptr);
    xmlKeepBlanksDefault(1);
}

}  // namespace
}  // namespace veldan
