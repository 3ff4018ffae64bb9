// What the host defines for every module that runs with it: the calling
// convention, symbol visibility, the module handle, and the export macros of
// the three host modules.
#pragma once

#if defined(_WIN32)
#define ZV_STDCALL __stdcall
#define ZV_DLL_EXPORT __declspec(dllexport)
#define ZV_DLL_IMPORT __declspec(dllimport)
#else
// Only 32-bit Windows has a callee-cleans convention; elsewhere the default is it.
#define ZV_STDCALL
#define ZV_DLL_EXPORT __attribute__((visibility("default")))
#define ZV_DLL_IMPORT
#endif

// A module handle: what the host's string loader is given to find a module's strings.
typedef void* ZvModule;

#if defined(ZV_BUILDING_ZORVAN)
#define ZV_ZORVAN_API ZV_DLL_EXPORT
#else
#define ZV_ZORVAN_API ZV_DLL_IMPORT
#endif

#if defined(ZV_BUILDING_ZVCTRLS)
#define ZV_CTRLS_API ZV_DLL_EXPORT
#else
#define ZV_CTRLS_API ZV_DLL_IMPORT
#endif

#if defined(ZV_BUILDING_ZVSUPPT)
#define ZV_SUPPT_API ZV_DLL_EXPORT
#else
#define ZV_SUPPT_API ZV_DLL_IMPORT
#endif
