#include "platform/core/Text.h"

#include "platform/core/Utf8.h"

#include <gtest/gtest.h>

#include <climits>
#include <clocale>

namespace veldan {
namespace {

TEST(Text, FormatGivesShortAndLongTextsWhole) {
    EXPECT_EQ(Format("id=%d name=%s", -7, "a"), "id=-7 name=a");
    const CString longText(100'000, 'x');
    EXPECT_EQ(Format("<%s>", longText.c_str()), "<" + longText + ">");
    for (const std::size_t length : {254U, 255U, 256U, 257U}) {
        EXPECT_EQ(Format("%s", CString(length, 'y').c_str()), CString(length, 'y'));
    }
}

TEST(Text, TrimTakesOnlyWhiteSpaceOfC) {
    EXPECT_EQ(Trim(" \t\r\n\v\fa b\f\v\n\r\t "), "a b");
    EXPECT_EQ(Trim(" \t "), "");
    // 0x85 and 0xA0 are white space in some locales and the last bytes of letters in UTF-8.
    EXPECT_EQ(Trim("\xE2\x80\x85"), "\xE2\x80\x85");
    EXPECT_EQ(Trim("\xC3\xA0"), "\xC3\xA0");
    EXPECT_EQ(TrimLeft("  a  "), "a  ");
    EXPECT_EQ(TrimRight("  a  "), "  a");
}

TEST(Text, ReplaceAllGoesOnBehindWhatItPutIn) {
    EXPECT_EQ(ReplaceAll("a.xml.xml", ".xml", ".png"), "a.png.png");
    EXPECT_EQ(ReplaceAll("aaa", "a", "aa"), "aaaaaa");
    EXPECT_EQ(ReplaceAll("abc", "", "x"), "abc");
    EXPECT_EQ(ReplaceAll("a/b", "/", ""), "ab");
}

TEST(Text, AtoiReadsLeadingDigitsAndSaturates) {
    EXPECT_EQ(Atoi(" \t12abc"), 12);
    EXPECT_EQ(Atoi("-3"), -3);
    EXPECT_EQ(Atoi("+3"), 3);
    EXPECT_EQ(Atoi("- 3"), 0);
    EXPECT_EQ(Atoi("x3"), 0);
    EXPECT_EQ(Atoi(""), 0);
    EXPECT_EQ(Atoi("2147483647"), INT_MAX);
    EXPECT_EQ(Atoi("99999999999999999999999"), INT_MAX);
    EXPECT_EQ(Atoi("-2147483648"), INT_MIN);
    EXPECT_EQ(Atoi("-99999999999999999999999"), INT_MIN);
}

TEST(Utf8, EveryCharacterSurvivesEncodingAndDecoding) {
    for (char32_t value = 0; value <= 0x10ffff; ++value) {
        if (value == 0xd800) {
            value = 0xe000;
        }
        CString text;
        AppendUtf8(text, value);
        const Utf8Character character = DecodeUtf8(text);
        ASSERT_TRUE(character.bValid) << std::hex << static_cast<unsigned>(value);
        ASSERT_EQ(character.value, value);
        ASSERT_EQ(character.nLength, text.size());
    }
}

TEST(Utf8, ABrokenCharacterStandsForItsFirstByte) {
    const std::string_view broken[] = {"\xE4z", "\xE2\x82", "\xC0\x80" /* overlong */,
                                       "\xED\xA0\x80" /* half of a pair */, "\xF4\x90\x80\x80" /* beyond the last */};
    for (const std::string_view text : broken) {
        const Utf8Character character = DecodeUtf8(text);
        EXPECT_FALSE(character.bValid) << text;
        EXPECT_EQ(character.nLength, 1U) << text;
    }
}

TEST(Utf8, FoldCaseMapsCharacterByCharacterInAnyLocale) {
    ASSERT_STREQ(std::setlocale(LC_ALL, nullptr), "C");
    EXPECT_EQ(FoldCase("Order.ini"), FoldCase("oRDER.INI"));
    EXPECT_EQ(FoldCase("\u00c4\u00e9\u0416\u03c9"), FoldCase("\u00e4\u00c9\u0436\u03a9"));
    EXPECT_NE(FoldCase("stra\u00dfe"), FoldCase("strasse")) << "no mapping to several characters";
    EXPECT_NE(FoldCase("\xC4"), FoldCase("\xE4")) << "bytes that are no UTF-8 have no case";
    EXPECT_EQ(FoldCase("\xE4z"), "\xE4Z");
}

}  // namespace
}  // namespace veldan
