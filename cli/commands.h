// The zvtran subcommands; each takes the arguments after its own name.
#pragma once

namespace zvcli {

int apply_command(int argc, char** argv);
int catalogue_command(int argc, char** argv);
int demo_command(int argc, char** argv);
int render_command(int argc, char** argv);

}  // namespace zvcli
