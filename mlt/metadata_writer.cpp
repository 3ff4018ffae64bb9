// Writes the MLT metadata of every transition service (one YAML file each,
// transition_<service>.yml) and Kdenlive's descriptors of the 66 (<service>.xml)
// into the two folders given, from the library's catalogue and the GLSL
// collection's table.
#include <cstdio>
#include <fstream>
#include <string>

#include "effects3d/zv_gl_collection.h"
#include "frame/easing.h"
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

void write_head(std::ostream& out, const std::string& service, const std::string& title,
                const std::string& description) {
  out << "schema_version: 7.0\n"
      << "type: transition\n"
      << "identifier: " << service << "\n"
      << "title: " << quoted(title) << "\n"
      << "version: 1\n"
      << "language: en\n"
      << "tags:\n  - Video\n"
      << "description: " << quoted(description) << "\n"
      << "parameters:\n"
      << "  - identifier: easing\n"
      << "    title: \"Easing\"\n"
      << "    type: string\n"
      << "    description: "
      << quoted(std::string("How the time maps to the progress shown: ") + zv::kEasingChoices + ".") << "\n"
      << "    default: linear\n"
      << "    values:\n      - linear\n      - ease-in\n      - ease-out\n      - ease-in-out\n"
      << "    mutable: yes\n";
}

void write_yaml(std::ostream& out, const zv_mlt::TransitionInfo& t) {
  write_head(out, zv_mlt::service_name(t.name.c_str()), t.name, zv_mlt::description_of(t));
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

// A collection transition's parameters as typed properties: numbers, whole
// numbers, switches, lists of numbers (vectors) and picture files.
void write_gl_yaml(std::ostream& out, const ZvGlTransitionInfo& t) {
  write_head(out, zv_mlt::service_name(t.name, zv_mlt::kGlServicePrefix), t.name,
             std::string("The GLSL transition ") + t.name + " by " + t.author + " (" + t.license +
                 " licence), from the open collection gl-transitions, drawn on planar YUV 4:2:0 frames.");
  for (int i = 0; i < t.param_count; ++i) {
    const ZvGlParamInfo& p = t.params[i];
    out << "  - identifier: " << p.name << "\n"
        << "    title: " << quoted(p.name) << "\n";
    std::string numbers;
    for (int k = 0; k < p.components; ++k) {
      char text[32];
      std::snprintf(text, sizeof text, "%g", p.defaults[k]);
      numbers += (k ? " " : "") + std::string(text);
    }
    if (p.kind == kZvGlImage) {
      out << "    type: string\n"
          << "    description: \"A picture file (sampler2D); unset: the built-in picture.\"\n"
          << "    widget: fileurl\n";
    } else if (p.components > 1) {
      out << "    type: string\n"
          << "    description: " << quoted(std::string(p.glsl_type) + ": " + std::to_string(p.components) +
                                          " numbers separated by blanks or commas.")
          << "\n    default: " << quoted(numbers) << "\n";
    } else {
      const char* type = p.kind == kZvGlBool ? "boolean" : p.kind == kZvGlInt ? "integer" : "float";
      out << "    type: " << type << "\n"
          << "    default: " << numbers << "\n";
    }
    out << "    mutable: yes\n";
  }
}

bool written(std::ofstream& file, const std::string& path) {
  if (file.flush()) return true;
  std::fprintf(stderr, "cannot write %s\n", path.c_str());
  return false;
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
      if (!written(files[k], paths[k])) return 1;
    }
  }
  for (int i = 0; i < zvGlTranCount(); ++i) {
    const ZvGlTransitionInfo& t = *zvGlTranInfo(i);
    const std::string path =
        std::string(argv[1]) + "/transition_" + zv_mlt::service_name(t.name, zv_mlt::kGlServicePrefix) + ".yml";
    std::ofstream file(path);
    write_gl_yaml(file, t);
    if (!written(file, path)) return 1;
  }
  return 0;
}
