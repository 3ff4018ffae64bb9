// The host's string loader: the string `id` of the module `module`, or null.
#pragma once

#include "host/host_api.h"

ZV_CTRLS_API const char* ZV_STDCALL ZvLoadString(unsigned int id, ZvModule module);
