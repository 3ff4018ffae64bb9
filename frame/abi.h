// The library's own export macro, on top of the host's calling convention and
// visibility macros.
#pragma once

#include "host/host_api.h"

// Exports of the transition library itself. The Windows DLL lists its exports
// by their decorated names in a module-definition file instead, so nothing
// else leaves it. Programs that link its static core (the tests, the
// command-line program) neither import nor export them.
#if defined(ZV_BUILDING_TRANSITION) && defined(_WIN32)
#define ZV_API
#elif defined(ZV_BUILDING_TRANSITION)
#define ZV_API ZV_DLL_EXPORT
#elif defined(ZV_TRANSITION_STATIC)
#define ZV_API
#else
#define ZV_API ZV_DLL_IMPORT
#endif
