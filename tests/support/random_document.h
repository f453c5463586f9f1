// Documents and records with every field in use, different for every seed.
#pragma once

#include <random>
#include <string>

#include <gtest/gtest.h>

#include "document/clone_data.h"

namespace q40::test {

// 64 digits of a channel record that the radio could hold: every index inside its list.
std::string RandomRecord(std::mt19937& random, bool in_use);

// A document as opening a file gives it: everything decoded from random bytes.
CloneData RandomDocument(unsigned seed);

}  // namespace q40::test
