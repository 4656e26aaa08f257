#pragma once

#include "platform/core/Geometry.h"

#include <optional>
#include <string>

/// What the command line asks for.
struct Options {
    std::string base;  ///< The folder that holds `Profiles`; empty: the person's own copy of the samples.
    std::optional<veldan::CPoint> show;  ///< Open the menu there at once, in pixels of the screen.
    veldan::CRect window{200, 150, 620, 330};
    bool exitAfterPick = false;
    std::string demo;  ///< Folder for the demo's pictures; empty: no demo.
    std::string log;   ///< Folder for the library's trace; empty: none.
};

/// Reads the command line. On a fault tells what is wrong on the standard error output and gives nothing.
std::optional<Options> ReadOptions(int argc, char** argv);
