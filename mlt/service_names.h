// How the MLT module names and describes the library's transitions.
#pragma once

#include <string>
#include <vector>

namespace zv_mlt {

// The service name of a transition: "zv_" (or another prefix and "_") and its
// display name in lower case, every run of other characters than letters and
// digits made one underscore ("3D Z-Stretch" gives "zv_3d_z_stretch").
std::string service_name(const char* display_name, const char* prefix = "zv");

// The prefix of the GLSL collection's services ("coord-from-in" gives "zvgl_coord_from_in").
constexpr const char* kGlServicePrefix = "zvgl";

// What the catalogue says about one transition, copied out of the library's
// static buffers.
struct TransitionInfo {
  int id = 0;
  std::string name;                 // display name
  std::vector<std::string> styles;  // style names, style 0 first
  std::vector<std::string> labels;  // the style's label, then param1's and param2's
};

// Registers the transitions with the host (this process) and reads the
// catalogue: ids 1 to 66, or nothing when the library could not register.
std::vector<TransitionInfo> read_catalogue();

// The title editors show for the style (index 0), param1 (1) or param2 (2): the
// catalogue's label without the blanks and the colon around it ("Mosaic X: "
// gives "Mosaic X"), or "Style" for a transition that has styles but no labels.
std::string parameter_title(const TransitionInfo& t, size_t index);

// The one-line description editors show.
std::string description_of(const TransitionInfo& t);

}  // namespace zv_mlt
