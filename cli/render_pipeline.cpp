// The render loop as a pipeline: A and B are read on threads of their own,
// the transition runs for several frames at once on `threads` workers, and
// the calling thread writes the frames in order. Frames come from a fixed set
// made at most once each: inputs go back to their reader as soon as they are
// drawn, outputs once written, so nothing is allocated per frame and at most a
// few frames are in flight.
#include <algorithm>
#include <condition_variable>
#include <cstring>
#include <deque>
#include <exception>
#include <map>
#include <mutex>
#include <memory>
#include <stdexcept>
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

// Every frame of the run, cut one after another from one mapping made at the
// start. The pages are reserved, not touched: a frame costs its zeroing by the
// system only when it is first used, and the frames share huge pages rather
// than each rounding up to whole ones of its own. For a quick transition that
// zeroing is a good part of the whole render.
class FrameArena {
 public:
  FrameArena(Size size, int capacity) : size_(size), capacity_(capacity) {
    const size_t luma = static_cast<size_t>(size.width) * size.height;
    frame_bytes_ = (luma * 3 / 2 + kAlign - 1) / kAlign * kAlign;
    bytes_ = (frame_bytes_ * capacity + kHugePage - 1) / kHugePage * kHugePage;
    void* memory = mmap(nullptr, bytes_, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    if (memory == MAP_FAILED) throw std::bad_alloc();
    madvise(memory, bytes_, MADV_HUGEPAGE);  // only advice
    base_ = static_cast<uint8_t*>(memory);
  }
  ~FrameArena() {
    frames_.clear();
    munmap(base_, bytes_);
  }
  FrameArena(const FrameArena&) = delete;
  FrameArena& operator=(const FrameArena&) = delete;

  // The next unused frame; never more than `capacity` of them.
  Image* make() {
    if (static_cast<int>(frames_.size()) >= capacity_) throw std::logic_error("frame arena exhausted");
    uint8_t* y = base_ + frames_.size() * frame_bytes_;
    const size_t luma = static_cast<size_t>(size_.width) * size_.height;
    frames_.push_back(std::make_unique<Image>(size_.width, size_.height, y, y + luma, y + luma * 5 / 4));
    return frames_.back().get();
  }

 private:
  static constexpr size_t kHugePage = 2 << 20, kAlign = 64;
  Size size_;
  int capacity_;
  size_t frame_bytes_ = 0, bytes_ = 0;
  uint8_t* base_ = nullptr;
  std::vector<std::unique_ptr<Image>> frames_;
};

// Frames for one use (A's, B's or the outputs): the free ones, and new ones
// from the arena up to `limit`. Used with the pipeline's lock held.
struct FramePool {
  int limit = 0;
  int made = 0;
  std::vector<Image*> free;
  bool can_take() const { return !free.empty() || made < limit; }
  Image* take(FrameArena& arena) {
    if (free.empty()) {
      ++made;
      return arena.make();
    }
    Image* frame = free.back();
    free.pop_back();
    return frame;
  }
};

// Each thread sleeps on a condition of its own and is woken only when what it
// waits for may have come: a wake-up that finds nothing to do costs a context
// switch, which is dear in a virtual machine.
class Pipeline {
 public:
  Pipeline(const RenderPlan& plan, FrameSource& a, FrameSource& b, const std::vector<FrameSink*>& sinks,
           const std::function<void(int)>& progress)
      : plan_(plan), a_(a), b_(b), sinks_(sinks), progress_(progress),
        n_(plan.transition_frames()), total_(plan.total_frames()),
        workers_(std::max(1, std::min(plan.threads, total_))),
        frames_(plan.size, 3 * (workers_ + 1)) {
    clip_a_.frames.limit = clip_b_.frames.limit = outputs_.limit = workers_ + 1;
  }

  void run() {
    std::vector<std::thread> threads;
    threads.emplace_back([this] { guarded([this] { read(a_, clip_a_, 0, plan_.lead_frames + n_, plan_.offset); }); });
    threads.emplace_back([this] { guarded([this] { read(b_, clip_b_, plan_.lead_frames, total_, 0); }); });
    for (int w = 0; w < workers_; ++w) threads.emplace_back([this] { guarded([this] { work(); }); });
    guarded([this] { write(); });
    stop();
    for (std::thread& t : threads) t.join();
    if (error_) std::rethrow_exception(error_);
  }

 private:
  struct Done {
    const Image* shown = nullptr;
    Image *a = nullptr, *b = nullptr, *out = nullptr;
  };
  // One clip's frames, those read in order, and the reader's wake-up.
  struct Clip {
    FramePool frames;
    std::deque<Image*> ready;
    std::condition_variable space;
  };

  void stop() {
    {
      std::lock_guard<std::mutex> lock(mutex_);
      stop_ = true;
    }
    clip_a_.space.notify_all();
    clip_b_.space.notify_all();
    job_ready_.notify_all();
    frame_done_.notify_all();
  }

  // Runs one thread's part; the first failure stops every thread.
  template <typename F>
  void guarded(F&& part) {
    try {
      part();
    } catch (...) {
      {
        std::lock_guard<std::mutex> lock(mutex_);
        if (!error_) error_ = std::current_exception();
      }
      stop();
    }
  }

  // Frames first..last-1 of one clip, in order; `start` is where in the clip
  // the transition begins.
  void read(FrameSource& source, Clip& clip, int first, int last, double start) {
    for (int j = first; j < last; ++j) {
      Image* frame;
      {
        std::unique_lock<std::mutex> lock(mutex_);
        clip.space.wait(lock, [&] { return stop_ || clip.frames.can_take(); });
        if (stop_) return;
        frame = clip.frames.take(frames_);
      }
      source.frame_at(start + (j - plan_.lead_frames) / plan_.fps, *frame);
      {
        std::lock_guard<std::mutex> lock(mutex_);
        clip.ready.push_back(frame);
      }
      job_ready_.notify_one();
    }
  }

  bool needs_a(int j) const { return j < plan_.lead_frames + n_; }
  bool needs_b(int j) const { return j >= plan_.lead_frames; }

  // Whether frame next_job_ has all it needs. Called with the lock held.
  bool next_job_ready() {
    const int j = next_job_;
    if (j >= total_) return false;
    if (needs_a(j) && clip_a_.ready.empty()) return false;
    if (needs_b(j) && clip_b_.ready.empty()) return false;
    return !(needs_a(j) && needs_b(j)) || outputs_.can_take();
  }

  // A frame back to its clip's free frames, waking that clip's reader.
  // Called with the lock held.
  void give_back(Clip& clip, Image* frame) {
    clip.frames.free.push_back(frame);
    clip.space.notify_one();
  }

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
        job_ready_.wait(lock, [&] { return stop_ || next_job_ >= total_ || next_job_ready(); });
        if (stop_ || next_job_ >= total_) return;
        j = next_job_++;
        if (needs_a(j)) done.a = clip_a_.ready.front(), clip_a_.ready.pop_front();
        if (needs_b(j)) done.b = clip_b_.ready.front(), clip_b_.ready.pop_front();
        if (done.a && done.b) done.out = outputs_.take(frames_);
        // The next frame may be ready too, for another worker.
        if (next_job_ready()) job_ready_.notify_one();
      }
      if (done.out) {
        draw(j - plan_.lead_frames, *done.out, *done.a, *done.b);
        done.shown = done.out;
      } else {
        done.shown = done.a ? done.a : done.b;
      }
      {
        std::lock_guard<std::mutex> lock(mutex_);
        // A drawn frame needs its inputs no longer: the readers may refill them.
        if (done.out) {
          give_back(clip_a_, done.a);
          give_back(clip_b_, done.b);
          done.a = done.b = nullptr;
        }
        finished_[j] = done;
      }
      frame_done_.notify_one();
    }
  }

  void draw(int i, Image& out, Image& frame_a, Image& frame_b) const {
    // The fraction of the transition's time, the last frame exactly at the
    // end so that it shows B alone; then eased.
    const double t = i == n_ - 1 ? 1.0 : static_cast<double>(i) / (n_ - 1);
    if (plan_.gl) {
      const GlChoice& gl = *plan_.gl;
      if (zvGlTranApply(gl.index, &out, &frame_a, &frame_b, zv::eased(plan_.easing, t), gl.values.data(),
                        static_cast<int>(gl.values.size())) != kZvGlDone) {
        throw RunError(zvGlTranError());
      }
      return;
    }
    // A fresh block per call, as a host fills it; the position is the eased
    // fraction of the duration (linear: the time itself, as it always was).
    TransitionParams params;
    std::memset(&params, 0, sizeof params);
    params.style = plan_.style;
    params.param1 = plan_.param1;
    params.param2 = plan_.param2;
    params.enabled = 1;
    params.duration = plan_.duration;
    params.position = i == n_ - 1            ? plan_.duration
                      : plan_.easing.linear() ? plan_.duration * i / (n_ - 1)
                                              : zv::eased(plan_.easing, t) * plan_.duration;
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
        frame_done_.wait(lock, [&] { return stop_ || finished_.count(j); });
        if (stop_) return;
        done = finished_[j];
        finished_.erase(j);
      }
      if (interrupt_requested()) throw Interrupted();
      const int i = j - plan_.lead_frames;
      for (FrameSink* sink : sinks_) sink->write(*done.shown, i >= 0 && i < n_ ? i : -1);
      {
        std::lock_guard<std::mutex> lock(mutex_);
        if (done.a) give_back(clip_a_, done.a);
        if (done.b) give_back(clip_b_, done.b);
        if (done.out) outputs_.free.push_back(done.out);
        if (next_job_ready()) job_ready_.notify_one();
      }
      if (progress_) progress_(j + 1);
    }
  }

  const RenderPlan& plan_;
  FrameSource &a_, &b_;
  const std::vector<FrameSink*>& sinks_;
  const std::function<void(int)>& progress_;
  const int n_, total_, workers_;

  std::mutex mutex_;
  // A worker holds an A, a B and an output frame while it draws; each reader
  // may be one frame ahead of the workers, and the writer holds one output.
  FrameArena frames_;
  Clip clip_a_, clip_b_;
  FramePool outputs_;
  std::condition_variable job_ready_, frame_done_;
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
