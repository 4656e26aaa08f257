#include "platform/core/Text.h"
#include "platform/draw/DC.h"
#include "platform/draw/Graphics.h"
#include "platform/draw/Png.h"
#include "platform/draw/Region.h"

#include <benchmark/benchmark.h>

#include <cstring>

namespace veldan {
namespace {

constexpr CSize kMenu{507, 604};
constexpr CSize kRow{342, 50};

struct Canvas {
    explicit Canvas(CSize size) {
        dc.CreateCompatibleDC(nullptr);
        bitmap.CreateCompatibleBitmap(&dc, size.cx, size.cy);
        dc.SelectObject(&bitmap);
        dc.SetBkMode(TRANSPARENT);
    }
    CBitmap bitmap;
    CDC dc;
};

/// A different text each time, because the layout of the last text of a font is kept.
CString Different(const char* text) {
    static int number = 0;
    return text + std::to_string(++number);
}

std::unique_ptr<Image> MakeIcon() {
    Surface surface(35, 35);
    for (int y = 0; y < 35; ++y) {
        for (int x = 0; x < 35; ++x) {
            const bool isInside = (x - 17) * (x - 17) + (y - 17) * (y - 17) < 280;
            surface.Row(y)[x] =
                isInside ? 0xff000000U | static_cast<unsigned>(x * 7) << 16 | static_cast<unsigned>(y) : 0;
        }
    }
    return Image::FromBytes(EncodePng(surface, PngAlpha::Keep));
}

void CopyOfMemory(benchmark::State& state) {
    Surface from(kMenu.cx, kMenu.cy);
    Surface to(kMenu.cx, kMenu.cy);
    for (auto _ : state) {
        std::memcpy(to.Row(0), from.Row(0), sizeof(std::uint32_t) * kMenu.cx * kMenu.cy);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(CopyOfMemory);

void CopyOfAMenu(benchmark::State& state) {
    Canvas from(kMenu);
    Canvas to(kMenu);
    for (auto _ : state) {
        to.dc.BitBlt(0, 0, kMenu.cx, kMenu.cy, &from.dc, 0, 0, SRCCOPY);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(CopyOfAMenu);

void MakingAContext(benchmark::State& state) {
    const auto surface = std::make_shared<Surface>(kMenu.cx, kMenu.cy);
    const Region clip(CRect{10, 10, 300, 60});
    for (auto _ : state) {
        CDC dc;
        dc.Attach(CreateSurfaceDC(surface, {10, 10}, clip));
    }
}
BENCHMARK(MakingAContext);

void DecodingAnIcon(benchmark::State& state) {
    const auto icon = MakeIcon();
    for (auto _ : state) {
        icon->DropPixels();
        benchmark::DoNotOptimize(icon->Pixels());
    }
}
BENCHMARK(DecodingAnIcon);

void ShortLine(benchmark::State& state) {
    Canvas canvas(kRow);
    CFont font(15, kFontBold);
    canvas.dc.SelectObject(&font);
    CRect rect{54, 4, 338, 20};
    for (auto _ : state) {
        canvas.dc.DrawText(Different("MPEG-4 Movie "), rect, DT_SINGLELINE | DT_VCENTER);
    }
}
BENCHMARK(ShortLine);

void WrappedText(benchmark::State& state) {
    Canvas canvas(kRow);
    CFont font(14, kFontNormal);
    canvas.dc.SelectObject(&font);
    CRect rect{54, 20, 338, 50};
    for (auto _ : state) {
        canvas.dc.DrawText(Different("Convert to a movie that plays on every small device, number "), rect,
                           DT_WORDBREAK | DT_VCENTER);
    }
}
BENCHMARK(WrappedText);

/// Everything that is done for a row of the menu when it is seen for the first time.
void ComposingARow(benchmark::State& state) {
    const auto icon = MakeIcon();
    for (auto _ : state) {
        const CString caption = Different("MPEG-4 Movie ");
        Canvas canvas(kRow);
        const int cy = canvas.dc.GetTextExtent(caption).cy;
        icon->DropPixels();
        Graphics graphics(canvas.dc);
        graphics.FillVerticalGradient({0, 0, 342, 50}, 50, 0x17326f, 0x17326f);
        graphics.DrawImageRectRect(icon.get(), {7, 7, 35, 35}, {0, 0, 35, 35});
        CFont bold(15, kFontBold);
        canvas.dc.SelectObject(&bold);
        CRect rect{54, 4, 338, cy + 4};
        canvas.dc.DrawText(caption, rect, DT_SINGLELINE | DT_VCENTER);
        benchmark::DoNotOptimize(canvas.dc.GetTextExtent(caption));
        CFont plain(14, kFontNormal);
        canvas.dc.SelectObject(&plain);
        rect = {54, cy + 4, 338, 50};
        canvas.dc.DrawText(Different("Convert to a movie that plays on every small device, number "), rect,
                           DT_WORDBREAK | DT_VCENTER);
    }
}
BENCHMARK(ComposingARow);

}  // namespace
}  // namespace veldan
