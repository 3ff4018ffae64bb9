#include "gl/gl_program.h"

#include <vector>

#include "gl/gl_api.h"

namespace zv {
namespace {

// The first non-empty line of a shader's or program's log, without trailing
// blanks; `fallback` when the log is empty.
template <typename GetParameter, typename GetLog>
std::string log_line(GLuint object, GetParameter get_parameter, GetLog get_log, const char* fallback) {
  GLint length = 0;
  get_parameter(object, GL_INFO_LOG_LENGTH, &length);
  std::vector<char> log(static_cast<size_t>(length > 0 ? length : 1), '\0');
  get_log(object, static_cast<GLsizei>(log.size()), nullptr, log.data());
  std::string text(log.data());
  const size_t start = text.find_first_not_of(" \t\r\n");
  if (start == std::string::npos) return fallback;
  text = text.substr(start, text.find_first_of("\r\n", start) - start);
  return text.substr(0, text.find_last_not_of(" \t") + 1);
}

}  // namespace

CGlProgram::~CGlProgram() {
  if (id_) glDeleteProgram(id_);
}

bool CGlProgram::Build(const std::string& fragment_source, std::string* error) {
  GLuint shader = glCreateShader(GL_FRAGMENT_SHADER);
  if (!shader) {
    *error = "the OpenGL context has no shader compiler";
    return false;
  }
  const char* text = fragment_source.c_str();
  glShaderSource(shader, 1, &text, nullptr);
  glCompileShader(shader);
  GLint ok = GL_FALSE;
  glGetShaderiv(shader, GL_COMPILE_STATUS, &ok);
  if (!ok) {
    *error = log_line(shader, glGetShaderiv, glGetShaderInfoLog, "the shader does not compile");
    glDeleteShader(shader);
    return false;
  }
  GLuint program = glCreateProgram();
  glAttachShader(program, shader);
  glLinkProgram(program);
  glDeleteShader(shader);  // freed with the program
  glGetProgramiv(program, GL_LINK_STATUS, &ok);
  if (!ok) {
    *error = log_line(program, glGetProgramiv, glGetProgramInfoLog, "the shader does not link");
    glDeleteProgram(program);
    return false;
  }
  if (id_) glDeleteProgram(id_);
  id_ = program;
  return true;
}

void CGlProgram::Use() const { glUseProgram(id_); }

int CGlProgram::Uniform(const char* name) const { return id_ ? glGetUniformLocation(id_, name) : -1; }

}  // namespace zv
