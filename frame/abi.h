// Calling convention and symbol visibility shared by the library and its host.
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

// A host module handle: what the host's string loader is given to find our strings.
typedef void* ZvModule;
