// zvtran catalogue: every transition with its styles and parameter labels,
// as a table or as JSON.
#include <cstdio>
#include <string>

#include "cli/cli_common.h"
#include "cli/commands.h"
#include "frame/catalogue.h"
#include "frame/registration.h"
#include "frame/zv_transition.h"
#include "host/transition_registry.h"

namespace zvcli {
namespace {

std::string json_string(const char* text) {
  if (!text) return "null";
  std::string out = "\"";
  for (const char* c = text; *c; ++c) {
    unsigned char ch = static_cast<unsigned char>(*c);
    if (ch == '"' || ch == '\\') {
      out += '\\';
      out += *c;
    } else if (ch < 0x20) {
      char buffer[8];
      std::snprintf(buffer, sizeof buffer, "\\u%04x", ch);
      out += buffer;
    } else {
      out += *c;
    }
  }
  return out + "\"";
}

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

void print_json(const std::vector<Entry>& entries) {
  std::printf("[\n");
  for (size_t n = 0; n < entries.size(); ++n) {
    const Entry& e = entries[n];
    std::string styles = "null";
    if (e.has_styles) {
      styles = "[";
      for (size_t i = 0; i < e.styles.size(); ++i) styles += (i ? ", " : "") + json_string(e.styles[i].c_str());
      styles += "]";
    }
    std::string labels = "[";
    for (size_t i = 0; i < e.labels.size(); ++i) labels += (i ? ", " : "") + json_string(e.labels[i]);
    labels += "]";
    std::printf("  {\"id\": %d, \"name\": %s, \"style_count\": %d, \"styles\": %s, "
                "\"params\": {\"count\": %zu, \"labels\": %s}, \"implemented\": %s}%s\n",
                e.id, json_string(e.name.c_str()).c_str(), e.style_count, styles.c_str(), e.labels.size(),
                labels.c_str(), e.implemented ? "true" : "false", n + 1 < entries.size() ? "," : "");
  }
  std::printf("]\n");
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
  Args args(argc, argv, {}, {"json"});
  if (!args.positional().empty()) throw UsageError("usage: zvtran catalogue [--json]");
  load_transitions();
  std::vector<Entry> entries;
  for (int id = 1; id <= zv::kTransitionCount; ++id) entries.push_back(describe(id));
  if (args.has("json")) {
    print_json(entries);
  } else {
    print_table(entries);
  }
  return 0;
}

}  // namespace zvcli
