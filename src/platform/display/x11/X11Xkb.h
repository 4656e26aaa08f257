#pragma once

// The protocol's header names a field after a word that this language keeps for itself.
#define explicit explicit_
#include <xcb/xkb.h>
#undef explicit
