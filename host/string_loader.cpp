#include "host/string_loader.h"

#if defined(_WIN32)
#include <windows.h>

#include <map>
#include <mutex>
#include <string>

const char* ZV_STDCALL ZvLoadString(unsigned int id, ZvModule module) {
  static std::mutex mutex;
  static std::map<std::pair<ZvModule, unsigned int>, std::string> cache;
  std::lock_guard<std::mutex> lock(mutex);
  auto key = std::make_pair(module, id);
  auto found = cache.find(key);
  if (found != cache.end()) return found->second.c_str();
  const char* text = nullptr;
  int length = LoadStringA(static_cast<HINSTANCE>(module), id, reinterpret_cast<LPSTR>(&text), 0);
  if (length <= 0) return nullptr;
  return cache.emplace(key, std::string(text, length)).first->second.c_str();
}

#else
#include <dlfcn.h>

#include "resources/string_resource.h"

const char* ZV_STDCALL ZvLoadString(unsigned int id, ZvModule module) {
  if (!module) return nullptr;
  auto* table = static_cast<const ZvStringResource*>(dlsym(module, ZV_STRING_TABLE_SYMBOL));
  if (!table) return nullptr;
  for (; table->text; ++table) {
    if (table->id == id) return table->text;
  }
  return nullptr;
}
#endif
