#include <dlfcn.h>

#include "frame/platform_module.h"

namespace zv {

// The names the modules are loaded under (their sonames), so a module is found
// whichever path or link name loaded it.
const char* const kControlsModuleName = ZV_CONTROLS_MODULE_FILE;
const char* const kTransitionModuleName = ZV_TRANSITION_MODULE_FILE;
const char* const kLoadStringSymbol = "_Z12ZvLoadStringjPv";

ZvModule find_loaded_module(const char* file_name) {
  void* handle = dlopen(file_name, RTLD_LAZY | RTLD_NOLOAD);
  // RTLD_NOLOAD still counts a reference; drop it at once. The module stays
  // loaded because whoever loaded it holds its own reference.
  if (handle) dlclose(handle);
  return handle;
}

void* find_module_symbol(ZvModule module, const char* symbol) {
  return module ? dlsym(module, symbol) : nullptr;
}

}  // namespace zv
