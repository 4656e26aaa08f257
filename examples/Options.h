#pragma once

#include "platform/core/Geometry.h"

#include <optional>
#include <string>

/// What the command line asks for. Paths are absolute.
struct Options {
    std::string base;  ///< The folder that holds `Profiles`; empty: the user's own copy of the samples.
    std::optional<veldan::CPoint> show;  ///< Open the menu there at once, in pixels of the screen.
    veldan::CRect window{200, 150, 620, 350};
    bool exitAfterPick = false;
    std::string demo;  ///< Folder for the demo's pictures; empty: no demo.
    std::string log;   ///< Folder for the library's trace; empty: none.
    bool help = false;
    bool version = false;
};

/// What --help prints.
extern const char* const kHelp;

/// Reads the command line and checks the folders that it names. Prints every mistake to the standard error output, a
/// line each, and then returns nothing.
std::optional<Options> ReadOptions(int argc, char** argv);
