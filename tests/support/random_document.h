// Documents with every field in use, different for every seed.
#pragma once

#include <gtest/gtest.h>

#include "document/clone_data.h"

namespace q40::test {

// A document as opening a file gives it: everything decoded from random bytes.
CloneData RandomDocument(unsigned seed);

}  // namespace q40::test
