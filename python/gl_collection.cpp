#include "python/gl_collection.h"

#include <memory>
#include <stdexcept>
#include <vector>

#include "effects3d/zv_gl_collection.h"
#include "python/arguments.h"
#include "python/frames.h"

namespace zvpy {
namespace {

constexpr char kGlPrefix[] = "gl:";

// A default as its type reads: a number, a list of them, a switch, or None for a picture's built-in one.
py::object default_of(const ZvGlParamInfo& param) {
  if (param.kind == kZvGlImage) return py::none();
  py::list values;
  for (int k = 0; k < param.components; ++k) {
    const double v = param.defaults[k];
    values.append(param.kind == kZvGlBool  ? py::object(py::bool_(v != 0))
                  : param.kind == kZvGlInt ? py::object(py::int_(static_cast<long long>(v)))
                                           : py::object(py::float_(v)));
  }
  return param.components == 1 ? values[0] : py::object(values);
}

const ZvGlParamInfo* find_param(const ZvGlTransitionInfo& info, const std::string& name) {
  for (int i = 0; i < info.param_count; ++i) {
    if (name == info.params[i].name) return &info.params[i];
  }
  return nullptr;
}

// The values of `params` for transition `index`, checked by the library; the
// pictures among them are held in `pictures`.
std::vector<ZvGlParamValue> param_values(int index, py::handle params, std::vector<std::string>& names,
                                         std::vector<std::unique_ptr<Frame>>& pictures) {
  std::vector<ZvGlParamValue> values;
  if (params.is_none()) return values;
  if (!py::isinstance<py::dict>(params)) throw py::type_error("params must be a dict, not " + type_name(params));
  const auto given = py::reinterpret_borrow<py::dict>(params);
  names.reserve(given.size());
  for (const auto& [key, value] : given) {
    names.push_back(py::str(key));
    const std::string what = "params['" + names.back() + "']";
    const ZvGlParamInfo* param = find_param(*zvGlTranInfo(index), names.back());
    ZvGlParamValue v{};
    v.name = names.back().c_str();
    if (param && param->kind == kZvGlImage) {
      pictures.push_back(std::make_unique<Frame>(value, what, Frame::kRead));
      v.image = pictures.back()->image();
    } else if (param) {
      const bool several = py::isinstance<py::sequence>(value) && !py::isinstance<py::str>(value);
      const py::list numbers(several ? py::reinterpret_borrow<py::object>(value) : py::make_tuple(value));
      if (numbers.size() > 4) throw py::value_error(what + " has " + std::to_string(numbers.size()) + " numbers");
      for (const auto& number : numbers) {
        if (!PyNumber_Check(number.ptr())) throw py::type_error(what + " must be numbers, not " + type_name(number));
        v.values[v.count++] = number.cast<double>();
      }
    }
    values.push_back(v);
  }
  if (zvGlTranCheck(index, values.data(), static_cast<int>(values.size())) != kZvGlDone) {
    throw py::value_error(zvGlTranError());
  }
  return values;
}

}  // namespace

bool is_gl_transition(py::handle transition) {
  return py::isinstance<py::str>(transition) && transition.cast<std::string>().rfind(kGlPrefix, 0) == 0;
}

void append_gl_catalogue(py::list& list) {
  for (int i = 0; i < zvGlTranCount(); ++i) {
    const ZvGlTransitionInfo& info = *zvGlTranInfo(i);
    py::list params;
    for (int k = 0; k < info.param_count; ++k) {
      py::dict param;
      param["name"] = info.params[k].name;
      param["type"] = info.params[k].glsl_type;
      param["default"] = default_of(info.params[k]);
      params.append(param);
    }
    py::dict entry;
    entry["id"] = kGlPrefix + std::string(info.name);
    entry["name"] = info.name;
    entry["author"] = info.author;
    entry["license"] = info.license;
    entry["params"] = params;
    list.append(entry);
  }
}

py::object call_gl_transition(const std::string& transition, py::handle a, py::handle b, py::handle out,
                              double progress, py::handle params) {
  const std::string name = transition.substr(sizeof kGlPrefix - 1);
  const int index = zvGlTranFind(name.c_str());
  if (index < 0) throw py::value_error("unknown GLSL transition '" + name + "' (see zvtransition.catalogue())");
  std::vector<std::string> names;
  std::vector<std::unique_ptr<Frame>> pictures;
  const std::vector<ZvGlParamValue> values = param_values(index, params, names, pictures);
  py::object output;
  const int result = draw_frames(a, b, out, output, [&](Image* o, Image* x, Image* y) {
    return zvGlTranApply(index, o, x, y, progress, values.data(), static_cast<int>(values.size()));
  });
  // The library names the transition and what went wrong: a value (checked above) or no OpenGL to draw with.
  if (result == kZvGlBadArgument) throw py::value_error(zvGlTranError());
  if (result != kZvGlDone) throw std::runtime_error(zvGlTranError());
  return output;
}

}  // namespace zvpy
