#pragma once

/// Marks a class or function that the layer's shared library exports. Everything else is hidden.
#define VELDAN_PLATFORM_API __attribute__((visibility("default")))
