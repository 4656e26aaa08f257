#pragma once

#include <string>

/// The folder with the person's own copy of the sample catalogue; the copy is made at the first call. Empty, with a
/// word on the standard error output, if there is none and none can be made.
std::string SampleBase();
