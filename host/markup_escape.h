// Text placed in the XML and HTML that hosts write (descriptors, galleries):
// the characters that would end a text or an attribute value, as entities.
#pragma once

#include <string>

namespace zv {

inline std::string markup_escape(const std::string& text) {
  std::string out;
  for (char c : text) {
    switch (c) {
      case '&': out += "&amp;"; break;
      case '<': out += "&lt;"; break;
      case '>': out += "&gt;"; break;
      case '"': out += "&quot;"; break;
      default: out += c;
    }
  }
  return out;
}

}  // namespace zv
