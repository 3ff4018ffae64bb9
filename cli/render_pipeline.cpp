// The render loop as a pipeline: A and B are read on threads of their own,
// the transition runs for several frames at once on `threads` workers, and
// the calling thread writes the frames in order. Frames come from fixed pools
// and go back to them once written, so nothing is allocated per frame and at
// most a few frames are in flight.
#include <algorithm>
#include <condition_variable>
#include <cstring>
#include <deque>
#include <exception>
#include <map>
#include <mutex>
#include <optional>
#include <sys/mman.h>
#include <thread>

#include "blends/random.h"
#include "cli/render_job.h"
#include "frame/zv_transition.h"
#include "gl/gl_cache.h"

namespace zvcli {
namespace {

// The generator state a transition frame starts from. Seeding every frame
// from its own index makes what the randomised transitions draw a function of
// the frame alone, whichever worker draws it and whatever ran before on that
// thread; frame 0 starts where a fresh thread does.
uint32_t random_state_for(int transition_index) {
  return 1u + static_cast<uint32_t>(transition_index) * 2654435761u;
}

// A frame in memory mapped for it alone, zeroed by the system, in huge pages
// where the system allows: a handful of page faults for a 1080p frame rather
// than hundreds, which matters when a render lasts a fraction of a second.
class FreshFrame {
 public:
  FreshFrame(int width, int height) {
    const size_t luma = static_cast<size_t>(width) * height;
    bytes_ = (luma * 3 / 2 + kHugePage - 1) / kHugePage * kHugePage;
    memory_ = mmap(nullptr, bytes_, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (memory_ == MAP_FAILED) throw std::bad_alloc();
    madvise(memory_, bytes_, MADV_HUGEPAGE);  // only advice
    uint8_t* planes = static_cast<uint8_t*>(memory_);
    image_.emplace(width, height, planes, planes + luma, planes + luma * 5 / 4);
  }
  ~FreshFrame() {
    image_.reset();
    munmap(memory_, bytes_);
  }
  FreshFrame(const FreshFrame&) = delete;
  FreshFrame& operator=(const FreshFrame&) = delete;
  Image& image() { return *image_; }

 private:
  static constexpr size_t kHugePage = 2 << 20;
  void* memory_ = nullptr;
  size_t bytes_ = 0;
  std::optional<Image> image_;
};

class Pipeline {
 public:
  Pipeline(const RenderPlan& plan, FrameSource& a, FrameSource& b, const std::vector<FrameSink*>& sinks,
           const std::function<void(int)>& progress)
      : plan_(plan), a_(a), b_(b), sinks_(sinks), progress_(progress),
        n_(plan.transition_frames()), total_(plan.total_frames()),
        workers_(std::max(1, std::min(plan.threads, total_))) {
    // Enough frames that readers run ahead of the workers, few enough that a
    // 1080p render stays small. The readers make theirs only when the workers
    // hold every one they have: a fresh frame costs its zeroing, which for a
    // quick transition is a good part of the whole render.
    const int spare = std::min(workers_, 8) + 1;
    input_limit_ = spare;
    fill_pool(pool_out_, spare - 1);
  }

  void run() {
    std::vector<std::thread> threads;
    threads.emplace_back([this] { guarded([this] { read(a_, pool_a_, ready_a_, 0, plan_.lead_frames + n_, plan_.offset); }); });
    threads.emplace_back([this] { guarded([this] { read(b_, pool_b_, ready_b_, plan_.lead_frames, total_, 0); }); });
    for (int w = 0; w < workers_; ++w) threads.emplace_back([this] { guarded([this] { work(); }); });
    guarded([this] { write(); });
    {
      std::lock_guard<std::mutex> lock(mutex_);
      stop_ = true;
    }
    changed_.notify_all();
    for (std::thread& t : threads) t.join();
    if (error_) std::rethrow_exception(error_);
  }

 private:
  struct Done {
    const Image* shown = nullptr;
    Image *a = nullptr, *b = nullptr, *out = nullptr;
  };

  void fill_pool(std::vector<Image*>& pool, int count) {
    for (int k = 0; k < count; ++k) pool.push_back(new_frame());
  }

  // Called with the lock held or before the threads start.
  Image* new_frame() {
    frames_.push_back(std::make_unique<FreshFrame>(plan_.size.width, plan_.size.height));
    return &frames_.back()->image();
  }

  // Runs one thread's part; the first failure stops every thread.
  template <typename F>
  void guarded(F&& part) {
    try {
      part();
    } catch (...) {
      std::lock_guard<std::mutex> lock(mutex_);
      if (!error_) error_ = std::current_exception();
      stop_ = true;
      changed_.notify_all();
    }
  }

  // Frames first..last-1 of one clip, in order; `start` is where in the clip
  // the transition begins.
  void read(FrameSource& source, std::vector<Image*>& pool, std::deque<Image*>& ready, int first, int last,
            double start) {
    int made = 0;
    for (int j = first; j < last; ++j) {
      Image* frame;
      {
        std::unique_lock<std::mutex> lock(mutex_);
        changed_.wait(lock, [&] { return stop_ || !pool.empty() || made < input_limit_; });
        if (stop_) return;
        if (pool.empty()) {
          frame = new_frame();
          ++made;
        } else {
          frame = pool.back();
          pool.pop_back();
        }
      }
      source.frame_at(start + (j - plan_.lead_frames) / plan_.fps, *frame);
      {
        std::lock_guard<std::mutex> lock(mutex_);
        ready.push_back(frame);
      }
      changed_.notify_all();
    }
  }

  bool needs_a(int j) const { return j < plan_.lead_frames + n_; }
  bool needs_b(int j) const { return j >= plan_.lead_frames; }

  // Frames are taken strictly in order, each with its output frame, so the
  // oldest frame not yet written never waits for a frame held by a later one.
  void work() {
    struct ReleaseOpenGl {
      ~ReleaseOpenGl() { ZvFreeOpenGLObj(); }  // the renderer this thread made, if any
    } release_open_gl;
    for (;;) {
      int j;
      Done done;
      {
        std::unique_lock<std::mutex> lock(mutex_);
        changed_.wait(lock, [&] {
          if (stop_ || next_job_ >= total_) return true;
          const bool transition = needs_a(next_job_) && needs_b(next_job_);
          return (!needs_a(next_job_) || !ready_a_.empty()) && (!needs_b(next_job_) || !ready_b_.empty()) &&
                 (!transition || !pool_out_.empty());
        });
        if (stop_ || next_job_ >= total_) return;
        j = next_job_++;
        if (needs_a(j)) done.a = ready_a_.front(), ready_a_.pop_front();
        if (needs_b(j)) done.b = ready_b_.front(), ready_b_.pop_front();
        if (done.a && done.b) done.out = pool_out_.back(), pool_out_.pop_back();
      }
      if (done.out) {
        draw(j - plan_.lead_frames, *done.out, *done.a, *done.b);
        done.shown = done.out;
      } else {
        done.shown = done.a ? done.a : done.b;
      }
      {
        std::lock_guard<std::mutex> lock(mutex_);
        finished_[j] = done;
      }
      changed_.notify_all();
    }
  }

  void draw(int i, Image& out, Image& frame_a, Image& frame_b) const {
    // A fresh block per call, as a host fills it; the last frame sits exactly
    // at the end so that it shows B alone.
    TransitionParams params;
    std::memset(&params, 0, sizeof params);
    params.style = plan_.style;
    params.param1 = plan_.param1;
    params.param2 = plan_.param2;
    params.enabled = 1;
    params.duration = plan_.duration;
    params.position = i == n_ - 1 ? plan_.duration : plan_.duration * i / (n_ - 1);
    zv::set_random_state(random_state_for(i));
    int result = plan_.op(&out, &frame_a, &frame_b, &params);
    // Never a null argument here, so 1 is Overlap Alpha Blend's ordinary
    // result; a bad style (3) or an undrawn transition (4) draws nothing.
    if (result >= kTransitionBadStyle) throw RunError("the transition returned " + std::to_string(result));
  }

  void write() {
    for (int j = 0; j < total_; ++j) {
      Done done;
      {
        std::unique_lock<std::mutex> lock(mutex_);
        changed_.wait(lock, [&] { return stop_ || finished_.count(j); });
        if (stop_) return;
        done = finished_[j];
        finished_.erase(j);
      }
      if (interrupt_requested()) throw Interrupted();
      const int i = j - plan_.lead_frames;
      for (FrameSink* sink : sinks_) sink->write(*done.shown, i >= 0 && i < n_ ? i : -1);
      {
        std::lock_guard<std::mutex> lock(mutex_);
        if (done.a) pool_a_.push_back(done.a);
        if (done.b) pool_b_.push_back(done.b);
        if (done.out) pool_out_.push_back(done.out);
      }
      changed_.notify_all();
      if (progress_) progress_(j + 1);
    }
  }

  const RenderPlan& plan_;
  FrameSource &a_, &b_;
  const std::vector<FrameSink*>& sinks_;
  const std::function<void(int)>& progress_;
  const int n_, total_, workers_;

  std::vector<std::unique_ptr<FreshFrame>> frames_;
  std::mutex mutex_;
  std::condition_variable changed_;
  std::vector<Image*> pool_a_, pool_b_, pool_out_;
  int input_limit_ = 0;  // frames each reader may make
  std::deque<Image*> ready_a_, ready_b_;
  std::map<int, Done> finished_;
  int next_job_ = 0;
  bool stop_ = false;
  std::exception_ptr error_;
};

}  // namespace

void render(const RenderPlan& plan, FrameSource& a, FrameSource& b, const std::vector<FrameSink*>& sinks,
            const std::function<void(int done)>& progress) {
  Pipeline(plan, a, b, sinks, progress).run();
}

}  // namespace zvcli
