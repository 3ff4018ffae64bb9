// zvtran catalogue: every transition with its styles and parameter labels,
// then the GLSL collection with authors, licences and parameters, as a table
// or as JSON.
#include <cstdio>
#include <nlohmann/json.hpp>
#include <string>

#include "cli/cli_common.h"
#include "cli/commands.h"
#include "cli/gl_collection_args.h"
#include "frame/catalogue.h"
#include "frame/registration.h"
#include "frame/zv_transition.h"
#include "host/transition_registry.h"

namespace zvcli {
namespace {

struct Entry {
  int id;
  std::string name;
  int style_count;
  bool has_styles;
  std::vector<std::string> styles;
  std::vector<const char*> labels;
  bool implemented;
};

Entry describe(int id) {
  Entry e{id, transition_get_op_name(id) ? transition_get_op_name(id) : "", zvTranGetStyleCount(id), false, {}, {},
          zv::transition_is_implemented(id)};
  if (const char** names = zvTranGetStyleName(id)) {
    e.has_styles = true;
    for (int i = 0; i < zv::style_list_length(id); ++i) e.styles.push_back(names[i]);
  }
  zvTarnParamExplain* explain = zvTranGetParamExplain(id);
  for (int i = 0; i < explain->count; ++i) e.labels.push_back(explain->labels[i]);
  return e;
}

nlohmann::ordered_json entries_json(const std::vector<Entry>& entries) {
  nlohmann::ordered_json list = nlohmann::ordered_json::array();
  for (const Entry& e : entries) {
    nlohmann::ordered_json labels = nlohmann::ordered_json::array();
    for (const char* label : e.labels) labels.push_back(label ? nlohmann::ordered_json(label) : nullptr);
    list.push_back({{"id", e.id},
                    {"name", e.name},
                    {"style_count", e.style_count},
                    {"styles", e.has_styles ? nlohmann::ordered_json(e.styles) : nlohmann::ordered_json(nullptr)},
                    {"params", {{"count", e.labels.size()}, {"labels", labels}}},
                    {"implemented", e.implemented}});
  }
  return list;
}

// A parameter's default as its type reads: numbers, a list of them, a switch,
// or null for a picture's built-in one.
nlohmann::ordered_json default_json(const ZvGlParamInfo& p) {
  if (p.kind == kZvGlImage) return nullptr;
  nlohmann::ordered_json values = nlohmann::ordered_json::array();
  for (int k = 0; k < p.components; ++k) {
    const double v = p.defaults[k];
    values.push_back(p.kind == kZvGlBool  ? nlohmann::ordered_json(v != 0)
                     : p.kind == kZvGlInt ? nlohmann::ordered_json(static_cast<int64_t>(v))
                                          : nlohmann::ordered_json(v));
  }
  return p.components == 1 ? values[0] : values;
}

nlohmann::ordered_json collection_json() {
  nlohmann::ordered_json list = nlohmann::ordered_json::array();
  for (int i = 0; i < zvGlTranCount(); ++i) {
    const ZvGlTransitionInfo& info = *zvGlTranInfo(i);
    nlohmann::ordered_json params = nlohmann::ordered_json::array();
    for (int k = 0; k < info.param_count; ++k) {
      const ZvGlParamInfo& p = info.params[k];
      params.push_back({{"name", p.name}, {"type", p.glsl_type}, {"default", default_json(p)}});
    }
    list.push_back({{"id", kGlPrefix + std::string(info.name)},
                    {"name", info.name},
                    {"author", info.author},
                    {"license", info.license},
                    {"params", params}});
  }
  return list;
}

void print_collection_table() {
  std::printf("\nGLSL transitions (render and apply take gl:NAME and --set NAME=VALUE):\n");
  for (int i = 0; i < zvGlTranCount(); ++i) {
    const ZvGlTransitionInfo& info = *zvGlTranInfo(i);
    std::printf("  gl:%-26s by %s (%s)\n", info.name, info.author, info.license);
    if (info.param_count > 0) std::printf("      parameters: %s\n", gl_parameter_summary(info).c_str());
  }
}

void print_table(const std::vector<Entry>& entries) {
  for (const Entry& e : entries) {
    std::printf("%2d  %-22s %s\n", e.id, e.name.c_str(), e.implemented ? "" : "(not implemented)");
    if (e.style_count > 0) {
      std::string styles;
      for (int i = 0; i < e.style_count && i < static_cast<int>(e.styles.size()); ++i) {
        styles += (i ? ", " : "") + std::to_string(i) + " " + e.styles[i];
      }
      std::printf("      styles: %s\n", styles.c_str());
    }
    for (const char* label : e.labels) {
      if (label && std::string(label) != "Style:") std::printf("      parameter: %s\n", label);
    }
  }
}

}  // namespace

int catalogue_command(int argc, char** argv) {
  Args args("catalogue", "usage: zvtran catalogue [--json]", argc, argv, {}, {"json"});
  if (!args.positional().empty()) throw UsageError("usage: zvtran catalogue [--json]");
  load_transitions();
  std::vector<Entry> entries;
  for (int id = 1; id <= zv::kTransitionCount; ++id) entries.push_back(describe(id));
  if (args.has("json")) {
    const nlohmann::ordered_json all = {{"transitions", entries_json(entries)},
                                        {"glsl_transitions", collection_json()}};
    std::printf("%s\n", all.dump(2).c_str());
  } else {
    print_table(entries);
    print_collection_table();
  }
  return 0;
}

}  // namespace zvcli
