#pragma once

#include "HostWindow.h"

#include <string>

/// Opens the menu on the display in memory, rests on groups, scrolls and picks, as a person would, and writes a
/// numbered picture of the screen per step into a folder. False, with a word on the standard error output, if a picture
/// can't be written.
bool RunDemo(HostWindow& host, const std::string& folder);
