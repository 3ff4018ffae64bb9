// Text as the picture labels' font draws it: printable ASCII. UTF-8 letters of
// the Latin-1 and Latin Extended-A blocks become their letters without marks
// ("Gaëtan" to "Gaetan", "ł" to "l"); any other character, and any byte that
// is not part of a well-formed sequence, becomes one '?'.
#pragma once

#include <cstddef>
#include <string>

namespace zvcli {

inline std::string fold_to_ascii(const std::string& utf8) {
  // U+00C0..U+00FF, then U+0100..U+017F, each code point's base letter.
  static const char kLatin1[] = "AAAAAAACEEEEIIIIDNOOOOOxOUUUUYTsaaaaaaaceeeeiiiidnooooo/ouuuuyty";
  static const char kExtendedA[] =
      "AaAaAaCcCcCcCcDdDdEeEeEeEeEeGgGgGgGgHhHhIiIiIiIiIiIiJjKkkLlLlLlLlLlNnNnNnnNnOoOoOoOoRrRrRrSsSsSsSsTtTtTtUu"
      "UuUuUuUuUuWwYyYZzZzZzs";
  std::string out;
  for (size_t i = 0; i < utf8.size();) {
    const unsigned char lead = static_cast<unsigned char>(utf8[i]);
    if (lead < 0x80) {
      out += lead >= ' ' && lead <= '~' ? static_cast<char>(lead) : '?';
      ++i;
      continue;
    }
    const size_t extra = lead >= 0xC2 && lead <= 0xDF   ? 1
                         : lead >= 0xE0 && lead <= 0xEF ? 2
                         : lead >= 0xF0 && lead <= 0xF4 ? 3
                                                        : 0;
    size_t have = 0;
    while (have < extra && i + 1 + have < utf8.size() &&
           (static_cast<unsigned char>(utf8[i + 1 + have]) & 0xC0) == 0x80) {
      ++have;
    }
    if (extra == 0 || have < extra) {  // not a well-formed sequence: its lead byte alone
      out += '?';
      ++i;
      continue;
    }
    unsigned code = lead & (0x3F >> extra);
    for (size_t k = 1; k <= extra; ++k) code = code << 6 | (static_cast<unsigned char>(utf8[i + k]) & 0x3F);
    if (code >= 0xC0 && code <= 0xFF) {
      out += kLatin1[code - 0xC0];
    } else if (code >= 0x100 && code <= 0x17F) {
      out += kExtendedA[code - 0x100];
    } else {
      out += '?';
    }
    i += 1 + extra;
  }
  return out;
}

}  // namespace zvcli
