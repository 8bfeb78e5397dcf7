// Nasty source lines for comparing the engine with its literal transcription: random ones, the same
// for the same seed on every machine, and all short ones over a small alphabet.
// Tested by tests/unit/engine/engine_property_test.cpp
#pragma once

#include <functional>
#include <random>
#include <string>
#include <vector>

namespace tintline::literal {

// One line of up to some twenty pieces that the rules stumble over.
std::string randomLine(std::mt19937& random);

// Up to maxLines such lines; now and then as a file reader leaves them (a blank behind every line),
// with module headers, continued heads and comments among them.
std::vector<std::string> randomModule(std::mt19937& random, int maxLines);

// Up to maxLines long lines as a programmer writes them: statements with strings, dates, names in
// brackets, members, labels and comments, continued or not, now and then a file header or lines of
// conditional compilation; all with a blank behind them or none.
std::vector<std::string> randomStatements(std::mt19937& random, int maxLines);

// A procedure-name list: " name" entries, among them words of the markup, single letters, repeated
// and empty names. May be empty.
std::vector<std::string> randomNames(std::mt19937& random);

// Calls back with every line of 0 to maxPieces pieces over the alphabet of eleven:
// " ( ) , ' < > := Sub blank x. There are 11 times as many for each further piece.
void forEachShortLine(int maxPieces, const std::function<void(const std::string&)>& callback);

// The same over an alphabet of nineteen words of procedure heads and parts of them, with "()"
// behind it: where one word is taken out, what stood around it may make another.
void forEachShortHead(int maxPieces, const std::function<void(const std::string&)>& callback);

}  // namespace tintline::literal
