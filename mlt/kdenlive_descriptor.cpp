#include "mlt/kdenlive_descriptor.h"

#include <string>

#include "host/markup_escape.h"

namespace zv_mlt {

bool write_kdenlive_descriptor(std::ostream& out, const TransitionInfo& t) {
  const std::string service = service_name(t.name.c_str());
  out << "<?xml version=\"1.0\"?>\n<!DOCTYPE kpartgui>\n"
      << "<transition tag=\"" << service << "\" id=\"" << service << "\">\n"
      << "    <name>" << zv::markup_escape(t.name) << "</name>\n"
      << "    <description>" << zv::markup_escape(description_of(t)) << "</description>\n"
      << "    <author>ZvTransition</author>\n";
  // The list holds the style indices (names repeat within some lists), shown by their names.
  if (t.styles.size() > 1) {
    std::string indices, names;
    for (size_t s = 0; s < t.styles.size(); ++s) {
      if (t.styles[s].find(',') != std::string::npos) return false;
      indices += (s ? ";" : "") + std::to_string(s);
      names += (s ? "," : "") + t.styles[s];
    }
    out << "    <parameter type=\"list\" name=\"style\" default=\"0\" paramlist=\"" << indices << "\">\n"
        << "        <paramlistdisplay>" << zv::markup_escape(names) << "</paramlistdisplay>\n"
        << "        <name>" << zv::markup_escape(parameter_title(t, 0)) << "</name>\n"
        << "    </parameter>\n";
  }
  // param1 is an int32 and param2 a double; what a value means is up to each transition (counts and percentages
  // clamped by the transition, or packed pairs). Kdenlive's number widget needs the span of the range to fit an int.
  for (size_t p = 1; p <= 2 && p < t.labels.size(); ++p) {
    out << "    <parameter type=\"constant\" name=\"param" << p << "\" default=\"0\" min=\"0\" max=\"2147483647\""
        << (p == 2 ? " decimals=\"3\"" : "") << ">\n"
        << "        <name>" << zv::markup_escape(parameter_title(t, p)) << "</name>\n"
        << "    </parameter>\n";
  }
  out << "</transition>\n";
  return true;
}

}  // namespace zv_mlt
