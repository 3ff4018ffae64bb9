#include "host/transition_registry.h"

#include <cctype>
#include <mutex>
#include <string>
#include <vector>

namespace {

struct RegisteredOp {
  TransitionOp op;
  bool has_name;
  std::string name;
};

std::mutex g_mutex;

bool same_ignoring_case(const std::string& name, const char* text) {
  size_t i = 0;
  for (; i < name.size() && text[i]; ++i) {
    if (std::tolower(static_cast<unsigned char>(name[i])) != std::tolower(static_cast<unsigned char>(text[i]))) {
      return false;
    }
  }
  return i == name.size() && !text[i];
}
std::vector<RegisteredOp>& ops() {
  static std::vector<RegisteredOp> registry;
  return registry;
}

}  // namespace

int ZV_STDCALL transition_add_op(TransitionOp op, const char* name) {
  std::lock_guard<std::mutex> lock(g_mutex);
  ops().push_back({op, name != nullptr, name ? name : ""});
  return static_cast<int>(ops().size());
}

int ZV_STDCALL transition_get_op_count() {
  std::lock_guard<std::mutex> lock(g_mutex);
  return static_cast<int>(ops().size());
}

int ZV_STDCALL transition_get_op_id(const char* name) {
  if (!name) return 0;
  std::lock_guard<std::mutex> lock(g_mutex);
  for (size_t i = 0; i < ops().size(); ++i) {
    if (ops()[i].has_name && ops()[i].name == name) return static_cast<int>(i + 1);
  }
  return 0;
}

int transition_find_op_id(const char* name) {
  if (const int id = transition_get_op_id(name)) return id;
  if (!name) return 0;
  std::lock_guard<std::mutex> lock(g_mutex);
  for (size_t i = 0; i < ops().size(); ++i) {
    if (ops()[i].has_name && same_ignoring_case(ops()[i].name, name)) return static_cast<int>(i + 1);
  }
  return 0;
}

TransitionOp transition_get_op(int id) {
  std::lock_guard<std::mutex> lock(g_mutex);
  if (id < 1 || id > static_cast<int>(ops().size())) return nullptr;
  return ops()[id - 1].op;
}

const char* transition_get_op_name(int id) {
  std::lock_guard<std::mutex> lock(g_mutex);
  if (id < 1 || id > static_cast<int>(ops().size()) || !ops()[id - 1].has_name) return nullptr;
  return ops()[id - 1].name.c_str();
}

void transition_clear_ops() {
  std::lock_guard<std::mutex> lock(g_mutex);
  ops().clear();
}
