// What the program writes into its settings file at the first start.
#pragma once

#include <string_view>

namespace tintline::test {

inline constexpr std::string_view kDefaultSettings =
    "[TINTLINE]\r\n"
    "ColProz=,#000080,#DFDFDF,8388608,14671839,0,\r\n"
    "ColRes=,#0000FF,#FFFFFF,16711680,16777215,0,\r\n"
    "ColParms=,#008080,#FFFFFF,8421376,16777215,0,\r\n"
    "ColRem=,#008000,#FFFFFF,32768,16777215,0,\r\n"
    "ColString=,#FF0000,#FFFFFF,255,16777215,0,\r\n"
    "PreCode=,\r\n"
    "PostCode=,\r\n";

}  // namespace tintline::test
