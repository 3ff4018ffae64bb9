#include "host/new_dib.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace {

#if defined(_WIN32)
// Pixel memory by memory mode: a movable global block (mode 0), a DIB section
// whose bitmap handle a memory device context can select (mode 2), or plain
// heap memory. Every kind starts zeroed.
void* allocate_pixels(int mode, size_t bytes, const BITMAPINFOHEADER& header, void** bitmap) {
  if (mode == NMEMOD_GLOBAL) return GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, bytes ? bytes : 1);
  if (mode == NMEMOD_SECTION) {
    BITMAPINFO info = {};
    info.bmiHeader = header;
    void* bits = nullptr;
    *bitmap = CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    return bits;
  }
  return std::calloc(bytes ? bytes : 1, 1);
}

void free_pixels(int mode, void* pixels, void* bitmap) {
  if (mode == NMEMOD_GLOBAL) {
    if (pixels) GlobalFree(pixels);
  } else if (mode == NMEMOD_SECTION) {
    // The section's memory goes with its bitmap.
    if (bitmap) DeleteObject(static_cast<HGDIOBJ>(bitmap));
  } else {
    std::free(pixels);
  }
}
#else
// A global handle here is a small block holding the pointer to the memory.
struct GlobalBlock {
  void* memory;
};

void* allocate_pixels(int mode, size_t bytes, const BITMAPINFOHEADER&, void** bitmap) {
  void* memory = std::calloc(bytes ? bytes : 1, 1);
  if (mode == NMEMOD_GLOBAL) return new GlobalBlock{memory};
  // Stands for the bitmap handle: an offscreen surface is drawn on and copied here.
  if (mode == NMEMOD_SECTION) *bitmap = memory;
  return memory;
}

void free_pixels(int mode, void* pixels, void*) {
  if (mode == NMEMOD_GLOBAL && pixels) {
    auto* block = static_cast<GlobalBlock*>(pixels);
    std::free(block->memory);
    delete block;
  } else {
    std::free(pixels);
  }
}
#endif

}  // namespace

#if defined(_WIN32)
void* zv_global_lock(void* handle) { return handle ? GlobalLock(static_cast<HGLOBAL>(handle)) : nullptr; }
void zv_global_unlock(void* handle) {
  if (handle) GlobalUnlock(static_cast<HGLOBAL>(handle));
}
#else
void* zv_global_lock(void* handle) { return handle ? static_cast<GlobalBlock*>(handle)->memory : nullptr; }
void zv_global_unlock(void*) {}
#endif

CNewDib::CNewDib(int memory_mode)
    : m_pInfo(nullptr), m_hBits(nullptr), m_nMemMode(memory_mode), m_hBitmap(nullptr), lock_count_(0) {}

CNewDib::~CNewDib() { clear(); }

bool CNewDib::Create(int width, int height, int bits_per_pixel, bool) {
  clear();
  if (width < 0) width = 0;
  if (height < 0) height = 0;
  m_pInfo = new BITMAPINFOHEADER{};
  m_pInfo->biSize = sizeof(BITMAPINFOHEADER);
  m_pInfo->biWidth = width;
  m_pInfo->biHeight = height;
  m_pInfo->biPlanes = 1;
  m_pInfo->biBitCount = static_cast<uint16_t>(bits_per_pixel);
  const size_t bytes = static_cast<size_t>(GetPitch()) * static_cast<size_t>(height);
  m_pInfo->biSizeImage = static_cast<uint32_t>(bytes);
  m_hBits = allocate_pixels(m_nMemMode, bytes, *m_pInfo, &m_hBitmap);
  return true;
}

int CNewDib::GetPitch() const {
  if (!m_pInfo) return 0;
  return ((m_pInfo->biWidth * m_pInfo->biBitCount + 31) >> 5) * 4;
}

void* CNewDib::LockBits() {
  ++lock_count_;
  return m_nMemMode == NMEMOD_GLOBAL ? zv_global_lock(m_hBits) : m_hBits;
}

void CNewDib::UnlockBits() {
  if (lock_count_ > 0) --lock_count_;
  if (m_nMemMode == NMEMOD_GLOBAL) zv_global_unlock(m_hBits);
}

void CNewDib::clear() {
  free_pixels(m_nMemMode, m_hBits, m_hBitmap);
  m_hBits = nullptr;
  m_hBitmap = nullptr;
  delete m_pInfo;
  m_pInfo = nullptr;
  lock_count_ = 0;
}
