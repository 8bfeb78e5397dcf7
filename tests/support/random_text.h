// Nasty source texts: random ones, the same for the same seed on every machine, and all short ones
// over a few pieces.
// Tested by tests/unit/engine/engine_property_test.cpp and
// tests/unit/any_text_property_test.cpp
#pragma once

#include <functional>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace tintline::test {

// `count` texts by a rule of random_text.cpp, one behind the other: UTF-8, now and then with bytes
// that are none. For example "token" is anything that code is made of or that could be taken for
// something else, "statement" and "line" are lines as programmers write them and as they do not.
std::string randomText(std::mt19937& random, std::string_view rule, std::size_t count);

// Up to maxLines lines by the rule, in Windows-1252; now and then as a file reader leaves them (a
// blank behind every line).
std::vector<std::string> randomLines(std::mt19937& random, std::string_view rule,
                                     std::size_t maxLines);

// What a rule is made of, the texts that stand for no other rule.
std::vector<std::string> piecesOf(std::string_view rule);

// Calls back with every text of 0 to maxPieces such pieces.
void forEachShortText(int maxPieces, std::string_view rule,
                      const std::function<void(const std::string&)>& callback);

}  // namespace tintline::test
