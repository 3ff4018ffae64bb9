// Kdenlive's own description of a composition: an XML file in its
// "transitions" data folder that names the MLT service and lays out its
// parameters (the style as a list, param1 and param2 as numbers, titled with
// the catalogue's labels). Kdenlive takes it in place of what it would make of
// the service's MLT metadata, which must be there too.
#pragma once

#include <ostream>

#include "mlt/service_names.h"

namespace zv_mlt {

// Writes the descriptor of one transition; false when a style name holds a
// comma (Kdenlive separates the names of a list with commas).
bool write_kdenlive_descriptor(std::ostream& out, const TransitionInfo& t);

}  // namespace zv_mlt
