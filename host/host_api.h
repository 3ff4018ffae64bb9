// Export macros of the three host modules.
#pragma once

#include "frame/abi.h"

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
