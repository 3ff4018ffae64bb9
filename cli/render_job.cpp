#include "cli/render_job.h"

#include <csignal>
#include <cstring>
#include <strings.h>

#include "frame/registration.h"
#include "frame/zv_transition.h"
#include "host/transition_registry.h"

namespace zvcli {
namespace {

volatile std::sig_atomic_t g_interrupted = 0;

extern "C" void on_interrupt(int signal) { g_interrupted = signal; }

}  // namespace

void catch_interrupts() {
  for (int signal : {SIGINT, SIGTERM, SIGHUP, SIGQUIT}) std::signal(signal, on_interrupt);
}

bool interrupt_requested() { return g_interrupted != 0; }

int interrupt_signal() { return g_interrupted; }

int RenderPlan::transition_frames() const { return std::max(2, zv::round_to_int(duration * fps)); }

std::vector<std::string> style_names(int id) {
  std::vector<std::string> names;
  const int count = zvTranGetStyleCount(id);
  const char** list = zvTranGetStyleName(id);
  for (int i = 0; list && i < count; ++i) names.push_back(list[i] ? list[i] : "");
  return names;
}

int resolve_style(int id, const std::string& text) {
  const std::vector<std::string> names = style_names(id);
  const std::string name = transition_get_op_name(id) ? transition_get_op_name(id) : std::to_string(id);
  char* end = nullptr;
  long index = std::strtol(text.c_str(), &end, 10);
  if (!text.empty() && !*end) {
    long last = names.empty() ? 0 : static_cast<long>(names.size()) - 1;
    if (index < 0 || index > last) {
      throw UsageError("style " + text + " is out of range for " + name + " (styles 0-" + std::to_string(last) + ")");
    }
    return static_cast<int>(index);
  }
  for (size_t i = 0; i < names.size(); ++i) {
    if (names[i] == text) return static_cast<int>(i);
  }
  for (size_t i = 0; i < names.size(); ++i) {
    if (strcasecmp(names[i].c_str(), text.c_str()) == 0) return static_cast<int>(i);
  }
  throw UsageError("unknown style '" + text + "' for " + name + " (see: zvtran catalogue)");
}

}  // namespace zvcli
