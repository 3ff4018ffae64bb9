// Writes the MLT metadata of every transition service (one YAML file each,
// transition_<service>.yml) into the folder given, from the library's catalogue.
#include <algorithm>
#include <cstdio>
#include <fstream>
#include <string>

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

// A label as a title: without the blanks and the colon around it.
std::string title_of(std::string label) {
  size_t end = label.find_last_not_of(" :");
  label.erase(end == std::string::npos ? 0 : end + 1);
  return label.substr(std::min(label.size(), label.find_first_not_of(' ')));
}

void write_yaml(std::ostream& out, const zv_mlt::TransitionInfo& t) {
  out << "schema_version: 7.0\n"
      << "type: transition\n"
      << "identifier: " << zv_mlt::service_name(t.name.c_str()) << "\n"
      << "title: " << quoted(t.name) << "\n"
      << "version: 1\n"
      << "language: en\n"
      << "tags:\n  - Video\n"
      << "description: " << quoted("The ZvTransition transition " + t.name + " (id " + std::to_string(t.id) +
                                   "), on planar YUV 4:2:0 frames.")
      << "\n";
  out << "parameters:\n";
  if (!t.styles.empty()) {
    out << "  - identifier: style\n"
        << "    title: " << quoted(t.labels.empty() ? "Style" : title_of(t.labels[0])) << "\n"
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
        << "    title: " << quoted(title_of(t.labels[p + 1])) << "\n"
        << "    type: " << types[p] << "\n"
        << "    default: 0\n"
        << "    mutable: yes\n";
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: %s FOLDER\n", argv[0]);
    return 2;
  }
  auto catalogue = zv_mlt::read_catalogue();
  if (catalogue.empty()) {
    std::fprintf(stderr, "the library registered no transitions\n");
    return 1;
  }
  for (const auto& t : catalogue) {
    std::string path = std::string(argv[1]) + "/transition_" + zv_mlt::service_name(t.name.c_str()) + ".yml";
    std::ofstream out(path);
    write_yaml(out, t);
    if (!out) {
      std::fprintf(stderr, "cannot write %s\n", path.c_str());
      return 1;
    }
  }
  return 0;
}
