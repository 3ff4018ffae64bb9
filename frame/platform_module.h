// Finding modules that are already loaded, and their symbols. The library
// never loads a module itself.
#pragma once

#include "host/host_api.h"

namespace zv {

// File names by which the library looks modules up.
extern const char* const kControlsModuleName;     // the host's controls library
extern const char* const kTransitionModuleName;   // this library
// The compiler-decorated name of the host's string loader.
extern const char* const kLoadStringSymbol;

// The handle of a module already loaded under `file_name`, or null.
ZvModule find_loaded_module(const char* file_name);
// The address of `symbol` in `module`, or null.
void* find_module_symbol(ZvModule module, const char* symbol);

}  // namespace zv
