#include "Options.h"

#include <cstdio>
#include <functional>
#include <map>

namespace {

constexpr const char* kUsage =
    "usage: veldan-host [--base DIR] [--show X,Y] [--geometry WxH+X+Y] [--exit-after-pick] [--demo DIR] [--log DIR]\n";

bool ReadPoint(const char* text, Options& options) {
    veldan::CPoint point;
    char more = 0;
    if (std::sscanf(text, "%d,%d%c", &point.x, &point.y, &more) != 2) {
        return false;
    }
    options.show = point;
    return true;
}

bool ReadGeometry(const char* text, Options& options) {
    veldan::CSize size;
    veldan::CPoint at;
    char more = 0;
    if (std::sscanf(text, "%dx%d%d%d%c", &size.cx, &size.cy, &at.x, &at.y, &more) != 4 || size.cx < 1 || size.cy < 1) {
        return false;
    }
    options.window = veldan::CRect::FromSize(at, size);
    return true;
}

}  // namespace

std::optional<Options> ReadOptions(int argc, char** argv) {
    Options options;
    const auto store = [](std::string& field) {
        return [&field](const char* text) {
            field = text;
            return !field.empty();
        };
    };
    const std::map<std::string, std::function<bool(const char*)>> withValue{
        {"--base", store(options.base)},
        {"--demo", store(options.demo)},
        {"--log", store(options.log)},
        {"--show", [&](const char* text) { return ReadPoint(text, options); }},
        {"--geometry", [&](const char* text) { return ReadGeometry(text, options); }},
    };
    for (int i = 1; i < argc; ++i) {
        const std::string name = argv[i];
        const auto option = withValue.find(name);
        if (name == "--exit-after-pick") {
            options.exitAfterPick = true;
        } else if (option == withValue.end() || i + 1 == argc || !option->second(argv[++i])) {
            std::fprintf(stderr, "veldan-host: can't make sense of %s\n%s", name.c_str(), kUsage);
            return std::nullopt;
        }
    }
    return options;
}
