#pragma once

/// Marks a class or function that crosses from the layer's shared library to its users. Everything else stays hidden.
#define VELDAN_PLATFORM_API __attribute__((visibility("default")))
