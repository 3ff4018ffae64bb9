#include <windows.h>

#include "frame/platform_module.h"

namespace zv {

const char* const kControlsModuleName = "zvCtrls.dll";
const char* const kTransitionModuleName = "ZvTransition.dll";
const char* const kLoadStringSymbol = "?ZvLoadString@@YGPBDIPAX@Z";

ZvModule find_loaded_module(const char* file_name) { return GetModuleHandleA(file_name); }

void* find_module_symbol(ZvModule module, const char* symbol) {
  return module ? reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(module), symbol)) : nullptr;
}

}  // namespace zv
