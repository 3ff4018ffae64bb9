// Catalogue details a host tool may want beyond the exported queries.
#pragma once

namespace zv {

// How many names the style list of transition `id` holds (0 without a list);
// it may differ from the reported style count.
int style_list_length(int id);

}  // namespace zv
