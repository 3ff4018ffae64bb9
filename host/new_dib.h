// The host's device-independent bitmap: bottom-up rows padded to 4 bytes.
#pragma once

#include "host/bitmap_header.h"
#include "host/host_api.h"

// Memory modes: where the pixel memory lives and how it is reached.
enum NMEMOD {
  NMEMOD_GLOBAL = 0,   // a global memory handle, locked before each access
  NMEMOD_POINTER = 1,  // a plain pointer (the default)
  NMEMOD_SECTION = 2,  // a bitmap that can be selected into a memory device context
};

class ZV_SUPPT_API CNewDib {
 public:
  explicit CNewDib(int memory_mode = NMEMOD_POINTER);
  virtual ~CNewDib();
  CNewDib(const CNewDib&) = delete;
  CNewDib& operator=(const CNewDib&) = delete;

  // Allocates a zeroed bottom-up DIB, replacing what was there.
  bool Create(int width, int height, int bits_per_pixel, bool top_down_unused);
  // Bytes per row: rows padded to a multiple of 4 bytes.
  int GetPitch() const;
  // Pixel memory for one access: locks a global handle, returns the pointer otherwise.
  void* LockBits();
  void UnlockBits();
  // Frees the pixel memory and resets the DIB to empty.
  void clear();

  // Read directly by the library.
  BITMAPINFOHEADER* m_pInfo;  // null while empty
  void* m_hBits;              // global handle (mode 0) or pixel pointer
  int m_nMemMode;
  void* m_hBitmap;            // what is selected into a device context (mode 2)

 private:
  int lock_count_;
};

// The host's stand-in for locking a global memory handle.
ZV_SUPPT_API void* zv_global_lock(void* handle);
ZV_SUPPT_API void zv_global_unlock(void* handle);
