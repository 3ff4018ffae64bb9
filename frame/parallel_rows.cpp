#include "frame/parallel_rows.h"

#include <algorithm>

#if defined(_WIN32)

namespace zv {

// A DLL cannot join threads of its own while it unloads (the loader's lock is
// held), so on Windows the rows run on the calling thread.
int parallel_row_parts() { return 1; }

void parallel_rows(int count, int, const std::function<void(int, int, int)>& rows) {
  if (count > 0) rows(0, 0, count);
}

}  // namespace zv

#else

#include <condition_variable>
#include <mutex>
#include <thread>
#include <vector>

namespace zv {
namespace {

constexpr int kMaxParts = 8;

// Helper threads that sleep until a picture's parts are handed out, each
// taking the part of its own index; stopped and joined at unload.
class RowHelpers {
 public:
  RowHelpers() : parts_(std::clamp(static_cast<int>(std::thread::hardware_concurrency()), 1, kMaxParts)) {}
  ~RowHelpers() {
    {
      std::lock_guard<std::mutex> hold(mutex_);
      stopping_ = true;
    }
    wake_.notify_all();
    for (std::thread& helper : helpers_) helper.join();
  }

  int parts() const { return parts_; }

  void run(int count, int min_rows, const std::function<void(int, int, int)>& rows) {
    const int parts = std::clamp(count / std::max(min_rows, 1), 1, parts_);
    std::unique_lock<std::mutex> busy(run_mutex_, std::try_to_lock);
    if (parts == 1 || !busy.owns_lock() || in_rows()) {
      if (count > 0) rows(0, 0, count);
      return;
    }
    {
      std::lock_guard<std::mutex> hold(mutex_);
      while (static_cast<int>(helpers_.size()) < parts - 1) {
        const int part = static_cast<int>(helpers_.size()) + 1;
        helpers_.emplace_back([this, part] { serve(part); });
      }
      job_ = {&rows, count, parts};
      pending_ = parts - 1;
      ++generation_;
    }
    wake_.notify_all();
    work(0);
    std::unique_lock<std::mutex> hold(mutex_);
    done_.wait(hold, [this] { return pending_ == 0; });
    job_ = {};
  }

 private:
  struct Job {
    const std::function<void(int, int, int)>* rows = nullptr;
    int count = 0;
    int parts = 0;
  };

  static bool& in_rows() {
    thread_local bool inside = false;
    return inside;
  }

  void work(int part) {
    const Job job = job_;
    const int begin = static_cast<int>(static_cast<long long>(job.count) * part / job.parts);
    const int end = static_cast<int>(static_cast<long long>(job.count) * (part + 1) / job.parts);
    in_rows() = true;
    if (begin < end) (*job.rows)(part, begin, end);
    in_rows() = false;
  }

  void serve(int part) {
    unsigned seen = 0;
    std::unique_lock<std::mutex> hold(mutex_);
    for (;;) {
      wake_.wait(hold, [&] { return stopping_ || generation_ != seen; });
      if (stopping_) return;
      seen = generation_;
      if (part >= job_.parts) continue;
      hold.unlock();
      work(part);
      hold.lock();
      if (--pending_ == 0) done_.notify_one();
    }
  }

  const int parts_;
  std::mutex run_mutex_;  // one picture at a time
  std::mutex mutex_;
  std::condition_variable wake_, done_;
  std::vector<std::thread> helpers_;
  Job job_;
  unsigned generation_ = 0;
  int pending_ = 0;
  bool stopping_ = false;
};

RowHelpers& helpers() {
  static RowHelpers instance;
  return instance;
}

}  // namespace

int parallel_row_parts() { return helpers().parts(); }

void parallel_rows(int count, int min_rows, const std::function<void(int, int, int)>& rows) {
  helpers().run(count, min_rows, rows);
}

}  // namespace zv

#endif
