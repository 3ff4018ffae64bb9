#include "cli/gl_collection_args.h"

#include <cstdio>
#include <cstring>
#include <strings.h>

#include "cli/media_input.h"

namespace zvcli {
namespace {

// The numbers of a VALUE: a switch's words, or numbers separated by commas.
std::vector<double> value_numbers(const ZvGlParamInfo& param, const std::string& text, const std::string& what) {
  if (param.kind == kZvGlBool) {
    if (!strcasecmp(text.c_str(), "true") || text == "1") return {1};
    if (!strcasecmp(text.c_str(), "false") || text == "0") return {0};
    throw UsageError(what + ": '" + text + "' is not true or false");
  }
  std::vector<double> numbers;
  size_t start = 0;
  for (;;) {
    const size_t comma = text.find(',', start);
    numbers.push_back(parse_double(text.substr(start, comma == std::string::npos ? comma : comma - start), what));
    if (comma == std::string::npos) break;
    start = comma + 1;
  }
  return numbers;
}

std::unique_ptr<Image> load_picture(const std::string& path, const std::string& what) {
  std::unique_ptr<FrameSource> source;
  try {
    source = open_source(path);
  } catch (const UsageError& e) {
    throw UsageError(what + ": " + e.what());
  }
  const Size size{source->size().width & ~1, source->size().height & ~1};
  if (size.width < 2 || size.height < 2 || size.width > kMaxFrameSide || size.height > kMaxFrameSide) {
    throw UsageError(what + ": " + path + " is " + std::to_string(source->size().width) + "x" +
                     std::to_string(source->size().height) + ", not a picture of 2x2 to " +
                     std::to_string(kMaxFrameSide) + "x" + std::to_string(kMaxFrameSide) + " pixels");
  }
  auto picture = std::make_unique<Image>(size.width, size.height);
  source->frame_at(0, *picture);
  return picture;
}

std::string number_list(const double* values, int count) {
  std::string text;
  for (int k = 0; k < count; ++k) {
    char number[32];
    std::snprintf(number, sizeof number, "%g", values[k]);
    text += (k ? "," : "") + std::string(number);
  }
  return text;
}

}  // namespace

bool is_gl_transition(const std::string& text) { return text.compare(0, std::strlen(kGlPrefix), kGlPrefix) == 0; }

GlChoice gl_choice(const std::string& transition, const std::vector<std::string>& sets) {
  GlChoice choice;
  const std::string name = transition.substr(std::strlen(kGlPrefix));
  choice.index = zvGlTranFind(name.c_str());
  if (choice.index < 0) throw UsageError("unknown GLSL transition '" + name + "' (see: zvtran catalogue)");
  const ZvGlTransitionInfo& info = *zvGlTranInfo(choice.index);
  choice.names.reserve(sets.size());
  for (const std::string& set : sets) {
    const size_t equals = set.find('=');
    if (equals == std::string::npos || equals == 0) throw UsageError("--set: '" + set + "' is not NAME=VALUE");
    choice.names.push_back(set.substr(0, equals));
    const std::string value = set.substr(equals + 1), what = "--set " + choice.names.back();
    const ZvGlParamInfo* param = nullptr;
    for (int i = 0; i < info.param_count && !param; ++i) {
      if (choice.names.back() == info.params[i].name) param = &info.params[i];
    }
    ZvGlParamValue v{};
    v.name = choice.names.back().c_str();
    if (param && param->kind == kZvGlImage) {
      choice.pictures.push_back(load_picture(value, what));
      v.image = choice.pictures.back().get();
    } else if (param) {
      const std::vector<double> numbers = value_numbers(*param, value, what);
      v.count = static_cast<int32_t>(numbers.size());
      for (size_t k = 0; k < numbers.size() && k < 4; ++k) v.values[k] = numbers[k];
    }
    choice.values.push_back(v);
  }
  if (zvGlTranCheck(choice.index, choice.values.data(), static_cast<int>(choice.values.size())) != kZvGlDone) {
    throw UsageError(std::string("--set: ") + zvGlTranError());
  }
  return choice;
}

std::string gl_parameter_summary(const ZvGlTransitionInfo& info) {
  std::string text;
  for (int i = 0; i < info.param_count; ++i) {
    const ZvGlParamInfo& p = info.params[i];
    text += (i ? ", " : "") + std::string(p.name) + " (" + p.glsl_type +
            (p.kind == kZvGlImage ? ", a built-in picture" : ", " + number_list(p.defaults, p.components)) + ")";
  }
  return text;
}

}  // namespace zvcli
