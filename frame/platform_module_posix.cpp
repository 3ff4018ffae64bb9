#include <dlfcn.h>

#include "frame/platform_module.h"

namespace zv {

const char* const kControlsModuleName = "libzvCtrls.so";
const char* const kTransitionModuleName = "libZvTransition.so";
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
