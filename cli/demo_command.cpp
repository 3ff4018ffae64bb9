// zvtran demo: renders every implemented transition in each of its styles,
// and every transition of the GLSL collection, between two built-in patterns
// and writes a page that shows them all: per transition a card with its id,
// name, styles and parameter labels (for the collection: author, licence and
// parameters), and per style a looping preview video and a contact sheet.
#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <mutex>
#include <system_error>
#include <thread>
#include <unistd.h>

#include "cli/atomic_output.h"
#include "cli/cli_common.h"
#include "cli/commands.h"
#include "cli/gl_collection_args.h"
#include "cli/media_output.h"
#include "cli/patterns.h"
#include "cli/render_job.h"
#include "frame/registration.h"
#include "frame/zv_transition.h"
#include "host/markup_escape.h"
#include "host/transition_registry.h"

namespace zvcli {
namespace {

namespace fs = std::filesystem;

constexpr const char* kUsage =
    "usage: zvtran demo [-o DIR] [--ids ID,ID,...] [--size WxH] [--jobs N] (ID: an id, a name or gl:NAME)";
constexpr const char* kPatternA = "bars";
constexpr const char* kPatternB = "checker";
constexpr double kFps = 25, kTransitionSeconds = 1.2, kClipSeconds = 0.4;

struct TransitionCard {
  int id;                           // 0 for the collection's
  std::string name;
  std::vector<std::string> styles;  // empty: the transition has no styles
  std::vector<std::string> labels;
  GlChoice gl;                      // the collection's transition (index -1: one of the 66)
  std::string key() const { return gl.index >= 0 ? kGlPrefix + name : std::to_string(id); }
};

struct Job {
  const TransitionCard* card;
  int style;
  std::string name;  // the preview's file name without extension, in DIR/media
  std::string media() const { return "media/" + name; }  // as the page links it
};

TransitionCard describe(int id) {
  TransitionCard card{id, transition_get_op_name(id), style_names(id), {}, {}};
  zvTarnParamExplain* explain = zvTranGetParamExplain(id);
  for (int i = 0; i < explain->count; ++i) {
    if (explain->labels && explain->labels[i]) card.labels.push_back(explain->labels[i]);
  }
  return card;
}

// A transition of the collection, with its parameters' defaults.
TransitionCard describe_gl(int index) {
  const ZvGlTransitionInfo& info = *zvGlTranInfo(index);
  TransitionCard card{0, info.name, {}, {}, gl_choice(kGlPrefix + std::string(info.name), {})};
  if (info.param_count > 0) card.labels.push_back(gl_parameter_summary(info));
  return card;
}

// The transitions --ids names (every implemented one and the whole collection
// without it), each once, in the order given.
std::vector<TransitionCard> chosen_cards(const Args& args) {
  std::vector<TransitionCard> cards;
  auto list = args.get("ids");
  if (!list) {
    for (int id = 1; id <= zv::kTransitionCount; ++id) {
      if (zv::transition_is_implemented(id)) cards.push_back(describe(id));
    }
    for (int i = 0; i < zvGlTranCount(); ++i) cards.push_back(describe_gl(i));
    return cards;
  }
  size_t start = 0;
  while (start <= list->size()) {
    size_t comma = list->find(',', start);
    std::string item = list->substr(start, comma == std::string::npos ? std::string::npos : comma - start);
    TransitionCard card{};
    if (is_gl_transition(item)) {
      card = describe_gl(gl_choice(item, {}).index);
    } else {
      const int id = resolve_transition(item);
      if (!zv::transition_is_implemented(id)) {
        throw UsageError("transition " + item + " is not implemented in this build");
      }
      card = describe(id);
    }
    const auto same = [&](const TransitionCard& c) { return c.key() == card.key(); };
    if (std::find_if(cards.begin(), cards.end(), same) == cards.end()) cards.push_back(std::move(card));
    if (comma == std::string::npos) break;
    start = comma + 1;
  }
  return cards;
}

void render_job_into(const Job& job, const fs::path& media, Size size) {
  RenderPlan plan;
  if (job.card->gl.index >= 0) {
    plan.gl = &job.card->gl;
  } else {
    plan.op = transition_get_op(job.card->id);
  }
  plan.style = job.style;
  plan.duration = kTransitionSeconds;
  plan.size = size;
  plan.fps = kFps;
  plan.lead_frames = plan.tail_frames = zv::round_to_int(kClipSeconds * kFps);
  plan.offset = kClipSeconds;
  std::unique_ptr<FrameSource> a = open_pattern(kPatternA), b = open_pattern(kPatternB);

  OutputInfo info;
  info.size = size;
  info.fps = kFps;
  info.transition_frames = plan.transition_frames();
  const ZvGlTransitionInfo* gl = zvGlTranInfo(job.card->gl.index);
  info.title = gl ? job.card->key() : std::to_string(job.card->id) + " " + job.card->name;
  if (gl) {
    info.subtitle = std::string("by ") + gl->author + " (" + gl->license + ")";
  } else {
    info.subtitle = job.card->styles.empty()
                        ? "no styles"
                        : "style " + std::to_string(job.style) + ": " + job.card->styles[job.style];
  }
  info.video_quality = 26;
  info.encoder_threads = 1;  // the jobs themselves keep every core busy
  std::unique_ptr<FrameSink> video = open_sink((media / (job.name + ".mp4")).string(), info);
  std::unique_ptr<FrameSink> sheet = open_sink((media / (job.name + ".png")).string(), info);
  render(plan, *a, *b, {video.get(), sheet.get()});
  video->finish();
  sheet->finish();
}

// One preview into the hidden media folder being built; failures name it as
// the gallery will (DIR/media/NAME), not by its hidden name.
void render_job(const Job& job, const fs::path& media, const std::string& shown_as, Size size) {
  try {
    render_job_into(job, media, size);
  } catch (const Interrupted&) {
    throw;
  } catch (const RunError& e) {
    std::string message = e.what();
    const std::string hidden = media.string();
    for (size_t at; (at = message.find(hidden)) != std::string::npos;) message.replace(at, hidden.size(), shown_as);
    throw RunError(message);
  }
}

// Runs the jobs on `threads` workers; the first failure stops the rest and is
// rethrown here.
void run_jobs(const std::vector<Job>& jobs, const fs::path& media, const std::string& shown_as, Size size,
              int threads) {
  std::atomic<size_t> next{0};
  std::atomic<int> done{0};
  std::atomic<bool> failed{false};
  std::exception_ptr failure;
  std::mutex lock;
  const bool show_progress = isatty(STDERR_FILENO);
  auto worker = [&] {
    for (size_t k; !failed && (k = next++) < jobs.size();) {
      try {
        render_job(jobs[k], media, shown_as, size);
      } catch (...) {
        std::lock_guard<std::mutex> hold(lock);
        if (!failure) failure = std::current_exception();
        failed = true;
        return;
      }
      int count = ++done;
      if (show_progress) {
        std::lock_guard<std::mutex> hold(lock);
        std::fprintf(stderr, "\r  rendered %d/%zu previews", count, jobs.size());
        if (count == static_cast<int>(jobs.size())) std::fputc('\n', stderr);
      }
    }
  };
  std::vector<std::thread> workers;
  for (int t = 0; t < threads; ++t) workers.emplace_back(worker);
  for (std::thread& t : workers) t.join();
  if (failure) std::rethrow_exception(failure);
}

constexpr const char* kPageHead = R"(<!doctype html>
<html lang="en"><head><meta charset="utf-8"><title>ZvTransition gallery</title>
<style>
body{font:15px/1.4 system-ui,sans-serif;margin:0;padding:24px;background:#16181d;color:#e8e8ec}
h1{margin:0 0 4px;font-size:24px} .lead{color:#a8acb8;margin:0 0 20px}
.card{background:#22252d;border-radius:10px;padding:16px;margin:0 0 20px}
.card h2{margin:0;font-size:19px} .card h2 span{color:#8fa4ff;margin-right:8px}
.meta{color:#a8acb8;margin:4px 0 12px;font-size:13px}
.styles{display:grid;grid-template-columns:repeat(auto-fill,minmax(300px,1fr));gap:14px}
figure{margin:0;background:#1a1c22;border-radius:8px;padding:8px}
video{width:100%;display:block;border-radius:4px;background:#000}
figcaption{margin:6px 0;font-size:13px} figure img{width:100%;display:block;border-radius:4px}
#media-status{color:#a8acb8;font-size:13px}
</style></head><body>
)";

// Records in the page whether each preview plays and each sheet loads, both for
// the reader and for automated checks of the page.
constexpr const char* kPageScript = R"(<script>
(function () {
  const videos = Array.from(document.querySelectorAll('video'));
  const images = Array.from(document.querySelectorAll('figure img'));
  const status = document.getElementById('media-status');
  function update() {
    let playing = 0, broken = 0, loaded = 0;
    for (const v of videos) {
      v.dataset.ready = Math.max(Number(v.dataset.ready || 0), v.readyState);  // dips while looping
      if (v.error) v.dataset.state = 'error';
      if (v.dataset.state === 'playing') playing++;
      if (v.dataset.state === 'error') broken++;
    }
    for (const i of images) {
      if (i.complete) i.dataset.state = i.naturalWidth > 0 ? 'loaded' : 'error';
      if (i.dataset.state === 'loaded') loaded++;
      if (i.dataset.state === 'error') broken++;
    }
    Object.assign(status.dataset, {videos: videos.length, playing: playing, images: images.length,
                                   loaded: loaded, broken: broken});
    status.textContent = playing + ' of ' + videos.length + ' previews playing, ' + loaded + ' of ' +
        images.length + ' contact sheets loaded' + (broken ? ', ' + broken + ' broken' : '') + '.';
  }
  for (const v of videos) {
    const mark = function (state) { if (v.dataset.state !== 'error') v.dataset.state = state; update(); };
    v.addEventListener('playing', function () { mark('playing'); });
    v.addEventListener('timeupdate', function () { if (v.currentTime > 0) mark('playing'); });
    v.addEventListener('error', function () { v.dataset.state = 'error'; update(); });
  }
  for (const i of images) { i.addEventListener('load', update); i.addEventListener('error', update); }
  update();
  setInterval(update, 250);
})();
</script>
)";

std::string page(const std::vector<TransitionCard>& cards, const std::vector<Job>& jobs, Size size, double seconds) {
  std::string html = kPageHead;
  char lead[256];
  std::snprintf(lead, sizeof lead, "%zu transition%s, %zu preview%s at %dx%d, rendered in %.1f s. Clip A: pattern:%s, "
                "clip B: pattern:%s.", cards.size(), cards.size() == 1 ? "" : "s", jobs.size(),
                jobs.size() == 1 ? "" : "s", size.width, size.height, seconds, kPatternA, kPatternB);
  html += "<h1>ZvTransition gallery</h1>\n<p class=\"lead\">" + zv::markup_escape(lead) +
          " <span id=\"media-status\">Checking the previews...</span></p>\n";
  bool collection_shown = false;
  for (const TransitionCard& card : cards) {
    const ZvGlTransitionInfo* gl = zvGlTranInfo(card.gl.index);
    if (gl && !collection_shown) {
      html += "<h1>The GLSL collection</h1>\n<p class=\"lead\">Transitions of the open collection gl-transitions, "
              "drawn on the same OpenGL path, each under the licence its author chose (the notice file beside the "
              "library has them in full). zvtran render takes them as --transition gl:NAME.</p>\n";
      collection_shown = true;
    }
    html += "<section class=\"card\" id=\"" + (gl ? "gl-" + card.name : "t" + std::to_string(card.id)) +
            "\">\n<h2><span>" + (gl ? std::string("gl") : std::to_string(card.id)) + "</span>" +
            zv::markup_escape(card.name) + "</h2>\n<p class=\"meta\">";
    if (gl) {
      html += "by " + zv::markup_escape(gl->author) + " &middot; licence: " + zv::markup_escape(gl->license);
    } else {
      html += card.styles.empty() ? "No styles" : std::to_string(card.styles.size()) + " styles";
    }
    std::string labels;
    for (const std::string& label : card.labels) labels += (labels.empty() ? "" : " &middot; ") + zv::markup_escape(label);
    html += " &middot; parameters: " + (labels.empty() ? std::string("none") : labels) + "</p>\n<div class=\"styles\">\n";
    for (const Job& job : jobs) {
      if (job.card != &card) continue;
      const std::string caption = gl                  ? card.key()
                                  : card.styles.empty() ? "(no styles)"
                                                        : std::to_string(job.style) + ": " + card.styles[job.style];
      html += "<figure><video src=\"" + job.media() + ".mp4\" autoplay loop muted playsinline></video>"
              "<figcaption>" + zv::markup_escape(caption) + "</figcaption><a href=\"" + job.media() + ".png\"><img src=\"" +
              job.media() + ".png\" alt=\"contact sheet of " + zv::markup_escape(card.name + ", " + caption) +
              "\" loading=\"eager\"></a></figure>\n";
    }
    html += "</div></section>\n";
  }
  return html + kPageScript + "</body></html>\n";
}

// Puts a finished gallery in place of the one in `dir`, if any: the new media
// folder is swapped in and the page replaced; on failure the old one stays.
void replace_gallery(const fs::path& dir, AtomicOutput& media, AtomicOutput& index) {
  const fs::path current = dir / "media";
  const fs::path old = dir / (".media.old-" + media.temp_path().filename().string());
  std::error_code error;
  const bool had_media = fs::exists(fs::symlink_status(current, error));
  if (had_media) {
    fs::rename(current, old, error);
    if (error) media.fail(error.message());
  }
  try {
    media.commit();
    index.commit();
  } catch (...) {
    if (had_media) {
      fs::remove_all(current, error);
      fs::rename(old, current, error);
    }
    throw;
  }
  fs::remove_all(old, error);
}

}  // namespace

int demo_command(int argc, char** argv) {
  Args args("demo", kUsage, argc, argv, {"output", "ids", "size", "jobs"});
  if (!args.positional().empty()) throw UsageError(kUsage);
  const auto started = std::chrono::steady_clock::now();
  std::string dir = args.get("output").value_or("zvtran-demo");
  while (dir.size() > 1 && dir.back() == '/') dir.pop_back();
  const Size size = args.get_size("size").value_or(Size{320, 180});
  if (size.width < 16 || size.height < 16 || size.width > 1920 || size.height > 1080 || size.width % 2 ||
      size.height % 2) {
    throw UsageError("--size must have even sides from 16x16 to 1920x1080");
  }
  const int threads = args.get_int("jobs", std::max(2u, std::thread::hardware_concurrency()));
  if (threads < 1 || threads > 64) throw UsageError("--jobs must be 1 to 64");

  load_transitions();
  const std::vector<TransitionCard> cards = chosen_cards(args);
  for (const TransitionCard& card : cards) {
    if (card.gl.index >= 0) {
      require_opengl(card.key());
    } else {
      require_drawable(card.id);
    }
  }
  std::vector<Job> jobs;
  for (const TransitionCard& card : cards) {
    const int styles = std::max<int>(1, static_cast<int>(card.styles.size()));
    for (int style = 0; style < styles; ++style) {
      const std::string stem = card.gl.index >= 0 ? "gl-" + card.name : std::to_string(card.id);
      jobs.push_back({&card, style, stem + "-" + std::to_string(style)});
    }
  }
  // The gallery is built under hidden names and put in place only when whole:
  // an interrupted or failed run leaves the previous gallery (or nothing).
  std::error_code error;
  const bool existed = fs::is_directory(dir, error);
  if (!existed && fs::exists(fs::symlink_status(dir, error))) throw UsageError(dir + ": is not a folder");
  std::unique_ptr<AtomicOutput> gallery, media, index;
  if (existed) {
    media = std::make_unique<AtomicOutput>((fs::path(dir) / "media").string(), AtomicOutput::kFolder);
  } else {
    gallery = std::make_unique<AtomicOutput>(dir, AtomicOutput::kFolder);
    fs::create_directory(gallery->temp_path() / "media", error);
    if (error) gallery->fail(error.message());
  }
  run_jobs(jobs, existed ? media->temp_path() : gallery->temp_path() / "media", (fs::path(dir) / "media").string(), size,
           threads);

  const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - started).count();
  const std::string html = page(cards, jobs, size, seconds);
  const std::vector<uint8_t> html_bytes(html.begin(), html.end());
  if (existed) {
    index = std::make_unique<AtomicOutput>((fs::path(dir) / "index.html").string(), AtomicOutput::kFile);
    index->write(html_bytes.data(), html_bytes.size());
    replace_gallery(dir, *media, *index);
  } else {
    gallery->write_member("index.html", html_bytes);
    gallery->commit();
  }
  std::printf("Rendered %zu preview%s of %zu transition%s in %.1f s on %d thread%s.\n", jobs.size(),
              jobs.size() == 1 ? "" : "s", cards.size(), cards.size() == 1 ? "" : "s", seconds, threads,
              threads == 1 ? "" : "s");
  std::printf("Open the gallery: file://%s/index.html\n", fs::absolute(dir).lexically_normal().c_str());
  return 0;
}

}  // namespace zvcli
