// Rows of one picture split over the CPU's cores: the calling thread takes the
// first part and a few helper threads, made on first use and kept, the others.
// Each part gets its own index, so that scratch buffers can go with it.
#pragma once

#include <functional>

namespace zv {

// How many parts `parallel_rows` splits work into at most (1 where it runs
// everything on the calling thread).
int parallel_row_parts();

// Calls rows(part, begin, end) over consecutive ranges covering 0 .. count - 1,
// at least `min_rows` a range (so that small pictures stay on one thread), and
// returns when every range is done. One picture at a time: a call made while
// another thread's is running, or from inside `rows`, runs on its own thread.
void parallel_rows(int count, int min_rows, const std::function<void(int part, int begin, int end)>& rows);

}  // namespace zv
