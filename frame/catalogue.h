// Catalogue details a host tool may want beyond the exported queries.
#pragma once

#include "frame/abi.h"

namespace zv {

// How many names the style list of transition `id` holds (0 without a list);
// it may differ from the reported style count.
ZV_API int style_list_length(int id);

}  // namespace zv
