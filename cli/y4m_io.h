// Raw 4:2:0 video in YUV4MPEG2 form, read and written without a copy: frames
// go straight between the file (or pipe) and the planes of an `Image`.
#pragma once

#include <memory>
#include <string>

#include "cli/frame_source.h"

namespace zvcli {

// A source for a Y4M file of 8-bit 4:2:0 pictures of even size, or for "-"
// (such a stream on standard input). For a file in any other form it returns
// null, and FFmpeg's libraries read it instead; for "-" that is a usage error.
// Frames at the output's size are read into the output's planes with one
// system call each; other sizes are scaled from a buffer kept for the run.
std::unique_ptr<FrameSource> open_y4m(const std::string& name);

// "FRAME" and the three planes of `frame`, in one system call where the
// descriptor takes it all at once; false (errno set) when it cannot be written.
bool write_y4m_frame(int fd, const Image& frame);

}  // namespace zvcli
