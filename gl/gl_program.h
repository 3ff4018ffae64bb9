// A GLSL program on the current context: one fragment shader over OpenGL's
// fixed vertex stage, as a full-frame quad needs. OpenGL 2.0 and later; not
// in the Windows build, whose bitmap contexts stop at OpenGL 1.1.
#pragma once

#include <string>

namespace zv {

class CGlProgram {
 public:
  CGlProgram() = default;
  // Deletes the program; its context must be current.
  ~CGlProgram();
  CGlProgram(const CGlProgram&) = delete;
  CGlProgram& operator=(const CGlProgram&) = delete;

  // Compiles and links `fragment_source`. On failure returns false with
  // `error` the first line of the driver's log, and the program stays empty.
  bool Build(const std::string& fragment_source, std::string* error);
  bool built() const { return id_ != 0; }
  // Makes it the current program.
  void Use() const;
  // The location of a uniform, -1 when the program has none of that name.
  int Uniform(const char* name) const;

 private:
  unsigned int id_ = 0;
};

}  // namespace zv
