// The host's transition registry: transitions are added in order and their id
// is their 1-based place in that order.
#pragma once

#include "host/host_api.h"
#include "host/transition_abi.h"

ZV_ZORVAN_API int ZV_STDCALL transition_add_op(TransitionOp op, const char* name);
ZV_ZORVAN_API int ZV_STDCALL transition_get_op_count();
// The id registered under `name`, or 0 when there is none.
ZV_ZORVAN_API int ZV_STDCALL transition_get_op_id(const char* name);

// What the host itself uses to run a registered transition.
ZV_ZORVAN_API TransitionOp transition_get_op(int id);
ZV_ZORVAN_API const char* transition_get_op_name(int id);
// The id registered under `name`, else under a name that differs from it only
// in ASCII letter case (the first such); 0 when there is none.
ZV_ZORVAN_API int transition_find_op_id(const char* name);
// Forgets every registered transition (a host reloading its plug-ins).
ZV_ZORVAN_API void transition_clear_ops();
