// Raw 4:2:0 video in YUV4MPEG2 form, read and written without a copy: frames
// go straight between the file (or pipe) and the planes of an `Image`.
#pragma once

#include <memory>
#include <string>

#include "cli/frame_source.h"
#include "cli/media_output.h"

namespace zvcli {

// A source for a Y4M file of 8-bit 4:2:0 pictures of even size, or for "-"
// (such a stream on standard input). For a file in any other form it returns
// null, and FFmpeg's libraries read it instead; for "-" that is a usage error.
// A file is mapped and its pictures at the output's size are lent without a
// copy; a stream's are read with one system call each into a frame kept for
// the run; other sizes are scaled.
std::unique_ptr<FrameSource> open_y4m(const std::string& name);
// Y4M on standard output for "-", otherwise a file that appears when complete.
std::unique_ptr<FrameSink> open_y4m_sink(const std::string& path, const OutputInfo& info);

// "FRAME" and the three planes of `frame`, in one system call where the
// descriptor takes it all at once; false (errno set) when it cannot be written.
bool write_y4m_frame(int fd, const Image& frame);

}  // namespace zvcli
