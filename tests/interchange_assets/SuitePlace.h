#pragma once

#include "AssetPlace.h"

/// Where the suites run: the same tests are built twice.
#ifdef NK_ASSETS_SERVER
constexpr bool runsOnServer = true;
#else
constexpr bool runsOnServer = false;
#endif
