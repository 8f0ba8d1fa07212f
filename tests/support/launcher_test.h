#pragma once

#include "support/launcher.h"

#include <gtest/gtest.h>

namespace ks::test {

// A GoogleTest case that stands in a started launcher.
struct LauncherTest : ::testing::Test, Launcher {};

} // namespace ks::test
