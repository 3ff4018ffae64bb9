// The library's registration and catalogue exports, as a host declares them.
#pragma once

#include <cstdint>

#include "frame/abi.h"

// Registers the 66 transitions with the host: 1 when registered (or found
// registered already), 0 when the host's string loader is not available.
ZV_API int ZV_STDCALL zvTranInit();

// The labels of a transition's user parameters (the name is the library's own).
struct zvTarnParamExplain {
  int32_t count;
  const char** labels;  // `count` labels, then a null entry
};

ZV_API int ZV_STDCALL zvTranGetStyleCount(int id);
// The style names of a transition, or null. Not null-terminated: take as many
// entries as zvTranGetStyleCount reports. Valid until the next call.
ZV_API const char** ZV_STDCALL zvTranGetStyleName(int id);
ZV_API zvTarnParamExplain* ZV_STDCALL zvTranGetParamExplain(int id);
ZV_API zvTarnParamExplain* ZV_STDCALL zvTranGetParamExplain(const char* name);
