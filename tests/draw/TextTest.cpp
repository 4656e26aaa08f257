#include "draw/Canvas.h"

#include <gtest/gtest.h>

#include <dlfcn.h>
#include <pthread.h>

#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <fstream>
#include <string>
#include <vector>

namespace {

constexpr int kEnoughRoom = 1000;
// How many threads the system has room for, and how many there are.
int g_room = kEnoughRoom;
std::atomic<int> g_threads = 0;

struct Work {
    void* (*run)(void*);
    void* data;
};

void* RunInRoom(void* pWork) {
    const Work work = *static_cast<Work*>(pWork);
    delete static_cast<Work*>(pWork);
    void* const result = work.run(work.data);
    --g_threads;
    return result;
}

}  // namespace

extern "C" int pthread_create(pthread_t* id, const pthread_attr_t* traits, void* (*run)(void*), void* data) noexcept {
    static auto* const pReal = reinterpret_cast<decltype(&pthread_create)>(dlsym(RTLD_NEXT, "pthread_create"));
    if (g_threads >= g_room) {
        return EAGAIN;
    }
    ++g_threads;
    return pReal(id, traits, &RunInRoom, new Work{run, data});
}

namespace veldan {
namespace {

struct Text : testing::Test {
    Text() : canvas(300, 100) {
        canvas.dc.SelectObject(&font);
        canvas.dc.SetTextColor(RGB(255, 255, 255));
        canvas.dc.SetBkMode(TRANSPARENT);
    }

    // Draws and gives the rectangle around all pixels that are not black.
    CRect Draw(std::string_view text, CRect rect, UINT format) {
        canvas.dc.FillSolidRect({0, 0, 300, 100}, RGB(0, 0, 0));
        canvas.dc.DrawText(text, rect, format);
        return canvas.Around([&](int x, int y) { return canvas.At(x, y) != 0xff000000; });
    }

    [[nodiscard]] std::vector<std::uint32_t> Pixels() const {
        const Surface& surface = *canvas.bitmap.GetSurface();
        return {surface.Row(0), surface.Row(0) + 300 * 100};
    }

    CSize Measure(std::string_view text, UINT format = DT_LEFT, int width = 300) {
        CRect rect{0, 0, width, 0};
        canvas.dc.DrawText(text, rect, format | DT_CALCRECT);
        return rect.Size();
    }

    CFont font{14, kFontNormal};
    Canvas canvas;
};

TEST_F(Text, MeasuresWithTheSystemFontOrTheHeightThatWasAskedFor) {
    CDC dc;
    dc.CreateCompatibleDC(nullptr);
    EXPECT_EQ(dc.GetTextExtent(""), (CSize{0, 16}));
    EXPECT_EQ(dc.GetTextExtent("Caption").cy, 16);
    EXPECT_GT(dc.GetTextExtent("Caption").cx, 30);
    EXPECT_GT(dc.GetTextExtent("A&B").cx, dc.GetTextExtent("AB").cx) << "an ampersand is a letter";
    EXPECT_EQ(CFont(15, kFontBold, Underline::Yes).LineHeight(), 15);
    EXPECT_GT(CFont(-14, kFontNormal).LineHeight(), 14) << "the height of the letters alone";
    EXPECT_EQ(CFont().LineHeight(), 0);
}

TEST_F(Text, FindsInstalledFontsForTheOnesThatItsCallersName) {
    CFont tahoma(-13, kFontNormal, Underline::No, "Tahoma");
    CFont dialog(-13, kFontNormal, Underline::No, "MS Shell Dlg");
    CFont mono(-13, kFontNormal, Underline::No, "Liberation Mono");
    canvas.dc.SelectObject(&tahoma);
    const CSize wide = canvas.dc.GetTextExtent("wide");
    EXPECT_NE(wide.cx, 4 * canvas.dc.GetTextExtent("i").cx);
    canvas.dc.SelectObject(&dialog);
    EXPECT_EQ(canvas.dc.GetTextExtent("wide"), wide);
    CFont bold(-13, kFontBold, Underline::No, "MS Shell Dlg");
    canvas.dc.SelectObject(&bold);
    EXPECT_GT(canvas.dc.GetTextExtent("wide").cx, wide.cx);
    canvas.dc.SelectObject(&mono);
    EXPECT_EQ(canvas.dc.GetTextExtent("wide").cx, 4 * canvas.dc.GetTextExtent("i").cx);
}

TEST_F(Text, DrawsInTheTextColourOnOpaqueGround) {
    canvas.dc.SetTextColor(kRed);
    const CRect ink = Draw("HHH", {10, 10, 100, 40}, DT_LEFT);
    EXPECT_FALSE(ink.IsEmpty());
    EXPECT_GT(canvas.Count([&](int x, int y) { return canvas.At(x, y) == kRedPixel; }), 10);
    EXPECT_EQ(canvas.Count([&](int x, int y) { return (canvas.At(x, y) & 0xff00ffff) != 0xff000000; }), 0);
}

TEST_F(Text, StandsInItsRectangleByWholePixels) {
    const int width = canvas.dc.GetTextExtent("Hxg").cx;
    const CRect top = Draw("Hxg", {0, 0, 200, 60}, DT_LEFT);
    EXPECT_EQ(Draw("Hxg", {0, 0, 200, 60}, DT_SINGLELINE | DT_VCENTER), top.Offset({0, (60 - 14) / 2}));
    EXPECT_EQ(Draw("Hxg", {7, 31, 207, 91}, DT_SINGLELINE | DT_VCENTER), top.Offset({7, 31 + (60 - 14) / 2}));
    EXPECT_EQ(Draw("Hxg", {0, 0, 200, 20}, DT_SINGLELINE | DT_CENTER), top.Offset({(200 - width) / 2, 0}));
    EXPECT_EQ(Draw("Hxg", {0, 0, 200, 60}, DT_WORDBREAK | DT_VCENTER), top) << "only one line is centred";
}

TEST_F(Text, StaysInsideOfItsRectangle) {
    CFont underlined(14, kFontBold, Underline::Yes);
    canvas.dc.SelectObject(&underlined);
    canvas.dc.SetBkMode(OPAQUE);
    canvas.dc.SetBkColor(kBlue);
    const CRect rect{20, 10, 45, 22};
    const CRect ink = Draw("A caption that is far too long", rect, DT_SINGLELINE | DT_VCENTER);
    EXPECT_EQ(ink, ink.Intersect(rect));
    EXPECT_EQ(ink.Width(), 25);
}

TEST_F(Text, LettersWithSeveralAccentsAreTallerThanTheirRectangle) {
    for (const char* text : {"\u1ea4\u1ed6", "\u1ea4\u0323\u0323"}) {
        const CRect whole = Draw(text, {10, 0, 290, 100}, DT_SINGLELINE | DT_VCENTER);
        const CRect line = {10, 43, 290, 57};
        ASSERT_NE(whole, whole.Intersect(line));
        EXPECT_EQ(Draw(text, line, DT_SINGLELINE | DT_VCENTER), whole);
        EXPECT_EQ(Draw(text, line, DT_WORDBREAK), whole);
        const CRect narrow = {10, 43, 15, 57};
        EXPECT_EQ(Draw(text, narrow, DT_SINGLELINE | DT_VCENTER).right, narrow.right);
        const CRect low = {10, 44, 290, 56};
        const CRect cut = Draw(text, low, DT_SINGLELINE | DT_VCENTER);
        EXPECT_EQ(cut, cut.Intersect(low)) << "a line that doesn't fit";
    }
}

// The letters of plain text are put together by hand; a zero-width space makes any text one for the library.
TEST_F(Text, DrawsPlainLettersAsItDoesAmongOthers) {
    for (const auto& [height, weight] : {std::pair{14, kFontNormal}, {15, kFontBold}, {-30, kFontNormal}}) {
        CFont other(height, weight);
        canvas.dc.SelectObject(&other);
        for (const std::string plain : {"AVAWA To, Yo. Tofu", "...fi ffl (4K 60fps) rtf 7/8 (jQ)", "  *#0# trail  ",
                                        "\"a'b`c~", "H.264 + AAC 1920x1080 @ 25"}) {
            Draw(plain, {3, 5, 290, 90}, DT_SINGLELINE);
            const std::vector<std::uint32_t> pixels = Pixels();
            const std::string mixed = plain + "\u200b";
            Draw(mixed, {3, 5, 290, 90}, DT_SINGLELINE);
            EXPECT_EQ(Pixels(), pixels) << plain;
            EXPECT_EQ(canvas.dc.GetTextExtent(plain), canvas.dc.GetTextExtent(mixed)) << plain;
        }
    }
}

TEST_F(Text, BreaksLinesAtLineFeedsAndAtWordsWhereAsked) {
    const std::string text = "several words that need some room";
    const int width = canvas.dc.GetTextExtent(text).cx;
    EXPECT_EQ(Measure(text), (CSize{width, 14}));
    const CSize broken = Measure(text, DT_WORDBREAK, width / 2 + 10);
    EXPECT_EQ(broken.cy, 28);
    EXPECT_LE(broken.cx, width / 2 + 10);
    EXPECT_EQ(Measure(text, DT_WORDBREAK | DT_SINGLELINE, width / 2).cy, 14);
    EXPECT_EQ(Measure("one\ntwo\r\n\nfour").cy, 4 * 14);
    EXPECT_EQ(Measure("one\r\n").cx, canvas.dc.GetTextExtent("one").cx);
    EXPECT_EQ(Measure("one\ntwo", DT_SINGLELINE).cy, 14);
}

TEST_F(Text, UnderlinesItsWholeWidthOnePixelHigh) {
    CFont underlined(14, kFontNormal, Underline::Yes);
    const CRect plain = Draw("iii", {0, 0, 200, 14}, DT_LEFT);
    canvas.dc.SelectObject(&underlined);
    const CRect ink = Draw("iii", {0, 0, 200, 14}, DT_LEFT);
    EXPECT_EQ(ink.Width(), canvas.dc.GetTextExtent("iii").cx);
    EXPECT_EQ(ink.bottom, plain.bottom + 2);
}

TEST_F(Text, TakesAnyBytes) {
    testing::internal::CaptureStderr();
    const std::string bytes("a\xff\xc3(\0\x01\xe2\x80\xa8\t\x80z", 12);
    EXPECT_EQ(Measure(bytes, DT_SINGLELINE).cy, 14);
    EXPECT_FALSE(Draw(bytes, {0, 0, 200, 50}, DT_WORDBREAK).IsEmpty());
    EXPECT_GT(canvas.dc.GetTextExtent(std::string(1000000, 'x')).cx, 1000);
    CFont odd(12, 4000, Underline::No, "\xff, no such font");
    canvas.dc.SelectObject(&odd);
    EXPECT_GT(canvas.dc.GetTextExtent("odd").cx, 0);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST(TextWithoutThreads, DrawsNothingUntilThereAreSome) {
    Canvas canvas(400, 40);
    canvas.dc.SetBkMode(TRANSPARENT);
    canvas.dc.SetTextColor(kRed);
    const auto ink = [&](const char* text, int room) {
        CRect rect{0, 0, 400, 40};
        canvas.dc.FillSolidRect(rect, RGB(0, 0, 0));
        g_room = room;
        canvas.dc.DrawText(text, rect, DT_SINGLELINE);
        g_room = kEnoughRoom;
        return canvas.Count([&](int x, int y) { return canvas.At(x, y) != 0xff000000; });
    };
    EXPECT_EQ(ink("plain", 0), 0);
    EXPECT_EQ(ink("plain", 1), 0);
    EXPECT_GT(ink("plain", kEnoughRoom), 0);
    g_room = 1;
    CFont font(20, kFontNormal);
    canvas.dc.SelectObject(&font);
    EXPECT_EQ(ink("plain", 1), 0);
    EXPECT_GT(ink("plain", kEnoughRoom), 0);
    for (const char* text : {"\u0416", "\u05d0 \u0e01", "\u2600\ufe0f", "\u0905"}) {
        EXPECT_EQ(ink(text, 1), 0);
        EXPECT_GT(ink(text, kEnoughRoom), 0);
    }
    EXPECT_GT(ink("\u05d0\u0416", 0), 0) << "the fonts are known";
}

TEST(TextWithoutFonts, DrawsNothingAndSaysNothing) {
    const std::string config = testing::TempDir() + "nofonts.conf";
    std::ofstream(config) << "<fontconfig/>";
    setenv("VELDAN_FONT_CONFIG", config.c_str(), 1);
    testing::internal::CaptureStderr();
    Canvas canvas(50, 20);
    CRect rect{0, 0, 50, 20};
    canvas.dc.SetBkMode(TRANSPARENT);
    canvas.dc.DrawText("text", rect, DT_SINGLELINE | DT_VCENTER);
    EXPECT_EQ(canvas.CountInk(rect), 0);
    EXPECT_EQ(canvas.dc.GetTextExtent("text"), (CSize{0, 16}));
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST_F(Text, TabsAreBlanksOrGoOnToStopsOfEightLetters) {
    const auto width = [&](std::string_view text, UINT format) {
        CRect rect;
        canvas.dc.DrawText(text, rect, format | DT_CALCRECT | DT_SINGLELINE);
        return rect.Width();
    };
    EXPECT_EQ(width("a\tb", 0), width("a b", 0));
    EXPECT_EQ(width("a\tb", DT_EXPANDTABS) - width("b", 0), width("xxxxxxxx", 0));
    EXPECT_EQ(width("iiii\tb", DT_EXPANDTABS), width("a\tb", DT_EXPANDTABS));
}

TEST_F(Text, FontGivesBackWhatItWasMadeFrom) {
    LOGFONT description;
    description.lfHeight = -14;
    description.lfWeight = 800;
    description.lfCharSet = 134;
    std::string_view("Arial").copy(description.lfFaceName, 31);
    CFont made;
    made.CreateFontIndirect(description);
    EXPECT_EQ(made.GetLogFont().lfCharSet, 134);
    EXPECT_EQ(made.Face(), CFont(-14, 800, Underline::No, "Arial").Face());
    made.CreatePointFont(87, "Arial");
    EXPECT_EQ(made.GetLogFont().lfHeight, -12) << "8.7 points are 11.6 pixels";
    EXPECT_STREQ(made.GetLogFont().lfFaceName, "Arial");
    made.CreateFont(10, 400, Underline::No, "aaaaaaaaaaaaaaaaaaaaaaaaaaaaaa\xc3\xa9");
    EXPECT_STREQ(made.GetLogFont().lfFaceName, "aaaaaaaaaaaaaaaaaaaaaaaaaaaaaa") << "cut at a whole character";
    made.DeleteObject();
    EXPECT_EQ(made.GetLogFont().lfHeight, 0);
}

}  // namespace
}  // namespace veldan
