/* The limit a transition renderer over Y4M files can reach: read two Y4M
   clips of the same size with read() into buffers reused for the whole run,
   cross-fade them with a plain loop and write Y4M to standard output.
   Usage: read_blend_write A.y4m B.y4m > out.y4m (frame lines without
   parameters, as FFmpeg writes them). */
#include <fcntl.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/stat.h>
#include <unistd.h>

static int read_line(int fd, char* line, int size) {
  int n = 0;
  while (n < size - 1 && read(fd, line + n, 1) == 1) {
    if (line[n++] == '\n') break;
  }
  line[n] = 0;
  return n;
}

static int read_all(int fd, unsigned char* data, size_t size) {
  size_t done = 0;
  while (done < size) {
    ssize_t got = read(fd, data + done, size - done);
    if (got <= 0) return 0;
    done += (size_t)got;
  }
  return 1;
}

static int write_all(int fd, const void* data, size_t size) {
  size_t done = 0;
  while (done < size) {
    ssize_t put = write(fd, (const char*)data + done, size - done);
    if (put <= 0) return 0;
    done += (size_t)put;
  }
  return 1;
}

int main(int argc, char** argv) {
  if (argc != 3) {
    fprintf(stderr, "usage: read_blend_write A.y4m B.y4m > out.y4m\n");
    return 2;
  }
  int fa = open(argv[1], O_RDONLY), fb = open(argv[2], O_RDONLY);
  char header[512], other[512];
  if (fa < 0 || fb < 0 || !read_line(fa, header, sizeof header) || !read_line(fb, other, sizeof other)) return 1;
  const char* w = strstr(header, " W");
  const char* h = strstr(header, " H");
  if (!w || !h) return 1;
  const size_t frame = (size_t)atoi(w + 2) * (size_t)atoi(h + 2) * 3 / 2;
  unsigned char* a = malloc(frame + 6);
  unsigned char* b = malloc(frame + 6);
  unsigned char* out = malloc(frame + 6);
  if (!a || !b || !out || !write_all(1, header, strlen(header))) return 1;
  memcpy(out, "FRAME\n", 6);
  struct stat sa, sb;
  if (fstat(fa, &sa) != 0 || fstat(fb, &sb) != 0) return 1;
  const size_t frames_a = ((size_t)sa.st_size - strlen(header)) / (frame + 6);
  const size_t frames_b = ((size_t)sb.st_size - strlen(other)) / (frame + 6);
  const int frames = (int)(frames_a < frames_b ? frames_a : frames_b);
  for (int i = 0; i < frames; ++i) {
    if (!read_all(fa, a, frame + 6) || !read_all(fb, b, frame + 6)) return 1;
    const unsigned weight = frames > 1 ? (unsigned)(256 * i / (frames - 1)) : 256;
    for (size_t k = 6; k < frame + 6; ++k) out[k] = (unsigned char)((a[k] * (256 - weight) + b[k] * weight) >> 8);
    if (!write_all(1, out, frame + 6)) return 1;
  }
  fprintf(stderr, "%d frames\n", frames);
  return 0;
}
