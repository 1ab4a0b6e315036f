#pragma once
#include <cstdint>
#include <initializer_list>
#include <sstream>
#include <string>
#include <vector>

// Building and reading expected stream bytes.
std::string LE32(std::uint32_t value);
std::string LE16(std::uint16_t value);
std::string Bytes(std::initializer_list<unsigned char> bytes);
std::istringstream InStream(const std::string& bytes);
std::ostringstream OutStream();

// `count` damaged copies of a record, the same for the same seed: each has one to three
// places overwritten with random bytes or with values that make counts and lengths absurd,
// and one in four is also cut short.
std::vector<std::string> Mutants(const std::string& record, unsigned count, unsigned seed);

// A new file of the temporary folder, named with `prefix`, holding `bytes`; its path.
std::string TempFile(const char* prefix, const std::string& bytes = std::string());
