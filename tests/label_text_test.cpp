// The picture labels' text: UTF-8 as the ASCII font draws it.
#include <gtest/gtest.h>

#include "cli/ascii_fold.h"

TEST(LabelText, FoldsAccentedLatinLettersAndMarksTheRest) {
  const std::pair<std::string, std::string> cases[] = {
      {"gl:Directional", "gl:Directional"},
      {"by Ga\xc3\xabtan Renaudeau (MIT)", "by Gaetan Renaudeau (MIT)"},         // ë
      {"\xc5\x81ukasz \xc3\x93 \xc3\xa9 \xc3\x97 \xc3\xbf", "Lukasz O e x y"},  // Ł Ó é × ÿ
      {"\xc4\x80\xc5\xbf", "As"},                                               // the ends of the second block
      {"\xe2\x82\xac 5", "? 5"},                                                // €: another block
      {"\xf0\x9f\x8e\xac!", "?!"},                                              // four bytes, one character
      {"\xff\xc3", "??"},                                                       // a stray byte, a cut sequence
      {"\xc3(", "?("},                                                          // a lead without its continuation
      {"\xc0\xaf", "??"},                                                       // an overlong form
      {"tab\there", "tab?here"}};
  for (const auto& [text, drawn] : cases) EXPECT_EQ(zvcli::fold_to_ascii(text), drawn) << text;
}
