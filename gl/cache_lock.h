// The lock beside each of the OpenGL caches: a critical section on Windows, a
// recursive mutex elsewhere. Both are re-entrant for the thread that holds
// them, so a transition that calls another on the same thread does not deadlock.
#pragma once

#if defined(_WIN32)
#include <windows.h>

namespace zv {

class CacheLock {
 public:
  CacheLock() { InitializeCriticalSection(&section_); }
  ~CacheLock() { DeleteCriticalSection(&section_); }
  CacheLock(const CacheLock&) = delete;
  CacheLock& operator=(const CacheLock&) = delete;

  void lock() { EnterCriticalSection(&section_); }
  void unlock() { LeaveCriticalSection(&section_); }

 private:
  CRITICAL_SECTION section_;
};

}  // namespace zv
#else
#include <mutex>

namespace zv {
using CacheLock = std::recursive_mutex;
}  // namespace zv
#endif
