#include "frame/kernel_path.h"

namespace zv {
namespace {
thread_local KernelPath t_path = KernelPath::kFast;
}

KernelPath kernel_path() { return t_path; }
void set_kernel_path(KernelPath path) { t_path = path; }

}  // namespace zv
