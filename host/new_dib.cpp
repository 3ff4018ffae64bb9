#include "host/new_dib.h"

#include <cstdlib>
#include <cstring>

namespace {
// A global handle here is a small block holding the pointer to the memory.
struct GlobalBlock {
  void* memory;
};
}  // namespace

void* zv_global_lock(void* handle) { return handle ? static_cast<GlobalBlock*>(handle)->memory : nullptr; }
void zv_global_unlock(void*) {}

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
  void* memory = std::calloc(bytes ? bytes : 1, 1);
  if (m_nMemMode == NMEMOD_GLOBAL) {
    m_hBits = new GlobalBlock{memory};
  } else {
    m_hBits = memory;
  }
  if (m_nMemMode == NMEMOD_SECTION) m_hBitmap = this;
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
  if (m_nMemMode == NMEMOD_GLOBAL && m_hBits) {
    auto* block = static_cast<GlobalBlock*>(m_hBits);
    std::free(block->memory);
    delete block;
  } else {
    std::free(m_hBits);
  }
  m_hBits = nullptr;
  m_hBitmap = nullptr;
  delete m_pInfo;
  m_pInfo = nullptr;
  lock_count_ = 0;
}
