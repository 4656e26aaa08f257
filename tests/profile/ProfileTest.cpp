#include "profile/ListCombo.h"
#include "profile/ProfileBlock.h"
#include "profile/ProfileIdentity.h"
#include "storage/XmlDocument.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

namespace veldan {
namespace {

using testing::ListCombo;

constexpr const char* kNewFile =
    "<?xml version=\"1.0\" ?>\r\n"
    "<Profile>\r\n"
    "    <GroupID value=\"9999\"/>\r\n"
    "    <GroupName value=\"UserDefine\"/>\r\n"
    "    <ProfileID value=\"9999\"/>\r\n"
    "    <ProfileName value=\"New1\"/>\r\n"
    "    <ProfileComment value=\"\"/>\r\n"
    "    <FormatExt value=\"\"/>\r\n"
    "    <IsSysProfile value=\"UserDefine\"/>\r\n"
    "    \r\n"
    "    <VideoCodec value=\"H264\" index=\"0\"/>\r\n"
    "    <VideoBitrate value=\"800\" index=\"0\"/>\r\n"
    "    <VideoSize value=\"\" index=\"0\"/>\r\n"
    "    <VideoFrameRate value=\"\" index=\"0\"/>\r\n"
    "    <VideoAspectRatio value=\"\" index=\"0\"/>\r\n"
    "    <AudioCodec value=\"\" index=\"0\"/>\r\n"
    "    <AudioBitrate value=\"\" index=\"0\"/>\r\n"
    "    <AudioSampleRate value=\"\" index=\"0\"/>\r\n"
    "    <AudioChannels value=\"\" index=\"0\"/>\r\n"
    "    <AudioVolume value=\"a,b\" index=\"0\"/>\r\n"
    "    <VideoDisableList value=\"NO\" index=\"0\"/>\r\n"
    "    <VideoDisable value=\"NO\" index=\"0\"/>\r\n"
    "    <VideoCodecList value=\"H264\" index=\"0\"/>\r\n"
    "    <VideoBitrateList value=\"800\" index=\"0\"/>\r\n"
    "    <VideoSizeList value=\"\" index=\"0\"/>\r\n"
    "    <VideoFrameRateList value=\"\" index=\"0\"/>\r\n"
    "    <VideoAspectRatioList value=\"\" index=\"0\"/>\r\n"
    "    <AudioDisableList value=\"NO\" index=\"0\"/>\r\n"
    "    <AudioDisable value=\"NO\" index=\"0\"/>\r\n"
    "    <AudioCodecList value=\"\" index=\"0\"/>\r\n"
    "    <AudioBitrateList value=\"\" index=\"0\"/>\r\n"
    "    <AudioSampleRateList value=\"\" index=\"0\"/>\r\n"
    "    <AudioChannelsList value=\"\" index=\"0\"/>\r\n"
    "    <AudioVolumeList value=\"a,b\" index=\"0\"/>\r\n"
    "    </Profile>\r\n";

class ProfileTest : public ::testing::Test {
protected:
    /// The root of a document with these children.
    XmlNode With(std::string_view children) {
        EXPECT_TRUE(m_document.Load(m_folder.Write("a.xml", "<Profile>" + CString(children) + "</Profile>")));
        return Root();
    }
    [[nodiscard]] XmlNode Root() const { return m_document.GetRootElement(); }
    CString Saved() {
        EXPECT_TRUE(m_document.Save((m_folder / "b.xml").c_str()));
        return m_folder.Read("b.xml");
    }
    /// What stands between the tags of the root.
    CString Inside() {
        const CString text = Saved();
        const std::size_t begin = text.find("<Profile>") + 9;
        return text.substr(begin, text.find("</Profile>") - begin);
    }

    testing::TempFolder m_folder;
    XmlDocument m_document;
};

TEST_F(ProfileTest, ANewFileHasEveryElementOnALineOfItsOwn) {
    ASSERT_TRUE(m_document.CreateNew("Profile", "", ""));
    ProfileIdentity identity;
    identity.strProfileName = "New1";
    AppendBreak(Root());
    WriteIdentity(Root(), identity);
    WriteTextBlock(Root(), std::array<CString, 10>{"H264", "800", "", "", "", "", "", "", "", "a,b"});
    EXPECT_EQ(Saved(), kNewFile);
    EXPECT_TRUE(m_document.Load(m_folder / "b.xml"));
    EXPECT_EQ(ReadIdentity(Root()).strProfileName, "New1");
    EXPECT_TRUE(IsUserDefined(ReadIdentity(Root())));
    EXPECT_EQ(ReadParameters(Root())[9].current.strValue, "a,b");
}

TEST_F(ProfileTest, WritesOfOneElementSetTheValueFirstAndAddABreak) {
    const XmlNode root = With("<A index='9' x='y'/>");
    ListCombo combo;
    combo.m_entries = {"1", "2"};
    combo.m_strWindowText = "shown";
    WriteValueNode(root, "V", "a\"b");
    WriteTextNode(root, "A", "t");
    WriteEditNode(root, "E", combo);
    WriteComboNode(root, "C", combo);
    WriteComboListNode(root, "L", combo);
    combo.SelectEntry(1);
    WriteComboNode(root, "D", combo);
    WriteComboListNode(root, "M", combo);
    EXPECT_EQ(Inside(),
              "\r\n    <A index=\"0\" x=\"y\" value=\"t\"/>\r\n    <V value=\"a&quot;b\"/>\r\n    \r\n    "
              "<E value=\"shown\" index=\"0\"/>\r\n    <C value=\"shown\" index=\"-1\"/>\r\n    "
              "<L value=\"1,2\" index=\"-1\"/>\r\n    <D value=\"2\" index=\"1\"/>\r\n    "
              "<M value=\"1,2\" index=\"1\"/>\r\n    ");
}

TEST_F(ProfileTest, ReadsMissingElementsAsEmptyTexts) {
    const XmlNode root = With("<A value='yEs'/><B value=''/><C value='yes '/><p:D xmlns:p='u' value='YES'/>");
    CString text = "old";
    EXPECT_TRUE(ReadValueNode(root, "A", text));
    EXPECT_EQ(text, "yEs");
    EXPECT_FALSE(ReadValueNode(root, "B", text));
    EXPECT_FALSE(ReadValueNode(root, "C", text));
    EXPECT_TRUE(ReadValueNode(root, "D", text));
    EXPECT_EQ(ReadValueText(root, "missing", text) + text, "");
    EXPECT_EQ(ReadValueText(root, "C", text) + text, "yes yes ");
}

TEST_F(ProfileTest, FillsACombosListAndSelectsWhatTheFileNames) {
    const struct {
        const char* pszElement;
        CStringArray entries;
        int iSelected;
        const char* pszFace;
    } cases[] = {
        {"<A value='a,b,c' index='1'/>", {"a", "b", "c"}, 1, "b"},
        {"<A value='a,b,c' index='7'/>", {"a", "b", "c"}, 0, "a"},
        {"<A value='a,b,c' index='-1'/>", {"a", "b", "c"}, -1, ""},
        {"<A value='a,b,c' index='-5'/>", {"a", "b", "c"}, -1, ""},
        {"<A value=',,b,, c,' index='1x'/>", {"b", " c"}, 1, " c"},
        {"<A value='a,b'/>", {"a", "b"}, 0, "a"},
        {"<A value='a,b' index='x'/>", {"a", "b"}, 0, "a"},
        {"<A value=',' index='0'/>", {}, -1, "old"},
        {"<B value='a'/>", {}, -1, "old"},
    };
    for (const auto& [pszElement, entries, iSelected, pszFace] : cases) {
        ListCombo combo;
        combo.m_entries = {"before"};
        combo.m_iSelected = 0;
        combo.m_bEnabled = entries.empty();
        FillComboFromNode(With(pszElement), "A", combo);
        EXPECT_EQ(combo.m_entries, entries) << pszElement;
        EXPECT_EQ(combo.m_iSelected, iSelected) << pszElement;
        EXPECT_EQ(combo.m_strFace, pszFace) << pszElement;
        EXPECT_EQ(combo.m_bEnabled, !entries.empty()) << pszElement;
    }
}

TEST_F(ProfileTest, AStreamIsDisabledByTheEntryThatItsIndexStandsFor) {
    const struct {
        const char* pszElement;
        CStringArray entries;
        int result;
        int iSelected;
    } cases[] = {
        {"<A value='NO' index='0'/>", {"yes", "NO"}, 1, 0},
        {"<A value='NO' index='1'/>", {"YES", "NO"}, 0, 1},
        {"<A value='NO' index='2'/>", {"Yes", "NO"}, 1, 0},
        {"<A value='NO' index='-2'/>", {"YES", "NO"}, 0, -1},
        {"<A value='NO' index='-1'/>", {"NO"}, -1, -1},
        {"<A value='NO'/>", {"NO"}, -1, -1},
        {"<B/>", {"NO"}, -1, -1},
        {"<A value='YES' index='0'/>", {}, 0, -1},
    };
    for (const auto& [pszElement, entries, result, iSelected] : cases) {
        ListCombo combo;
        combo.m_entries = entries;
        EXPECT_EQ(ReadDisableIndex(With(pszElement), "A", combo), result) << pszElement;
        EXPECT_EQ(combo.m_iSelected, iSelected) << pszElement;
    }
}

TEST_F(ProfileTest, ADisabledStreamKeepsItsListsInItsFileAndInACopy) {
    const CString file =
        "<AudioCodecList value='x,,y' index='5'/><AudioCodec value='z' index='3' note='n'/><AudioVolume/>"
        "<VideoCodecList value='a,b' index='1'/>";
    std::array<ListCombo, 10> combos;
    std::array<const ListCombo*, 10> pointers;
    std::ranges::transform(combos, pointers.begin(), [](const ListCombo& combo) { return &combo; });
    FillComboFromNode(With(file), "VideoCodecList", combos[0]);
    const KeptParameters kept = ReadParameters(Root());
    WriteComboBlock<ListCombo>(Root(), pointers, {false, true}, nullptr);
    const CString inPlace = Inside();
    EXPECT_TRUE(inPlace.starts_with(
        "\r\n    <AudioCodecList value=\"x,,y\" index=\"5\"/>\r\n    <AudioCodec value=\"z\" index=\"3\" note=\"n\"/>"
        "\r\n    <AudioVolume/>\r\n    <VideoCodecList value=\"a,b\" index=\"1\"/>"
        "\r\n    <VideoCodec value=\"b\" index=\"1\"/>\r\n    <VideoBitrate value=\"\" index=\"-1\"/>"))
        << inPlace;
    EXPECT_NE(inPlace.find("<AudioDisable value=\"YES\" index=\"0\"/>"), CString::npos);
    EXPECT_NE(inPlace.find("<VideoDisableList value=\"NO\" index=\"0\"/>"), CString::npos);
    EXPECT_NE(inPlace.find("<AudioVolumeList value=\"\" index=\"-1\"/>\r\n    "), CString::npos);

    ASSERT_TRUE(m_document.CreateNew("Profile", "", ""));
    WriteComboBlock<ListCombo>(Root(), pointers, {false, true}, &kept);
    const CString copy = Inside();
    EXPECT_EQ(std::ranges::count(copy, '\n'), 24);
    EXPECT_EQ(std::ranges::count(copy, '<'), 24);
    std::size_t at = 0;
    for (const char* pszElement :
         {"<VideoCodec value=\"b\" index=\"1\"/>", "<AudioCodec value=\"z\" index=\"3\"/>",
          "<AudioVolume value=\"\" index=\"-1\"/>", "<VideoDisableList value=\"NO\"", "<VideoDisable ",
          "<VideoCodecList value=\"a,b\" index=\"1\"/>", "<AudioDisableList value=\"YES\"", "<AudioDisable ",
          "<AudioCodecList value=\"x,,y\" index=\"5\"/>", "<AudioVolumeList "}) {
        at = copy.find(pszElement, at);
        ASSERT_NE(at, CString::npos) << pszElement << copy;
    }
}

}  // namespace
}  // namespace veldan
