#include "mlt/service_names.h"

#include <algorithm>
#include <cctype>

#include "frame/zv_transition.h"
#include "host/transition_registry.h"

namespace zv_mlt {

std::string service_name(const char* display_name, const char* prefix) {
  std::string name = prefix;
  bool gap = true;
  for (const char* c = display_name ? display_name : ""; *c; ++c) {
    unsigned char ch = static_cast<unsigned char>(*c);
    if (std::isalnum(ch)) {
      if (gap) name += '_';
      name += static_cast<char>(std::tolower(ch));
      gap = false;
    } else {
      gap = true;
    }
  }
  return name;
}

std::vector<TransitionInfo> read_catalogue() {
  std::vector<TransitionInfo> catalogue;
  if (zvTranInit() != 1) return catalogue;
  for (int id = 1; id <= transition_get_op_count(); ++id) {
    TransitionInfo info;
    info.id = id;
    const char* name = transition_get_op_name(id);
    info.name = name ? name : "";
    int count = zvTranGetStyleCount(id);
    const char** styles = zvTranGetStyleName(id);
    for (int s = 0; s < count; ++s) {
      info.styles.push_back(styles && styles[s] ? styles[s] : std::to_string(s));
    }
    if (const zvTarnParamExplain* explain = zvTranGetParamExplain(id)) {
      for (int l = 0; l < explain->count && explain->labels[l]; ++l) info.labels.push_back(explain->labels[l]);
    }
    catalogue.push_back(std::move(info));
  }
  return catalogue;
}

std::string parameter_title(const TransitionInfo& t, size_t index) {
  if (index >= t.labels.size()) return "Style";
  std::string label = t.labels[index];
  const size_t end = label.find_last_not_of(" :");
  label.erase(end == std::string::npos ? 0 : end + 1);
  return label.substr(std::min(label.size(), label.find_first_not_of(' ')));
}

std::string description_of(const TransitionInfo& t) {
  return "The ZvTransition transition " + t.name + " (id " + std::to_string(t.id) + "), on planar YUV 4:2:0 frames.";
}

}  // namespace zv_mlt
