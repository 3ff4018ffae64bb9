#include <windows.h>

#include "frame/platform_module.h"

namespace zv {

const char* const kControlsModuleName = "zvCtrls.dll";
const char* const kTransitionModuleName = "ZvTransition.dll";
// The loader's name as an MSVC-built controls library exports it.
#if defined(_WIN64)
const char* const kLoadStringSymbol = "?ZvLoadString@@YAPEBDIPEAX@Z";
#else
const char* const kLoadStringSymbol = "?ZvLoadString@@YGPBDIPAX@Z";
#endif

ZvModule find_loaded_module(const char* file_name) { return GetModuleHandleA(file_name); }

void* find_module_symbol(ZvModule module, const char* symbol) {
  return module ? reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(module), symbol)) : nullptr;
}

}  // namespace zv
