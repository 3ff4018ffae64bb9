// Writes the MLT metadata of every transition service (one YAML file each,
// transition_<service>.yml) and Kdenlive's descriptors of them (<service>.xml)
// into the two folders given, from the library's catalogue.
#include <cstdio>
#include <fstream>
#include <string>

#include "mlt/kdenlive_descriptor.h"
#include "mlt/service_names.h"

namespace {

// A double-quoted YAML scalar.
std::string quoted(const std::string& text) {
  std::string out = "\"";
  for (char c : text) {
    if (c == '"' || c == '\\') out += '\\';
    out += c;
  }
  return out + "\"";
}

void write_yaml(std::ostream& out, const zv_mlt::TransitionInfo& t) {
  out << "schema_version: 7.0\n"
      << "type: transition\n"
      << "identifier: " << zv_mlt::service_name(t.name.c_str()) << "\n"
      << "title: " << quoted(t.name) << "\n"
      << "version: 1\n"
      << "language: en\n"
      << "tags:\n  - Video\n"
      << "description: " << quoted(zv_mlt::description_of(t)) << "\n";
  out << "parameters:\n";
  if (!t.styles.empty()) {
    out << "  - identifier: style\n"
        << "    title: " << quoted(zv_mlt::parameter_title(t, 0)) << "\n"
        << "    type: string\n"
        << "    description: \"A style name, or its index counted from 0.\"\n"
        << "    default: " << quoted(t.styles[0]) << "\n"
        << "    values:\n";
    for (const std::string& style : t.styles) out << "      - " << quoted(style) << "\n";
    out << "    mutable: yes\n"
        << "    widget: combo\n";
  }
  const char* types[2] = {"integer", "float"};
  for (int p = 0; p < 2; ++p) {
    if (t.labels.size() < static_cast<size_t>(p) + 2) break;
    out << "  - identifier: param" << p + 1 << "\n"
        << "    title: " << quoted(zv_mlt::parameter_title(t, p + 1)) << "\n"
        << "    type: " << types[p] << "\n"
        << "    default: 0\n"
        << "    mutable: yes\n";
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fprintf(stderr, "usage: %s YAML_FOLDER KDENLIVE_FOLDER\n", argv[0]);
    return 2;
  }
  auto catalogue = zv_mlt::read_catalogue();
  if (catalogue.empty()) {
    std::fprintf(stderr, "the library registered no transitions\n");
    return 1;
  }
  for (const auto& t : catalogue) {
    const std::string service = zv_mlt::service_name(t.name.c_str());
    const std::string paths[2] = {std::string(argv[1]) + "/transition_" + service + ".yml",
                                  std::string(argv[2]) + "/" + service + ".xml"};
    std::ofstream files[2] = {std::ofstream(paths[0]), std::ofstream(paths[1])};
    write_yaml(files[0], t);
    if (!zv_mlt::write_kdenlive_descriptor(files[1], t)) {
      std::fprintf(stderr, "%s: a style name holds a comma, which Kdenlive's lists cannot show\n", t.name.c_str());
      return 1;
    }
    for (int k = 0; k < 2; ++k) {
      if (!files[k].flush()) {
        std::fprintf(stderr, "cannot write %s\n", paths[k].c_str());
        return 1;
      }
    }
  }
  return 0;
}
