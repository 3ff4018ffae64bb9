// The zvtran subcommands; each takes the arguments after its own name.
#pragma once

namespace zvcli {

int apply_command(int argc, char** argv);
int catalogue_command(int argc, char** argv);
int demo_command(int argc, char** argv);
int render_command(int argc, char** argv);
int rgb2yuv_command(int argc, char** argv);
int yuv2rgb_command(int argc, char** argv);
int resize_command(int argc, char** argv);

}  // namespace zvcli
