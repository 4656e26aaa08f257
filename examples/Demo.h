#pragma once

#include "HostWindow.h"

#include <string>

/// Opens the menu on the display in memory, rests on groups, scrolls and picks like a user, and writes a numbered
/// picture of the screen into a folder after each step. False, with a message on the standard error output, if a
/// picture can't be written.
bool RunDemo(HostWindow& host, const std::string& folder);
