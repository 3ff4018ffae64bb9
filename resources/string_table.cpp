// The library's strings as an exported table, found by the host's string
// loader through this module's handle.
#include "host/host_api.h"
#include "host/string_resource.h"

extern "C" ZV_DLL_EXPORT const ZvStringResource zv_string_resources[] = {
#define ZV_STRING(id, text) {id, text},
#include "resources/strings.inc"
#undef ZV_STRING
    {0, nullptr},
};
