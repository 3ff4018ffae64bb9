#include "python/arguments.h"

namespace zvpy {

std::string type_name(py::handle object) { return py::str(py::type::handle_of(object).attr("__name__")); }

int32_t int32_argument(py::handle value, const std::string& name) {
  if (!PyIndex_Check(value.ptr())) throw py::type_error(name + " must be an integer, not " + type_name(value));
  const auto number = py::reinterpret_steal<py::object>(PyNumber_Index(value.ptr()));
  if (!number) throw py::error_already_set();
  int overflow = 0;
  const long long v = PyLong_AsLongLongAndOverflow(number.ptr(), &overflow);
  if (overflow || v < INT32_MIN || v > UINT32_MAX) {
    throw py::value_error(name + " " + std::string(py::str(number)) + " does not fit in 32 bits");
  }
  return static_cast<int32_t>(v);  // 0x80000000 to 0xFFFFFFFF wrap, as a host's bits would
}

std::pair<int32_t, int32_t> int32_pair(py::handle value, const std::string& name) {
  if (!py::isinstance<py::tuple>(value) && !py::isinstance<py::list>(value)) {
    throw py::type_error(name + " must be a pair of integers, not " + type_name(value));
  }
  const auto pair = py::reinterpret_borrow<py::sequence>(value);
  if (pair.size() != 2) throw py::value_error(name + " must be a pair of integers, not " + std::string(py::str(value)));
  return {int32_argument(pair[0], name + "[0]"), int32_argument(pair[1], name + "[1]")};
}

int choice_argument(py::handle value, const std::string& name, int last) {
  const int32_t v = int32_argument(value, name);
  if (v < 0 || v > last) {
    throw py::value_error(name + " must be 0 to " + std::to_string(last) + ", not " + std::to_string(v));
  }
  return v;
}

}  // namespace zvpy
