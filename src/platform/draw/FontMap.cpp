#include "platform/core/QuietThread.h"
#include "platform/draw/Font.h"
#include "platform/draw/FontMapInternal.h"

#include <fontconfig/fontconfig.h>
#include <pango/pangocairo.h>
#include <pango/pangofc-fontmap.h>
#include <signal.h>
#include <sys/mman.h>

#include <cstdlib>
#include <memory>

namespace veldan {
namespace {

/// Blocks all signals for this thread and for those that it starts meanwhile: a handler of the host must not run on a
/// thread that the host knows nothing about.
class SignalBlock {
public:
    SignalBlock() {
        sigset_t all;
        sigfillset(&all);
        pthread_sigmask(SIG_SETMASK, &all, &m_before);
    }
    ~SignalBlock() { pthread_sigmask(SIG_SETMASK, &m_before, nullptr); }
    SignalBlock(const SignalBlock&) = delete;
    SignalBlock& operator=(const SignalBlock&) = delete;

private:
    sigset_t m_before;
};

using ConfigPtr = std::unique_ptr<FcConfig, decltype(&FcConfigDestroy)>;
using StringPtr = std::unique_ptr<FcChar8, decltype(&FcStrFree)>;

constexpr const char* kUsualConfig =
    "<fontconfig><dir>/usr/share/fonts</dir><cachedir>/var/cache/fontconfig</cachedir></fontconfig>";

const FcChar8* AsFcString(const char* text) {
    return reinterpret_cast<const FcChar8*>(text);
}

// The configuration to make current, or null when the default one serves. Without any file at all the default one would
// complain on the standard error stream.
ConfigPtr LoadOwnConfig() {
    ConfigPtr config(FcConfigCreate(), &FcConfigDestroy);
    const char* file = secure_getenv("VELDAN_FONT_CONFIG");
    if (file && *file) {
        FcConfigParseAndLoad(config.get(), AsFcString(file), FcFalse);
    } else if (StringPtr(FcConfigGetFilename(config.get(), nullptr), &FcStrFree)) {
        return {nullptr, &FcConfigDestroy};
    } else {
        FcConfigParseAndLoadFromMemory(config.get(), AsFcString(kUsualConfig), FcFalse);
    }
    FcConfigBuildFonts(config.get());
    return config;
}

bool HasFonts(FcConfig* config) {
    for (const FcSetName name : {FcSetSystem, FcSetApplication}) {
        const FcFontSet* fonts = FcConfigGetFonts(config, name);
        if (fonts && fonts->nfont > 0) {
            return true;
        }
    }
    return false;
}

void SetDrawingOptions(PangoContext* context) {
    cairo_font_options_t* options = cairo_font_options_create();
    cairo_font_options_set_antialias(options, CAIRO_ANTIALIAS_GRAY);
    cairo_font_options_set_hint_style(options, CAIRO_HINT_STYLE_SLIGHT);
    cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_ON);
    pango_cairo_context_set_font_options(context, options);
    cairo_font_options_destroy(options);
    pango_cairo_context_set_resolution(context, 96);
    pango_context_set_round_glyph_positions(context, TRUE);
    // Neither the person's language nor the text decides how lines are laid out.
    pango_context_set_language(context, pango_language_from_string("en"));
    pango_context_set_base_dir(context, PANGO_DIRECTION_LTR);
}

PangoContext* StartText() {
    const SignalBlock block;
    if (const ConfigPtr own = LoadOwnConfig()) {
        FcConfigSetCurrent(own.get());
    }
    // The current configuration is loaded here, so that the font map's own thread, which would do it, ends at once.
    if (!HasFonts(FcConfigGetCurrent())) {
        return nullptr;
    }
    PangoFontMap* fonts = pango_cairo_font_map_new_for_font_type(CAIRO_FONT_TYPE_FT);
    PangoContext* context = pango_font_map_create_context(fonts);
    g_object_unref(fonts);
    SetDrawingOptions(context);
    return context;
}

}  // namespace

bool CanSearchFonts(std::size_t searches) {
    constexpr std::size_t kThreadsOfASearch = 2;
    constexpr std::size_t kRoom = std::size_t{64} << 20;
    if (!CanStartThreads(kThreadsOfASearch * searches)) {
        return false;
    }
    void* room = mmap(nullptr, kRoom, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    if (room == MAP_FAILED) {
        return false;
    }
    munmap(room, kRoom);
    return true;
}

_PangoContext* GetTextContext() {
    static PangoContext* context = nullptr;
    static bool hasStarted = false;
    if (!hasStarted && CanSearchFonts(1)) {
        hasStarted = true;
        context = StartText();
    }
    return context;
}

void PrepareText() {
    static_cast<void>(GetTextContext());
}

}  // namespace veldan
