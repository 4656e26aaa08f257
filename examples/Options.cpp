#include "Options.h"

#include "platform/core/File.h"

#include <unistd.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <string_view>

using veldan::Format;

const char* const kHelp =
    "Usage: veldan-host [OPTION]...\n"
    "Opens a window with a button that shows the menu of conversion profiles.\n"
    "\n"
    "  --base DIR           use the catalogue in DIR, a folder that holds Profiles;\n"
    "                       by default your own copy of the sample catalogue\n"
    "  --show X,Y           show the menu at once, exactly there on the screen\n"
    "  --geometry WxH+X+Y   size and place of the window\n"
    "  --exit-after-pick    end after the first pick\n"
    "  --demo DIR           draw pictures of the menu into DIR, without a display and\n"
    "                       on a copy of the catalogue\n"
    "  --log DIR            write the library's trace to veldan.log in DIR\n"
    "  --help               print this text\n"
    "  --version            print the version\n"
    "\n"
    "Picks are printed as they reach the host and as the path of a file.\n"
    "Exit status: 0 if all went well, 2 for a mistake on the command line or another\n"
    "failure, 3 if no display answers.\n";

namespace {

/// An option that takes a value. `read` returns false if the value is wrong.
struct ValueOption {
    std::string_view name;
    bool (*read)(const char* value, Options& options);
    const char* expected;
};

bool ReadPoint(const char* value, Options& options) {
    veldan::CPoint point;
    char more = 0;
    if (std::sscanf(value, "%d,%d%c", &point.x, &point.y, &more) != 2) {
        return false;
    }
    options.show = point;
    return true;
}

bool ReadGeometry(const char* value, Options& options) {
    veldan::CSize size;
    veldan::CPoint at;
    char more = 0;
    if (std::sscanf(value, "%dx%d%d%d%c", &size.cx, &size.cy, &at.x, &at.y, &more) != 4 || size.cx < 1 || size.cy < 1) {
        return false;
    }
    options.window = veldan::CRect::FromSize(at, size);
    return true;
}

/// The full path of a folder; empty if the value names none.
std::string FolderAt(const char* value) {
    std::error_code error;
    const std::filesystem::path path = std::filesystem::canonical(value, error);
    return std::filesystem::is_directory(path, error) ? path.string() : std::string();
}

bool IsWritable(const std::string& folder) {
    return access(folder.c_str(), W_OK | X_OK) == 0;
}

bool ReadBase(const char* value, Options& options) {
    options.base = FolderAt(value);
    return !options.base.empty() && veldan::PathExists(options.base + "/Profiles", true);
}

bool ReadDemo(const char* value, Options& options) {
    options.demo = FolderAt(value);
    return IsWritable(options.demo);
}

bool ReadLog(const char* value, Options& options) {
    options.log = FolderAt(value);
    return IsWritable(options.log);
}

constexpr std::array kValueOptions{
    ValueOption{"--base", ReadBase, "an existing folder that holds Profiles"},
    ValueOption{"--show", ReadPoint, "a point of the screen, X,Y"},
    ValueOption{"--geometry", ReadGeometry, "a size and a place, WxH+X+Y"},
    ValueOption{"--demo", ReadDemo, "an existing folder to write pictures into"},
    ValueOption{"--log", ReadLog, "an existing folder to write the trace into"},
};

struct Flag {
    std::string_view name;
    bool Options::*field;
};

constexpr std::array kFlags{
    Flag{"--exit-after-pick", &Options::exitAfterPick},
    Flag{"--help", &Options::help},
    Flag{"--version", &Options::version},
};

/// Reads the option at `at` and moves `at` to its last argument. Returns what is wrong with it, or an empty text.
std::string ReadNext(char** argv, int argc, int& at, Options& options) {
    const std::string_view argument = argv[at];
    for (const Flag& flag : kFlags) {
        if (argument == flag.name) {
            options.*flag.field = true;
            return {};
        }
    }
    const std::string_view name = argument.substr(0, argument.find('='));
    for (const ValueOption& option : kValueOptions) {
        if (name != option.name) {
            continue;
        }
        const bool isJoined = name != argument;
        const bool isAlone = !isJoined && (at + 1 == argc || std::string_view(argv[at + 1]).starts_with("--"));
        if (isAlone) {
            return Format("%s needs a value: %s", argv[at], option.expected);
        }
        const char* value = isJoined ? argv[at] + name.size() + 1 : argv[++at];
        return option.read(value, options)
                   ? std::string()
                   : Format("%s takes %s, not \"%s\"", option.name.data(), option.expected, value);
    }
    return Format("there is no option \"%s\"", argv[at]);
}

}  // namespace

std::optional<Options> ReadOptions(int argc, char** argv) {
    Options options;
    bool isGood = true;
    for (int i = 1; i < argc; ++i) {
        if (const std::string fault = ReadNext(argv, argc, i, options); !fault.empty()) {
            std::fprintf(stderr, "veldan-host: %s\n", fault.c_str());
            isGood = false;
        }
    }
    if (!isGood) {
        std::fputs("Try veldan-host --help.\n", stderr);
        return std::nullopt;
    }
    return options;
}
