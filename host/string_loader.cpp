#include "host/string_loader.h"

#if defined(_WIN32)
#include <windows.h>

#include <map>
#include <mutex>
#include <string>
#include <utility>

const char* ZV_STDCALL ZvLoadString(unsigned int id, ZvModule module) {
  static std::mutex mutex;
  static std::map<std::pair<ZvModule, unsigned int>, std::string> cache;
  std::lock_guard<std::mutex> lock(mutex);
  auto key = std::make_pair(module, id);
  auto found = cache.find(key);
  if (found != cache.end()) return found->second.c_str();
  // Resource strings are stored as UTF-16; with no buffer the loader hands
  // out the resource's own text, which is converted once and kept.
  const wchar_t* text = nullptr;
  const int length = LoadStringW(static_cast<HINSTANCE>(module), id, reinterpret_cast<LPWSTR>(&text), 0);
  if (length <= 0 || !text) return nullptr;
  const int bytes = WideCharToMultiByte(CP_ACP, 0, text, length, nullptr, 0, nullptr, nullptr);
  std::string narrow(static_cast<size_t>(bytes), '\0');
  WideCharToMultiByte(CP_ACP, 0, text, length, &narrow[0], bytes, nullptr, nullptr);
  return cache.emplace(key, std::move(narrow)).first->second.c_str();
}

#else
#include <dlfcn.h>

#include "host/string_resource.h"

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
