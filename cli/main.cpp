// zvtran: the transition library from the command line.
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <fcntl.h>
#include <malloc.h>
#include <unistd.h>

#include "cli/atomic_output.h"
#include "cli/cli_common.h"
#include "cli/commands.h"
#include "cli/render_job.h"
#include "gl/offscreen_context.h"

namespace {

struct Command {
  const char* name;
  int (*run)(int argc, char** argv);
  const char* summary;
};

const Command kCommands[] = {
    {"apply", zvcli::apply_command, "make one call of a transition on raw frames, as a host does"},
    {"catalogue", zvcli::catalogue_command, "list the transitions, their styles and parameters [--json]"},
    {"rgb2yuv", zvcli::rgb2yuv_command, "convert a 24-bit bitmap's pixels into a raw 4:2:0 frame"},
    {"yuv2rgb", zvcli::yuv2rgb_command, "convert a raw 4:2:0 frame into a 24-bit bitmap's pixels"},
    {"resize", zvcli::resize_command, "scale one raw frame into another (zvImageResize)"},
    {"render", zvcli::render_command, "render a transition between two clips or patterns into a video, Y4M, PNGs"},
    {"demo", zvcli::demo_command, "render every transition and style into a web page gallery [-o DIR]"},
};

void print_usage(FILE* to) {
  std::fprintf(to, "usage: zvtran COMMAND [options]   (zvtran --version: the version and the OpenGL in use)\n\n"
                   "commands:\n");
  for (const Command& c : kCommands) std::fprintf(to, "  %-10s %s\n", c.name, c.summary);
}

// A closed standard stream would hand its number to the next file opened, and
// what is said on it would land in that file. Each closed one is held by
// /dev/null opened read-only: writes to it fail, and are reported as failures.
void hold_closed_standard_streams() {
  for (int fd = 0; fd <= 2; ++fd) {
    if (fcntl(fd, F_GETFD) == -1 && open("/dev/null", O_RDONLY) != fd) std::abort();
  }
}

// A machine without an OpenGL driver is reported in one line of our own
// (require_drawable); libEGL's warnings on the way are left out unless asked for.
void quiet_egl_warnings() { setenv("EGL_LOG_LEVEL", "fatal", 0); }

// The program, and what the 3D transitions draw with here.
int print_version() {
  std::printf("zvtran %s\nOpenGL: %s\n", ZV_VERSION, zv::offscreen_gl_summary().c_str());
  zvcli::flush_stdout();
  return 0;
}

// Transitions that resize a picture take a few megabytes for each call. By
// default such blocks go back to the system when freed, and every frame then
// pays for fresh pages again (zeroed by the kernel, and costly where a
// hypervisor maps each page on first touch); kept, they are reused.
void keep_freed_memory() {
  mallopt(M_MMAP_THRESHOLD, 32 << 20);
  mallopt(M_TRIM_THRESHOLD, 256 << 20);
}

}  // namespace

int main(int argc, char** argv) {
  hold_closed_standard_streams();
  keep_freed_memory();
  quiet_egl_warnings();
  if (argc < 2) {
    std::fprintf(stderr, "usage: zvtran COMMAND [options] (try: zvtran --help)\n");
    return 2;
  }
  if (!std::strcmp(argv[1], "--help") || !std::strcmp(argv[1], "-h") || !std::strcmp(argv[1], "help")) {
    print_usage(stdout);
    try {
      zvcli::flush_stdout();
    } catch (const std::exception& e) {
      std::fprintf(stderr, "zvtran: %s\n", e.what());
      return 1;
    }
    return 0;
  }
  if (!std::strcmp(argv[1], "--version")) {
    try {
      return print_version();
    } catch (const std::exception& e) {
      std::fprintf(stderr, "zvtran: %s\n", e.what());
      return 1;
    }
  }
  for (const Command& c : kCommands) {
    if (std::strcmp(argv[1], c.name) != 0) continue;
    try {
      zvcli::catch_interrupts();
      int status = 0;
      try {
        status = c.run(argc - 2, argv + 2);
      } catch (const zvcli::HelpShown&) {
      }
      zvcli::flush_stdout();
      return status;
    } catch (const zvcli::Interrupted&) {
      std::fprintf(stderr, "zvtran %s: interrupted\n", c.name);
      return 128 + zvcli::interrupt_signal();
    } catch (const zvcli::UsageError& e) {
      std::fprintf(stderr, "zvtran %s: %s\n", c.name, e.what());
      return 2;
    } catch (const std::exception& e) {
      std::fprintf(stderr, "zvtran %s: %s\n", c.name, e.what());
      return 1;
    }
  }
  std::fprintf(stderr, "zvtran: unknown command '%s' (try: zvtran --help)\n", argv[1]);
  return 2;
}
